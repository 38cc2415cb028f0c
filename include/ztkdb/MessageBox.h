#pragma once

#include <functional>
#include <string>

#include "ztkdb/Export.h"

namespace ZTkDb {

// One modal message box as the component would show it: OK button only,
// with or without the critical-stop icon.
struct MessageBoxCall {
  std::string text;
  std::string title;  // the component's default title "ZTkDb" when none is given
  bool critical = false;
};

using MessageSink = std::function<void(const MessageBoxCall&)>;

// Routes every message box of the process to `sink`. An empty function
// restores the default sink, which writes one line to stderr. Not thread-safe:
// set it before objects are used.
ZTKDB_API void SetMessageSink(MessageSink sink);

}  // namespace ZTkDb
