// ztk: the help-desk module database from a terminal, through the library
// exactly as a host application uses it. This file only builds the command
// tree from the families' parts, parses and runs what was chosen.
#include <CLI/CLI.hpp>
#include <cstdio>

#include "Commands.h"
#include "Help.h"
#include "Interrupt.h"
#include "Session.h"
#include "Text.h"

namespace ztk {
namespace {

void AddGlobalOptions(CLI::App& app, Context& ctx) {
  SetUpHelp(app);
  app.fallthrough();
  app.set_version_flag("--version", "ztk " ZTKDB_VERSION " (ZTkDb " ZTKDB_VERSION ")",
                       _("print the version and exit"));
  app.add_option("--db", ctx.db.db, _("the embedded database file (or ZTK_DB)"))->envname("ZTK_DB");
  app.add_option("--odbc", ctx.db.odbc,
                 _("an ODBC connection string, DSN=…; or Driver=…;… (or ZTK_ODBC)"))
      ->envname("ZTK_ODBC");
  app.add_option("--client", ctx.db.client, _("client name to open the database under"))
      ->capture_default_str();
  app.add_flag("--read-only", ctx.db.read_only,
               _("open the database read-only: every write is refused"));
  auto* json = app.add_flag(
      "--json", ctx.out.json,
      _("one JSON document on stdout: every field, dates ISO 8601, flags true/false, money as "
        "exact text"));
  app.add_flag("--csv", ctx.out.csv,
               _("CSV (RFC 4180, LF line ends) with the same fields and forms as --json"))
      ->excludes(json);
  app.add_flag("--local", ctx.out.local,
               _("CSV and JSON in the desk's forms (dates, yes/no and amounts as tables show "
                 "them) instead of machine forms"));
  app.add_flag("--wide", ctx.out.wide, _("cut and leave out nothing to fit the terminal"));
}

// The chosen command's outcome as an exit status and a message.
int Dispatch(const std::function<void()>& action) {
  try {
    action();
    // A full disk or a closed pipe: the output is not all there.
    if (std::fflush(stdout) != 0 || std::ferror(stdout)) {
      std::fprintf(stderr, "ztk: %s\n", _("the output could not be written in full"));
      return kFailed;
    }
    return kOk;
  } catch (const UsageError& e) {
    std::fprintf(stderr, "ztk: %s\n", e.what());
    return kUsage;
  } catch (const std::invalid_argument& e) {
    std::fprintf(stderr, "ztk: %s\n", e.what());
    return kUsage;
  } catch (const Interrupted& e) {
    std::fprintf(stderr, "ztk: %s\n",
                 Say(_("{1}: nothing was kept (a new file was removed, a transaction rolled "
                       "back); run the command again"),
                     e.what())
                     .c_str());
    return kInterrupted;
  } catch (const Conflict& e) {
    std::fprintf(stderr, "ztk: %s\n", e.what());
    return kConflict;
  } catch (const Failure& e) {
    std::fprintf(stderr, "ztk: %s\n", e.what());
    return kFailed;
  } catch (const ZTkDb::Error& e) {
    if (e.Number() == 3260) {
      std::fprintf(stderr, "ztk: %s\n",
                   _("the database is busy: another program held a lock for longer than the "
                     "wait allows. Nothing was written; try again."));
      return kFailed;
    }
    std::fprintf(stderr, "ztk: %s\n",
                 Say(_("error {1} ({2}): {3}"), e.Number(), e.Source(), e.Description()).c_str());
    return kFailed;
  } catch (const std::exception& e) {
    // Out of memory, an unwritable output stream and the like: still a
    // message and status 1 rather than an abort.
    std::fprintf(stderr, "ztk: %s\n", e.what());
    return kFailed;
  }
}

int Run(int argc, char** argv) {
  Context ctx;
  CLI::App app{
      _("ztk: the help-desk module database (reports, orders, bookings, documents) from a "
        "terminal. Exit status 0 ok, 1 error, 2 wrong command line, 3 the row was changed or "
        "deleted by someone else since it was read (nothing written), 130 interrupted (demo, "
        "copy and import leave nothing half-made).")};
  AddGlobalOptions(app, ctx);
  AddDocCommands(app, ctx);
  AddDatabaseCommands(app, ctx);
  AddSummaryCommand(app, ctx);
  AddTablesCommand(app, ctx);
  AddRecordFamilies(app, ctx);
  FinishHelp(app);
  if (argc == 1) {
    std::fprintf(stderr, "%s", app.help().c_str());
    return kUsage;
  }
  if (const int at = FirstWord(argc, argv); at < argc && std::string(argv[at]) == "help") {
    return ShowHelp(app, argc - at - 1, argv + at + 1);
  }
  try {
    app.parse(argc, argv);
    if (!ctx.action) throw CLI::RequiredError("a command");
  } catch (const CLI::ParseError& e) {
    if (e.get_exit_code() == 0) return app.exit(e);  // --help, --version
    std::fprintf(stderr, "ztk: %s\n%s\n", ParseMessage(app, e, argc, argv).c_str(),
                 _("Run ztk help (or ztk help COMMAND) for the usage."));
    return kUsage;
  }
  return Dispatch(ctx.action);
}

}  // namespace
}  // namespace ztk

int main(int argc, char** argv) {
  try {
    ztk::SetUpLanguage();
    ztk::InstallMessageLines();
    return ztk::Run(argc, argv);
  } catch (...) {
    std::fprintf(stderr, "ztk: %s\n", _("unexpected failure"));
    return 1;
  }
}
