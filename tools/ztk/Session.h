#pragma once

#include <memory>
#include <stdexcept>
#include <string>

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

struct DbOptions {
  std::string db;
  std::string odbc;
  std::string client = "ztk";
  bool read_only = false;
};

// Shows the library's message boxes as one line each on stderr and
// remembers whether a critical one (a refused write) was among them.
void InstallMessageLines();
bool CriticalBoxShown();
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
      throw Failure("nothing was written");
    }
    ws->CommitTrans();
  }

 private:
  static void RollbackQuietly(ZTkDb::Workspace& ws) noexcept;

  ZTkDb::CTkDb tkdb_;
  std::string client_;
};

}  // namespace ztk
