#pragma once

#include <CLI/CLI.hpp>
#include <string>

namespace ztk {

// Help in the user's language, fitted to the terminal (80 columns when it is
// no terminal): CLI11's labels translated, descriptions wrapped.
void SetUpHelp(CLI::App& app);
// Once every command is made: their help flags under the translated
// heading (CLI11 gives a command its help flag before its defaults).
void FinishHelp(CLI::App& app);

// CLI11's complaint about a command line, said the way a user of this tool
// needs it: an unknown command with the nearest known one, a missing one,
// an option given twice.
std::string ParseMessage(const CLI::App& app, const CLI::ParseError& e, int argc, char** argv);

// The index of the first word that is no global option nor its value
// (argc when there is none).
int FirstWord(int argc, char** argv);

// The known word nearest to `word` (a typing slip away, or one it begins),
// or "" when none is near.
std::string Nearest(const std::string& word, const std::vector<std::string>& known);

}  // namespace ztk
