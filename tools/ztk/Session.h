#pragma once

#include <memory>
#include <stdexcept>
#include <string>

#include "Text.h"
#include "ztkdb/ZTkDb.h"

namespace ztk {

// A wrong command line: the message names what is wrong; exit status 2.
struct UsageError : std::invalid_argument {
  using std::invalid_argument::invalid_argument;
};
// A request that cannot be carried out (unknown id, refused write); exit 1.
struct Failure : std::runtime_error {
  using std::runtime_error::runtime_error;
};
// A write whose row someone else changed or deleted since it was read:
// nothing was written; exit 3, so a script can read the row again.
struct Conflict : Failure {
  using Failure::Failure;
};

struct DbOptions {
  std::string db;
  std::string odbc;
  std::string client = "ztk";
  bool read_only = false;
};

// Shows the library's message boxes as one line each on stderr and
// remembers the last critical one (a refused write): its number, or 0.
// The boxes of a write that wrote nothing are not shown: Session::Write
// says what happened in plain words.
void InstallMessageLines();
bool CriticalBoxShown();
long CriticalBoxNumber();
void ResetCriticalBox();

// One open database for the length of a command, as a host opens it.
class Session {
 public:
  explicit Session(const DbOptions& options);
  const std::string& Client() const { return client_; }

  // Runs `body` in one transaction: committed when it returns and no write
  // was refused, rolled back otherwise (then a refused write is a Failure).
  template <typename F>
  void Write(F&& body) {
    auto ws = tkdb_.Ws();
    ResetCriticalBox();
    ws->BeginTrans();
    try {
      body();
    } catch (...) {
      RollbackQuietly(*ws);
      throw;
    }
    if (CriticalBoxShown()) {
      RollbackQuietly(*ws);
      if (CriticalBoxNumber() == ZTkDb::errWriteConflict) {
        throw Conflict(
            _("someone else changed or deleted this row since it was read, so nothing was "
              "written; show it again and repeat the change if it still applies"));
      }
      if (CriticalBoxNumber() == ZTkDb::errInsertFailed) {
        throw Failure(_("the database took the new row but kept nothing, so nothing was written"));
      }
      throw Failure(_("nothing was written"));
    }
    ws->CommitTrans();
  }

 private:
  static void RollbackQuietly(ZTkDb::Workspace& ws) noexcept;

  ZTkDb::CTkDb tkdb_;
  std::string client_;
};

}  // namespace ztk
