/// \file
/// Message boxes: ZTkDb::MessageBoxCall and ZTkDb::SetMessageSink.
#pragma once

#include <functional>
#include <string>

#include "ztkdb/Export.h"

namespace ZTkDb {

/// One modal message box as the component would show it: OK button only,
/// with or without the critical-stop icon.
///
/// A box is not an error: the member that showed it returns normally, as
/// the component always did. `member` and `number` let a program tell the
/// boxes apart without reading their German text.
struct MessageBoxCall {
  std::string text;       ///< the box's text, exactly as the component shows it
  std::string title;      ///< "ZTkDb" (the component's default) when the member gives none
  bool critical = false;  ///< the critical-stop icon
  /// The member that showed the box, as in an error's source:
  /// "CAuftrag.Update", "CMeldung.CreateNew4", "CTkDb.OpenOdbcDb".
  std::string member;
  /// What happened, for a program to test: errWriteConflict (3197) for an
  /// update whose row another writer changed or deleted since it was read
  /// (nothing was written), errInsertFailed (3155) for a create whose
  /// insert wrote no row, the error's own number for a failed ODBC open;
  /// 0 for a box that only informs (a retired creation method).
  long number = 0;
};

/// Receives the message boxes of the process.
using MessageSink = std::function<void(const MessageBoxCall&)>;

/// Routes every message box of the process to `sink`. An empty function
/// restores the default sink, which writes one line to stderr. May be called
/// from any thread at any time; boxes shown in several threads at once reach
/// the sink concurrently, so a sink used that way must be thread-safe itself.
/// The sink is called in the thread that showed the box, and a box goes to the
/// sink that was set when it was shown.
/// \param sink Called once per box; an empty function for the default.
ZTKDB_API void SetMessageSink(MessageSink sink);

}  // namespace ZTkDb
