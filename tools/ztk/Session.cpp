#include "Session.h"

#include <cstdio>

namespace ztk {
namespace {

bool critical_shown = false;
long critical_number = 0;

}  // namespace

void InstallMessageLines() {
  ZTkDb::SetMessageSink([](const ZTkDb::MessageBoxCall& box) {
    if (box.critical) {
      critical_shown = true;
      critical_number = box.number;
    }
    if (box.number == ZTkDb::errWriteConflict || box.number == ZTkDb::errInsertFailed) return;
    std::string text = box.text;
    for (size_t at; (at = text.find('\n')) != std::string::npos;) text.replace(at, 1, ": ");
    std::fprintf(stderr, "ztk: %s%s\n", box.critical ? "error: " : "", text.c_str());
  });
}

bool CriticalBoxShown() { return critical_shown; }
long CriticalBoxNumber() { return critical_number; }
void ResetCriticalBox() {
  critical_shown = false;
  critical_number = 0;
}

Session::Session(const DbOptions& options) : client_(options.client) {
  if (options.db.empty() == options.odbc.empty()) {
    throw UsageError(
        "give the database as --db PATH or --odbc \"CONNSTR\" (one of them; ZTK_DB or ZTK_ODBC "
        "in the environment stand for them)");
  }
  if (client_.empty()) throw UsageError("--client must not be empty");
  if (!options.db.empty()) {
    tkdb_.OpenJetDb(client_, options.db, false, options.read_only);
  } else {
    ResetCriticalBox();
    // A failed ODBC open shows its box (on stderr) and returns normally.
    tkdb_.OpenOdbcDb(client_, options.odbc, false, options.read_only);
    if (tkdb_.DbPath().empty()) throw Failure("the ODBC data source could not be opened");
  }
}

void Session::RollbackQuietly(ZTkDb::Workspace& ws) noexcept {
  try {
    ws.Rollback();
  } catch (const ZTkDb::Error&) {
    // The error that led here is the one to report.
  }
}

}  // namespace ztk
