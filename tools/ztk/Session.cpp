#include "Session.h"

#include <unistd.h>

#include <cstdio>

namespace ztk {
namespace {

// A file that exists but that this user cannot change (the file, or the
// folder its journal goes into).
bool Writable(const std::string& path) {
  if (::access(path.c_str(), F_OK) != 0) return true;  // the open reports a missing file
  if (::access(path.c_str(), W_OK) != 0) return false;
  const size_t slash = path.rfind('/');
  const std::string folder = slash == std::string::npos ? "." : path.substr(0, slash + 1);
  return ::access(folder.c_str(), W_OK) == 0;
}

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
    // TRANSLATORS: {1} is the library's message, as it gives it.
    if (box.critical) text = Say(_("error: {1}"), text);
    std::fprintf(stderr, "ztk: %s\n", text.c_str());
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
        _("give the database as either --db PATH or --odbc \"CONNSTR\" (ZTK_DB or "
          "ZTK_ODBC in the environment stand for them)"));
  }
  if (client_.empty()) throw UsageError(_("--client must not be empty"));
  if (!options.db.empty()) {
    bool readOnly = options.read_only;
    if (!readOnly && !Writable(options.db)) {
      // Reading needs no more than the file: a desk that may only look still
      // looks, and a write is refused with its own message.
      std::fprintf(
          stderr, "ztk: %s\n",
          Say(_("note: you cannot write {1}, so it is opened read-only"), options.db).c_str());
      readOnly = true;
    }
    tkdb_.OpenJetDb(client_, options.db, false, readOnly);
  } else {
    ResetCriticalBox();
    // A failed ODBC open shows its box (on stderr) and returns normally.
    tkdb_.OpenOdbcDb(client_, options.odbc, false, options.read_only);
    if (tkdb_.DbPath().empty()) throw Failure(_("the ODBC data source could not be opened"));
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
