// ztk: the help-desk module database from a terminal, through the library
// exactly as a host application uses it.
#include <CLI/CLI.hpp>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <iostream>

#include "Check.h"
#include "Copy.h"
#include "Demo.h"
#include "Docs.h"
#include "Fields.h"
#include "Import.h"
#include "Interrupt.h"
#include "Lists.h"
#include "Records.h"
#include "Refs.h"
#include "Session.h"
#include "Summary.h"
#include "Transfer.h"
#include "connection/DbConnectionRegistry.h"
#include "connection/DbDialect.h"
#include "connection/ModuleSchema.h"
#include "engine/Database.h"

namespace ztk {
namespace {

constexpr int kOk = 0;
constexpr int kFailed = 1;
constexpr int kUsage = 2;
constexpr int kConflict = 3;
constexpr int kInterrupted = 130;  // as a shell reports a Ctrl-C

struct Context {
  DbOptions db;
  OutputOptions out;
  std::function<void()> action;
};

// show / add / set / delete (and done where the record has a done state) of
// one record class, under `parent`.
template <typename R>
void AddRecordCommands(CLI::App* parent, Context& ctx, bool withDone) {
  const std::string word = RecordKind<R>::kWord;
  static std::string ref;
  const std::string what =
      std::string("its id") + (word == "auftrag" || word == "meldung" ? " or number (A12)" : "");
  static std::vector<std::string> assignments;
  static bool force = false, cascade = false;
  static std::string doneDate, ifUnchanged;
  const auto guard = [](CLI::App* command) {
    command->add_option("--if-unchanged", ifUnchanged,
                        "write only if the row still holds this token (UId, as show prints it); "
                        "otherwise exit 3 and write nothing");
  };

  auto* show = parent->add_subcommand("show", "show every field of one " + word);
  show->add_option("ID", ref, what)->required();
  show->callback([&ctx] {
    ctx.action = [&ctx] {
      Session session(ctx.db);
      Show<R>(session, ResolveRef(session, RecordKind<R>::kWord, ref), ctx.out);
    };
  });

  auto* add = parent->add_subcommand(
      "add", "add a " + word + " from FIELD=VALUE pairs (fields as `show` names them)");
  add->add_option("FIELD=VALUE", assignments, "field values; the rest take their defaults");
  add->add_flag("--force", force,
                "add it even when its number exists under its prefix, or with hours past 24, "
                "quantities past 100.000 and amounts past 1.000.000,00");
  add->callback([&ctx] {
    ctx.action = [&ctx] {
      Session session(ctx.db);
      Add<R>(session, assignments, force, ctx.out);
    };
  });

  auto* set = parent->add_subcommand("set", "change fields of one " + word);
  set->add_option("ID", ref, what)->required();
  set->add_option("FIELD=VALUE", assignments, "the new values")->required();
  set->callback([&ctx] {
    ctx.action = [&ctx] {
      Session session(ctx.db);
      Set<R>(session, ResolveRef(session, RecordKind<R>::kWord, ref), assignments, ctx.out,
             ifUnchanged, force);
    };
  });
  set->add_flag("--force", force,
                "take a number another record holds, or hours past 24, quantities past 100.000 "
                "and amounts past 1.000.000,00");
  guard(set);

  if (withDone) {
    if constexpr (requires(R r) { r.Erledigt(true); }) {
      auto* done = parent->add_subcommand(
          "done", "mark one " + word +
                      " done: today, now (one already done keeps its date unless --date)");
      done->add_option("ID", ref, what)->required();
      done->add_option("--date", doneDate, "the completion date (dd.mm.yyyy[ hh:mm])");
      done->callback([&ctx] {
        ctx.action = [&ctx] {
          Session session(ctx.db);
          const int32_t id = ResolveRef(session, RecordKind<R>::kWord, ref);
          if (doneDate.empty()) return Done<R>(session, id, true, nullptr, ctx.out, ifUnchanged);
          const ZTkDb::Date date = ParseDateOption("--date", doneDate);
          Done<R>(session, id, true, &date, ctx.out, ifUnchanged);
        };
      });
      guard(done);
      auto* reopen = parent->add_subcommand(
          "reopen", "open one " + word + " again: not done, no completion date (31.12.9999)");
      reopen->add_option("ID", ref, what)->required();
      reopen->callback([&ctx] {
        ctx.action = [&ctx] {
          Session session(ctx.db);
          Done<R>(session, ResolveRef(session, RecordKind<R>::kWord, ref), false, nullptr, ctx.out,
                  ifUnchanged);
        };
      });
      guard(reopen);
    }
  }

  auto* del = parent->add_subcommand(
      "delete", "delete one " + word + " (refused while other rows refer to it)");
  del->add_option("ID", ref, what)->required();
  del->add_flag("--cascade", cascade, "delete the rows that refer to it too, in one transaction");
  del->callback([&ctx] {
    ctx.action = [&ctx] {
      Session session(ctx.db);
      Delete<R>(session, ResolveRef(session, RecordKind<R>::kWord, ref), cascade, ctx.out);
    };
  });
}

void Tables(Session& session, const OutputOptions& out) {
  auto db = ZTkDb::detail::DbConnectionRegistry::Instance()
                .Item(ZTkDb::detail::WorkspaceName(session.Client()))
                ->GetDatabase();
  nlohmann::ordered_json doc = nlohmann::ordered_json::object();
  Table table({"Tabelle", "Zeilen"});
  for (const auto& name : db->TableNames()) {
    ZTkDb::Recordset rs(db, "", db->Query("SELECT count(*) AS n FROM " + name));
    doc[name] = rs.Fields("n").ToLong();
    table.Add({name, std::to_string(rs.Fields("n").ToLong())});
  }
  if (out.json) return PrintJson(doc);
  table.Print(stdout, out);
}

// One query of a support engineer's, read-only, through the library (so
// adapted as the library adapts its own statements).
void Query(Session& session, const std::string& sql, const OutputOptions& out) {
  auto db = ZTkDb::detail::DbConnectionRegistry::Instance()
                .Item(ZTkDb::detail::WorkspaceName(session.Client()))
                ->GetDatabase();
  ZTkDb::Recordset rs(db, sql, db->Query(sql));
  const int32_t columns = rs.FieldCount();
  std::vector<std::string> names;
  for (int32_t i = 0; i < columns; ++i) names.push_back(rs.FieldName(i));
  nlohmann::ordered_json rows = nlohmann::ordered_json::array();
  Table table(names);
  if (rs.RecordCount() > 0) {
    for (rs.MoveFirst(); !rs.Eof(); rs.MoveNext()) {
      nlohmann::ordered_json row = nlohmann::ordered_json::object();
      std::vector<std::string> cells;
      for (int32_t i = 0; i < columns; ++i) {
        const ZTkDb::Variant v = rs.Fields(i);
        cells.push_back(VariantText(v));
        row[names[static_cast<size_t>(i)]] = VariantJson(v);
      }
      rows.push_back(std::move(row));
      table.Add(std::move(cells));
    }
  }
  if (out.json) return PrintJson(rows);
  table.Print(stdout, out);
  if (!out.csv) std::printf("%zu %s\n", table.Rows(), table.Rows() == 1 ? "Zeile" : "Zeilen");
}

// CLI11's words, said the way a user of this tool needs them.
std::string ParseMessage(const CLI::App& app, const CLI::ParseError& e, int argc, char** argv) {
  const std::string what = e.what();
  if (what.find("At Most 1 required but received") != std::string::npos) {
    return what.substr(0, what.find(':')) + " was given more than once";
  }
  if (dynamic_cast<const CLI::ExtrasError*>(&e) || what.find("A subcommand is required") == 0 ||
      what.find("a command is required") != std::string::npos) {
    // The first word that is no option: an unknown command, or none at all.
    for (int i = 1; i < argc; ++i) {
      const std::string word = argv[i];
      if (word.starts_with("-")) {
        // The global options that take a value take the next word.
        if (word == "--db" || word == "--odbc" || word == "--client") ++i;
        continue;
      }
      std::string known;
      bool found = false;
      for (const auto* sub : app.get_subcommands([](const CLI::App*) { return true; })) {
        known += (known.empty() ? "" : ", ") + sub->get_name();
        found |= sub->get_name() == word;
      }
      if (!found) return "unknown command '" + word + "'; the commands are " + known;
      break;
    }
    if (what.find("equired") != std::string::npos) return "a command is required";
  }
  return what;
}

int Run(int argc, char** argv) {
  Context ctx;
  CLI::App app{
      "ztk: the help-desk module database (reports, orders, bookings, documents)\n"
      "from a terminal. Exit status 0 ok, 1 error, 2 wrong command line, 3 the row was\n"
      "changed or deleted by someone else since it was read (nothing written), 130\n"
      "interrupted (demo, copy and import leave nothing half-made)."};
  app.fallthrough();
  app.set_version_flag("--version", "ztk " ZTKDB_VERSION " (ZTkDb " ZTKDB_VERSION ")");
  app.add_option("--db", ctx.db.db, "the embedded database file (or ZTK_DB)")->envname("ZTK_DB");
  app.add_option("--odbc", ctx.db.odbc, "an ODBC connection string, DSN=…; or Driver=…;… (or ZTK_ODBC)")
      ->envname("ZTK_ODBC");
  app.add_option("--client", ctx.db.client, "client name to open the database under")
      ->capture_default_str();
  app.add_flag("--read-only", ctx.db.read_only, "open the database read-only: every write is refused");
  auto* json = app.add_flag("--json", ctx.out.json,
                            "one JSON document on stdout (dates ISO 8601, money as exact text)");
  app.add_flag("--csv", ctx.out.csv, "CSV with a header row (RFC 4180) instead of a table")
      ->excludes(json);
  app.add_flag("--wide", ctx.out.wide, "cut nothing to fit the terminal");

  // `help [COMMAND…]` is answered before parsing (below): the words after it
  // name a command, they are not parsed as one.
  app.add_subcommand("help", "this help, or a command's: ztk help auftrag list");

  auto* man = app.add_subcommand("man", "print the manual page (roff; man -l <(ztk man))");
  man->callback([&] { ctx.action = [&] { std::printf("%s", ManPage(app).c_str()); }; });
  auto* completion = app.add_subcommand(
      "completion", "print the bash completion (source <(ztk completion))");
  completion->callback(
      [&] { ctx.action = [&] { std::printf("%s", BashCompletion(app).c_str()); }; });

  std::string querySql;
  auto* query = app.add_subcommand(
      "query", "run one SELECT, read-only, through the library (as a table, CSV or JSON)");
  query->add_option("SQL", querySql, "the statement")->required();
  query->callback([&] {
    ctx.action = [&] {
      DbOptions readOnly = ctx.db;
      readOnly.read_only = true;
      Session session(readOnly);
      Query(session, querySql, ctx.out);
    };
  });

  std::string initPath;
  auto* init = app.add_subcommand(
      "init", "create the module tables: a new SQLite file PATH, or with --odbc on a data source");
  init->add_option("PATH", initPath, "the new database file (must not exist)");
  init->callback([&] {
    ctx.action = [&] {
      if (initPath.empty() == ctx.db.odbc.empty()) {
        throw UsageError("init takes a PATH or --odbc \"CONNSTR\" (one of them)");
      }
      if (!initPath.empty()) {
        ZTkDb::detail::CreateModuleDatabase(initPath);
        std::printf("created %s\n", initPath.c_str());
      } else {
        ZTkDb::detail::CreateModuleSchemaOdbc(ctx.db.odbc);
        std::printf("created the module tables on the ODBC data source\n");
      }
    };
  });

  CopyOptions copy;
  auto* copyCommand = app.add_subcommand(
      "copy", "copy the module's tables to another database, ids and row tokens kept, in one "
              "transaction, verified before it commits");
  copyCommand->add_option("--from-db", copy.from.db, "the source: a SQLite file");
  copyCommand->add_option("--from-odbc", copy.from.odbc, "the source: an ODBC connection string");
  copyCommand->add_option("--to-db", copy.to.db, "the target: a SQLite file");
  copyCommand->add_option("--to-odbc", copy.to.odbc, "the target: an ODBC connection string");
  copyCommand->add_flag("--init", copy.init, "create the module's tables on the target first");
  copyCommand->add_flag("--append", copy.append,
                        "add to a target that holds rows (refused when an id exists there)");
  copyCommand->callback([&] {
    ctx.action = [&] {
      CatchInterrupts();
      Copy(copy);
    };
  });

  ImportOptions import;
  auto* importCommand = app.add_subcommand(
      "import", "import an Access file (.mdb, .accdb) into a SQLite file or an ODBC data source; "
                "the file is only read");
  importCommand->add_option("FILE", import.file, "the Access file")->required();
  importCommand->add_option("TARGET", import.to.db,
                            "the SQLite file to write (created when it does not exist)");
  importCommand->add_option("--to-db", import.to.db, "the target: a SQLite file");
  importCommand->add_option("--to-odbc", import.to.odbc, "the target: an ODBC connection string");
  importCommand->add_flag("--all-tables", import.all_tables,
                          "also every other table of the file, into a table of the same name");
  importCommand->callback([&] {
    ctx.action = [&] {
      CatchInterrupts();
      Import(import);
    };
  });

  bool repair = false;
  auto* check = app.add_subcommand(
      "check",
      "find stored values the library's statements cannot match (flags that a copy "
      "by an older ztk wrote in another engine's form)");
  check->add_flag("--repair", repair,
                  "rewrite them in the database's own form, in one transaction");
  check->callback([&] {
    ctx.action = [&] {
      if (repair && ctx.db.read_only) {
        throw UsageError("check --repair writes: it cannot run with --read-only");
      }
      Check({ctx.db.db, ctx.db.odbc}, repair);
    };
  });

  std::string demoPath = "ztk-demo.db";
  int demoReports = 60;
  auto* demo = app.add_subcommand(
      "demo", "create a database with a realistic data set and show the open orders");
  demo->add_option("PATH", demoPath, "the new database file (must not exist)")
      ->capture_default_str();
  demo->add_option("--reports", demoReports, "how many reports to create")
      ->capture_default_str()
      ->check(CLI::Range(1, 100000));
  demo->callback([&] {
    ctx.action = [&] {
      CatchInterrupts();
      // Declared first, so that the session is closed when the file goes.
      NewTargetFile newFile(ctx.db.odbc.empty() ? demoPath : std::string());
      if (!ctx.db.odbc.empty()) {
        ZTkDb::detail::CreateModuleSchemaOdbc(ctx.db.odbc);
      } else {
        ZTkDb::detail::CreateModuleDatabase(demoPath);
        ctx.db.db = demoPath;
      }
      Session session(ctx.db);
      BuildDemoData(session, demoReports);
      newFile.Keep();
      if (!ctx.out.json)
        std::printf("Datenbank: %s\n\n", ctx.db.odbc.empty() ? demoPath.c_str() : "ODBC");
      PrintTypicalRequest(session, ctx.out);
    };
  });

  AddSummaryCommand(app, ctx.db, ctx.out, ctx.action);
  auto* tables = app.add_subcommand("tables", "list the tables with their row counts");
  tables->callback([&] {
    ctx.action = [&] {
      Session session(ctx.db);
      Tables(session, ctx.out);
    };
  });

  // Orders.
  ListFilter orderFilter;
  auto* auftrag = app.add_subcommand("auftrag", "work orders (Aufträge)")->require_subcommand(1);
  auto* auftragList = auftrag->add_subcommand(
      "list", "list orders: all, by done state, site(s), prefix, object, period or report");
  AddFilterOptions(auftragList, orderFilter, true);
  std::string orderReportRef;
  auftragList->add_option("--meldung", orderReportRef,
                          "orders linked to this report (its id or number, M7)");
  auftragList->callback([&] {
    ctx.action = [&] {
      Session session(ctx.db);
      if (!orderReportRef.empty()) {
        orderFilter.meldung = ResolveRef(session, "meldung", orderReportRef);
      }
      ListOrders(session, orderFilter, ctx.out);
    };
  });
  AddRecordCommands<ZTkDb::CAuftrag>(auftrag, ctx, true);
  std::string linkOrderRef, linkReportRef;
  for (const char* verb : {"link", "unlink"}) {
    const bool linking = std::string(verb) == "link";
    auto* cmd = auftrag->add_subcommand(
        verb, linking ? "link an order to a report" : "remove the link of an order to a report");
    cmd->add_option("ID", linkOrderRef, "the order's id or number (A12)")->required();
    cmd->add_option("--meldung", linkReportRef, "the report's id or number (M7)")->required();
    cmd->callback([&, linking] {
      ctx.action = [&, linking] {
        Session session(ctx.db);
        const int32_t linkOrder = ResolveRef(session, "auftrag", linkOrderRef);
        const int32_t linkReport = ResolveRef(session, "meldung", linkReportRef);
        auto order = Load<ZTkDb::CAuftrag>(session, linkOrder);
        if (linking) {
          Load<ZTkDb::CMeldung>(session, linkReport);
          // An order has one report: a second link row would make every
          // order list stop at this order (error 457).
          if (order->MeldungId() == linkReport) {
            throw Failure("auftrag " + std::to_string(linkOrder) + " is linked to meldung " +
                          std::to_string(linkReport) + " already");
          }
          if (order->MeldungId() != 0) {
            throw Failure("auftrag " + std::to_string(linkOrder) + " is linked to meldung " +
                          std::to_string(order->MeldungId()) +
                          " already; an order has one report (a second link would stop every "
                          "order list at this order). Unlink it first.");
          }
        } else if (order->MeldungId() != linkReport) {
          throw Failure("auftrag " + std::to_string(linkOrder) + " is not linked to meldung " +
                        std::to_string(linkReport));
        }
        session.Write([&] {
          if (linking) {
            order->Connect2Msg(linkReport);
          } else {
            order->MeldungId(linkReport);
            order->DisConnectFromMsg();
          }
        });
        PrintStored<ZTkDb::CAuftrag>(session, linkOrder, ctx.out);
      };
    });
  }

  // Reports.
  ListFilter reportFilter;
  auto* meldung = app.add_subcommand("meldung", "reports (Meldungen)")->require_subcommand(1);
  auto* meldungList = meldung->add_subcommand(
      "list", "list reports: all, by done state, site(s), prefix, object or period");
  AddFilterOptions(meldungList, reportFilter, false);
  meldungList->callback([&] {
    ctx.action = [&] {
      Session session(ctx.db);
      ListReports(session, reportFilter, ctx.out);
    };
  });
  AddRecordCommands<ZTkDb::CMeldung>(meldung, ctx, true);

  // Bookings and documents.
  std::string byOrderRef, byReportRef;
  bool own = false, fremd = false;
  auto* leistung =
      app.add_subcommand("leistung", "labour bookings (Leistungen)")->require_subcommand(1);
  auto* leistungList = leistung->add_subcommand("list", "the labour bookings of one order");
  leistungList->add_option("--auftrag", byOrderRef, "the order's id or number (A12)")->required();
  leistungList->callback([&] {
    ctx.action = [&] {
      Session session(ctx.db);
      ZTkDb::CLeistungListe list;
      list.ConnectStorage(session.Client());
      list.ReadByOrderId(ResolveRef(session, "auftrag", byOrderRef));
      PrintList(list, ctx.out);
    };
  });
  AddRecordCommands<ZTkDb::CLeistung>(leistung, ctx, false);

  auto* material = app.add_subcommand("material", "material bookings")->require_subcommand(1);
  auto* materialList = material->add_subcommand("list", "the material bookings of one order");
  materialList->add_option("--auftrag", byOrderRef, "the order's id or number (A12)")->required();
  auto* ownFlag =
      materialList->add_flag("--own", own, "only material not supplied with outside work");
  materialList->add_flag("--fremd", fremd, "only material supplied with outside work")
      ->excludes(ownFlag);
  materialList->callback([&] {
    ctx.action = [&] {
      Session session(ctx.db);
      ZTkDb::CMaterialListe list;
      list.ConnectStorage(session.Client());
      const int32_t byOrder = ResolveRef(session, "auftrag", byOrderRef);
      if (own)
        list.ReadMaterialByOrderId(byOrder);
      else if (fremd)
        list.ReadFremdByOrderId(byOrder);
      else
        list.ReadByOrderId(byOrder);
      PrintList(list, ctx.out);
    };
  });
  AddRecordCommands<ZTkDb::CMaterial>(material, ctx, false);

  auto* dokument = app.add_subcommand("dokument", "document links")->require_subcommand(1);
  auto* dokumentList =
      dokument->add_subcommand("list", "the document links of an order or a report");
  auto* orderOpt =
      dokumentList->add_option("--auftrag", byOrderRef, "the order's id or number (A12)");
  dokumentList->add_option("--meldung", byReportRef, "the report's id or number (M7)")
      ->excludes(orderOpt);
  dokumentList->callback([&] {
    ctx.action = [&] {
      if (byOrderRef.empty() == byReportRef.empty()) {
        throw UsageError("give --auftrag ID or --meldung ID");
      }
      Session session(ctx.db);
      const int32_t byOrder = byOrderRef.empty() ? 0 : ResolveRef(session, "auftrag", byOrderRef);
      const int32_t byReport =
          byReportRef.empty() ? 0 : ResolveRef(session, "meldung", byReportRef);
      ZTkDb::CMsgOrderDokumentListe list;
      list.ConnectStorage(session.Client());
      if (byOrder != 0)
        list.ReadByOrderId(byOrder);
      else
        list.ReadByMsgId(byReport);
      PrintList(list, ctx.out);
    };
  });
  AddRecordCommands<ZTkDb::CMsgOrderDokument>(dokument, ctx, false);

  if (argc == 1) {
    std::fprintf(stderr, "%s", app.help().c_str());
    return kUsage;
  }
  if (std::string(argv[1]) == "help") {
    CLI::App* topic = &app;
    for (int i = 2; i < argc; ++i) {
      CLI::App* sub = nullptr;
      for (auto* candidate : topic->get_subcommands([](CLI::App*) { return true; })) {
        if (candidate->get_name() == argv[i]) sub = candidate;
      }
      if (!sub) {
        std::fprintf(stderr, "ztk: no command '%s' to show help for\n", argv[i]);
        return kUsage;
      }
      topic = sub;
    }
    std::printf("%s", topic->help().c_str());
    return kOk;
  }
  try {
    app.parse(argc, argv);
    if (!ctx.action) throw CLI::RequiredError("a command");
  } catch (const CLI::ParseError& e) {
    if (e.get_exit_code() == 0) return app.exit(e);  // --help, --version
    std::fprintf(stderr, "ztk: %s\nRun ztk help (or ztk help COMMAND) for the usage.\n",
                 ParseMessage(app, e, argc, argv).c_str());
    return kUsage;
  }
  try {
    ctx.action();
    return kOk;
  } catch (const UsageError& e) {
    std::fprintf(stderr, "ztk: %s\n", e.what());
    return kUsage;
  } catch (const std::invalid_argument& e) {
    std::fprintf(stderr, "ztk: %s\n", e.what());
    return kUsage;
  } catch (const Interrupted& e) {
    std::fprintf(stderr,
                 "ztk: %s: nothing was kept (a new file was removed, a transaction rolled "
                 "back); run the command again\n",
                 e.what());
    return kInterrupted;
  } catch (const Conflict& e) {
    std::fprintf(stderr, "ztk: %s\n", e.what());
    return kConflict;
  } catch (const Failure& e) {
    std::fprintf(stderr, "ztk: %s\n", e.what());
    return kFailed;
  } catch (const ZTkDb::Error& e) {
    if (e.Number() == 3260) {
      std::fprintf(stderr,
                   "ztk: the database is busy: another program held a lock for longer than the "
                   "wait allows. Nothing was written; try again.\n");
      return kFailed;
    }
    std::fprintf(stderr, "ztk: error %ld (%s): %s\n", e.Number(), e.Source().c_str(),
                 e.Description().c_str());
    return kFailed;
  } catch (const std::exception& e) {
    // Out of memory, an unwritable output stream and the like: still a
    // message and status 1 rather than an abort.
    std::fprintf(stderr, "ztk: %s\n", e.what());
    return kFailed;
  }
}

}  // namespace
}  // namespace ztk

int main(int argc, char** argv) {
  try {
    ztk::InstallMessageLines();
    return ztk::Run(argc, argv);
  } catch (...) {
    std::fputs("ztk: unexpected failure\n", stderr);
    return 1;
  }
}
