// The commands that work on a whole database: make one, fill one, copy,
// import, check, ask it a question.
#include <cstdio>

#include "Check.h"
#include "Commands.h"
#include "Copy.h"
#include "Demo.h"
#include "Import.h"
#include "Inspect.h"
#include "Interrupt.h"
#include "Text.h"
#include "Transfer.h"
#include "connection/ToolAccess.h"

namespace ztk {
namespace {

void AddQuery(CLI::App& app, Context& ctx) {
  static std::string sql;
  auto* query = app.add_subcommand(
      "query", _("run one SELECT, read-only, through the library (as a table, CSV or JSON)"));
  query->add_option("SQL", sql, _("the statement"))->required();
  query->callback([&ctx] {
    ctx.action = [&ctx] {
      DbOptions readOnly = ctx.db;
      readOnly.read_only = true;
      Session session(readOnly);
      Query(session, sql, ctx.out);
    };
  });
}

void AddInit(CLI::App& app, Context& ctx) {
  static std::string path;
  auto* init = app.add_subcommand(
      "init",
      _("create the module tables: a new SQLite file PATH, or with --odbc on a data source"));
  init->add_option("PATH", path, _("the new database file (must not exist)"));
  init->callback([&ctx] {
    ctx.action = [&ctx] {
      RefuseReadOnly(ctx.db, "init");
      if (path.empty() == ctx.db.odbc.empty()) {
        throw UsageError(_("init takes a PATH or --odbc \"CONNSTR\" (one of them)"));
      }
      if (!path.empty()) {
        ZTkDb::tool::CreateModuleDatabase(path);
        std::printf("%s\n", Say(_("created {1}"), path).c_str());
      } else {
        ZTkDb::tool::CreateModuleSchemaOdbc(ctx.db.odbc);
        std::printf("%s\n", _("created the module tables on the ODBC data source"));
      }
    };
  });
}

void AddCopy(CLI::App& app, Context& ctx) {
  static CopyOptions copy;
  auto* command = app.add_subcommand(
      "copy", _("copy the module's tables to another database, ids and row tokens kept, in one "
                "transaction, verified before it commits"));
  command->add_option("--from-db", copy.from.db, _("the source: a SQLite file"));
  command->add_option("--from-odbc", copy.from.odbc, _("the source: an ODBC connection string"));
  command->add_option("--to-db", copy.to.db, _("the target: a SQLite file"));
  command->add_option("--to-odbc", copy.to.odbc, _("the target: an ODBC connection string"));
  command->add_flag("--init", copy.init, _("create the module's tables on the target first"));
  command->add_flag("--append", copy.append,
                    _("add to a target that holds rows (refused when an id exists there)"));
  command->callback([&ctx] {
    ctx.action = [&ctx] {
      RefuseReadOnly(ctx.db, "copy");
      CatchInterrupts();
      Copy(copy);
    };
  });
}

void AddImport(CLI::App& app, Context& ctx) {
  static ImportOptions import;
  auto* command = app.add_subcommand(
      "import", _("import an Access file (.mdb, .accdb) into a SQLite file or an ODBC data "
                  "source; the file is only read"));
  command->add_option("FILE", import.file, _("the Access file"))->required();
  command->add_option("TARGET", import.to.db,
                      _("the SQLite file to write (created when it does not exist)"));
  command->add_option("--to-db", import.to.db, _("the target: a SQLite file"));
  command->add_option("--to-odbc", import.to.odbc, _("the target: an ODBC connection string"));
  command->add_flag("--all-tables", import.all_tables,
                    _("also every other table of the file, into a table of the same name"));
  command->callback([&ctx] {
    ctx.action = [&ctx] {
      RefuseReadOnly(ctx.db, "import");
      CatchInterrupts();
      Import(import);
    };
  });
}

void AddCheck(CLI::App& app, Context& ctx) {
  static bool repair = false;
  auto* check = app.add_subcommand(
      "check",
      _("find stored values the library's statements cannot match (flags that a copy by an "
        "older ztk wrote in another engine's form)"));
  check->add_flag("--repair", repair,
                  _("rewrite them in the database's own form, in one transaction"));
  check->callback([&ctx] {
    ctx.action = [&ctx] {
      if (repair) RefuseReadOnly(ctx.db, "check --repair");
      Check({ctx.db.db, ctx.db.odbc}, repair);
    };
  });
}

void RunDemo(Context& ctx, const std::string& path, int reports) {
  RefuseReadOnly(ctx.db, "demo");
  CatchInterrupts();
  // Declared first, so that the session is closed when the file goes.
  NewTargetFile newFile(ctx.db.odbc.empty() ? path : std::string());
  if (!ctx.db.odbc.empty()) {
    ZTkDb::tool::CreateModuleSchemaOdbc(ctx.db.odbc);
  } else {
    ZTkDb::tool::CreateModuleDatabase(path);
    ctx.db.db = path;
  }
  Session session(ctx.db);
  BuildDemoData(session, reports);
  newFile.Keep();
  if (!ctx.out.json && !ctx.out.csv)
    std::printf("%s\n\n", Say(_("Database: {1}"), ctx.db.odbc.empty() ? path : "ODBC").c_str());
  PrintTypicalRequest(session, ctx.out);
}

void AddDemo(CLI::App& app, Context& ctx) {
  static std::string path = "ztk-demo.db";
  static int reports = 60;
  auto* demo = app.add_subcommand(
      "demo", _("create a database with a realistic data set and show the open orders"));
  demo->add_option("PATH", path, _("the new database file (must not exist)"))
      ->capture_default_str();
  demo->add_option("--reports", reports, _("how many reports to create"))
      ->capture_default_str()
      ->check(CLI::Range(1, 100000));
  demo->callback([&ctx] { ctx.action = [&ctx] { RunDemo(ctx, path, reports); }; });
}

}  // namespace

void AddTablesCommand(CLI::App& app, Context& ctx) {
  auto* tables = app.add_subcommand("tables", _("list the tables with their row counts"));
  tables->callback([&ctx] {
    ctx.action = [&ctx] {
      Session session(ctx.db);
      Tables(session, ctx.out);
    };
  });
}

void RefuseReadOnly(const DbOptions& db, const char* command) {
  if (db.read_only) {
    throw UsageError(Say(_("{1} writes: it cannot run with --read-only"), command));
  }
}

// The order here is the order `ztk help` lists them in.
void AddDatabaseCommands(CLI::App& app, Context& ctx) {
  AddQuery(app, ctx);
  AddInit(app, ctx);
  AddCopy(app, ctx);
  AddImport(app, ctx);
  AddCheck(app, ctx);
  AddDemo(app, ctx);
}

}  // namespace ztk
