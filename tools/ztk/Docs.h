#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

namespace ztk {

// The tool's manual page (roff) and bash completion, both made from the
// same command tree and help texts as `ztk help`, so they cannot drift
// apart from the tool.
std::string ManPage(const CLI::App& app);
std::string BashCompletion(const CLI::App& app);
// The values completion offers after an option (--sort's names).
void OfferValues(const CLI::Option* option, std::vector<std::string> values);

}  // namespace ztk
