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
// restores the default sink, which writes one line to stderr. May be called
// from any thread at any time; boxes shown in several threads at once reach
// the sink concurrently, so a sink used that way must be thread-safe itself.
ZTKDB_API void SetMessageSink(MessageSink sink);

}  // namespace ZTkDb
