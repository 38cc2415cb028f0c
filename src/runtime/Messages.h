#pragma once

#include <string>

#include "ztkdb/MessageBox.h"

namespace ZTkDb::detail {

inline constexpr const char* kDefaultTitle = "ZTkDb";

// Shows a modal OK-only box through the host's sink. An empty title means the
// component's default title; `member` and `number` as in MessageBoxCall.
void ShowMessageBox(const std::string& text, const std::string& title = {}, bool critical = false,
                    const std::string& member = {}, long number = 0);

}  // namespace ZTkDb::detail
