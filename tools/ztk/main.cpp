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
#include "Help.h"
#include "Import.h"
#include "Inspect.h"
#include "Interrupt.h"
#include "Lists.h"
#include "Records.h"
#include "Refs.h"
#include "Session.h"
#include "Summary.h"
#include "Text.h"
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
  const std::string noun = _(RecordKind<R>::kNoun);
  const std::string what = word == "auftrag"   ? _("its id or number (A12)")
                           : word == "meldung" ? _("its id or number (M7)")
                                               : _("its id");
  static std::vector<std::string> assignments;
  static bool force = false, cascade = false;
  static std::string doneDate, ifUnchanged;
  const auto guard = [](CLI::App* command) {
    command
        ->add_option("--if-unchanged", ifUnchanged,
                     _("write only if the row still holds this token (UId, as show prints "
                       "it); otherwise exit 3 and write nothing"))
        // An empty token (a script's unset variable) must not turn the
        // guard off.
        ->check([](const std::string& token) {
          return token.empty() ? std::string(_("the token is empty: give the UId show printed"))
                               : std::string();
        });
  };

  auto* show = parent->add_subcommand("show", Say(_("show every field of one {1}"), noun));
  show->add_option("ID", ref, what)->required();
  show->callback([&ctx] {
    ctx.action = [&ctx] {
      Session session(ctx.db);
      Show<R>(session, ResolveRef(session, RecordKind<R>::kWord, ref), ctx.out);
    };
  });

  auto* add = parent->add_subcommand(
      "add", Say(_("add one {1} from FIELD=VALUE pairs (fields as show names them)"), noun));
  add->add_option("FIELD=VALUE", assignments, _("field values; the rest take their defaults"));
  add->add_flag("--force", force,
                _("add it even when its number exists under its prefix, or with hours past 24, "
                  "quantities past 100,000 and amounts past 1,000,000.00"));
  add->callback([&ctx] {
    ctx.action = [&ctx] {
      Session session(ctx.db);
      Add<R>(session, assignments, force, ctx.out);
    };
  });

  auto* set = parent->add_subcommand("set", Say(_("change fields of one {1}"), noun));
  set->add_option("ID", ref, what)->required();
  set->add_option("FIELD=VALUE", assignments, _("the new values"))->required();
  set->callback([&ctx] {
    ctx.action = [&ctx] {
      Session session(ctx.db);
      Set<R>(session, ResolveRef(session, RecordKind<R>::kWord, ref), assignments, ctx.out,
             ifUnchanged, force);
    };
  });
  set->add_flag("--force", force,
                _("take a number another record holds, or hours past 24, quantities past "
                  "100,000 and amounts past 1,000,000.00"));
  guard(set);

  if (withDone) {
    if constexpr (requires(R r) { r.Erledigt(true); }) {
      auto* done = parent->add_subcommand(
          "done",
          Say(_("mark one {1} done: today, now (one already done keeps its date unless --date)"),
              noun));
      done->add_option("ID", ref, what)->required();
      done->add_option(
          "--date", doneDate,
          _("the completion date (yyyy-mm-dd or dd.mm.yyyy, a time hh:mm may follow)"));
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
          "reopen", Say(_("open one {1} again: not done, no completion date (31.12.9999)"), noun));
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
      "delete", Say(_("delete one {1} (refused while other rows refer to it)"), noun));
  del->add_option("ID", ref, what)->required();
  del->add_flag("--cascade", cascade,
                _("delete the rows that refer to it too, in one transaction"));
  del->callback([&ctx] {
    ctx.action = [&ctx] {
      Session session(ctx.db);
      Delete<R>(session, ResolveRef(session, RecordKind<R>::kWord, ref), cascade, ctx.out);
    };
  });
}

// The commands that make or fill a database have nothing to do read-only.
void RefuseReadOnly(const DbOptions& db, const char* command) {
  if (db.read_only) {
    throw UsageError(Say(_("{1} writes: it cannot run with --read-only"), command));
  }
}

// `help [COMMAND…]`: the words after it name a command; they are not
// parsed as one.
int Help(CLI::App& app, int argc, char** argv) {
  CLI::App* topic = &app;
  for (int i = 0; i < argc; ++i) {
    if (argv[i][0] == '-') continue;  // ztk help --help, ztk help auftrag -h
    CLI::App* sub = nullptr;
    std::vector<std::string> names;
    for (auto* candidate : topic->get_subcommands([](CLI::App*) { return true; })) {
      if (candidate->get_name() == argv[i]) sub = candidate;
      names.push_back(candidate->get_name());
    }
    if (!sub) {
      const std::string nearest = Nearest(argv[i], names);
      std::fprintf(stderr, "ztk: %s\n",
                   (nearest.empty() ? Say(_("no command '{1}' to show help for"), argv[i])
                                    : Say(_("no command '{1}' to show help for; did you mean "
                                            "'{2}'?"),
                                          argv[i], nearest))
                       .c_str());
      return kUsage;
    }
    topic = sub;
  }
  std::printf("%s", topic->help().c_str());
  return kOk;
}

int Run(int argc, char** argv) {
  Context ctx;
  CLI::App app{
      _("ztk: the help-desk module database (reports, orders, bookings, documents) from a "
        "terminal. Exit status 0 ok, 1 error, 2 wrong command line, 3 the row was changed or "
        "deleted by someone else since it was read (nothing written), 130 interrupted (demo, "
        "copy and import leave nothing half-made).")};
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

  // `help [COMMAND…]` is answered before parsing (below): the words after it
  // name a command, they are not parsed as one.
  app.add_subcommand("help", _("this help, or a command's: ztk help auftrag list"));

  auto* man = app.add_subcommand("man", _("print the manual page (roff; man -l <(ztk man))"));
  man->callback([&] { ctx.action = [&] { std::printf("%s", ManPage(app).c_str()); }; });
  auto* completion =
      app.add_subcommand("completion", _("print the bash completion (source <(ztk completion))"));
  completion->callback(
      [&] { ctx.action = [&] { std::printf("%s", BashCompletion(app).c_str()); }; });

  std::string querySql;
  auto* query = app.add_subcommand(
      "query", _("run one SELECT, read-only, through the library (as a table, CSV or JSON)"));
  query->add_option("SQL", querySql, _("the statement"))->required();
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
      "init",
      _("create the module tables: a new SQLite file PATH, or with --odbc on a data source"));
  init->add_option("PATH", initPath, _("the new database file (must not exist)"));
  init->callback([&] {
    ctx.action = [&] {
      RefuseReadOnly(ctx.db, "init");
      if (initPath.empty() == ctx.db.odbc.empty()) {
        throw UsageError(_("init takes a PATH or --odbc \"CONNSTR\" (one of them)"));
      }
      if (!initPath.empty()) {
        ZTkDb::detail::CreateModuleDatabase(initPath);
        std::printf("%s\n", Say(_("created {1}"), initPath).c_str());
      } else {
        ZTkDb::detail::CreateModuleSchemaOdbc(ctx.db.odbc);
        std::printf("%s\n", _("created the module tables on the ODBC data source"));
      }
    };
  });

  CopyOptions copy;
  auto* copyCommand = app.add_subcommand(
      "copy", _("copy the module's tables to another database, ids and row tokens kept, in one "
                "transaction, verified before it commits"));
  copyCommand->add_option("--from-db", copy.from.db, _("the source: a SQLite file"));
  copyCommand->add_option("--from-odbc", copy.from.odbc,
                          _("the source: an ODBC connection string"));
  copyCommand->add_option("--to-db", copy.to.db, _("the target: a SQLite file"));
  copyCommand->add_option("--to-odbc", copy.to.odbc, _("the target: an ODBC connection string"));
  copyCommand->add_flag("--init", copy.init, _("create the module's tables on the target first"));
  copyCommand->add_flag("--append", copy.append,
                        _("add to a target that holds rows (refused when an id exists there)"));
  copyCommand->callback([&] {
    ctx.action = [&] {
      RefuseReadOnly(ctx.db, "copy");
      CatchInterrupts();
      Copy(copy);
    };
  });

  ImportOptions import;
  auto* importCommand = app.add_subcommand(
      "import", _("import an Access file (.mdb, .accdb) into a SQLite file or an ODBC data "
                  "source; the file is only read"));
  importCommand->add_option("FILE", import.file, _("the Access file"))->required();
  importCommand->add_option("TARGET", import.to.db,
                            _("the SQLite file to write (created when it does not exist)"));
  importCommand->add_option("--to-db", import.to.db, _("the target: a SQLite file"));
  importCommand->add_option("--to-odbc", import.to.odbc,
                            _("the target: an ODBC connection string"));
  importCommand->add_flag("--all-tables", import.all_tables,
                          _("also every other table of the file, into a table of the same name"));
  importCommand->callback([&] {
    ctx.action = [&] {
      RefuseReadOnly(ctx.db, "import");
      CatchInterrupts();
      Import(import);
    };
  });

  bool repair = false;
  auto* check = app.add_subcommand(
      "check",
      _("find stored values the library's statements cannot match (flags that a copy by an "
        "older ztk wrote in another engine's form)"));
  check->add_flag("--repair", repair,
                  _("rewrite them in the database's own form, in one transaction"));
  check->callback([&] {
    ctx.action = [&] {
      if (repair) RefuseReadOnly(ctx.db, "check --repair");
      Check({ctx.db.db, ctx.db.odbc}, repair);
    };
  });

  std::string demoPath = "ztk-demo.db";
  int demoReports = 60;
  auto* demo = app.add_subcommand(
      "demo", _("create a database with a realistic data set and show the open orders"));
  demo->add_option("PATH", demoPath, _("the new database file (must not exist)"))
      ->capture_default_str();
  demo->add_option("--reports", demoReports, _("how many reports to create"))
      ->capture_default_str()
      ->check(CLI::Range(1, 100000));
  demo->callback([&] {
    ctx.action = [&] {
      RefuseReadOnly(ctx.db, "demo");
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
      if (!ctx.out.json && !ctx.out.csv)
        std::printf("%s\n\n",
                    Say(_("Database: {1}"), ctx.db.odbc.empty() ? demoPath : "ODBC").c_str());
      PrintTypicalRequest(session, ctx.out);
    };
  });

  AddSummaryCommand(app, ctx.db, ctx.out, ctx.action);
  auto* tables = app.add_subcommand("tables", _("list the tables with their row counts"));
  tables->callback([&] {
    ctx.action = [&] {
      Session session(ctx.db);
      Tables(session, ctx.out);
    };
  });

  // Orders.
  ListFilter orderFilter;
  auto* auftrag = app.add_subcommand("auftrag", _("work orders (Aufträge)"))->require_subcommand(1);
  auto* auftragList = auftrag->add_subcommand(
      "list", _("list orders: all, by done state, site(s), prefix, object, period or report"));
  AddFilterOptions(auftragList, orderFilter, true);
  std::string orderReportRef;
  auftragList->add_option("--meldung", orderReportRef,
                          _("orders linked to this report (its id or number, M7)"));
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
    auto* cmd =
        auftrag->add_subcommand(verb, linking ? _("link an order to a report")
                                              : _("remove the link of an order to a report"));
    cmd->add_option("ID", linkOrderRef, _("the order's id or number (A12)"))->required();
    cmd->add_option("--meldung", linkReportRef, _("the report's id or number (M7)"))->required();
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
            throw Failure(
                Say(_("order {1} is linked to report {2} already"), linkOrder, linkReport));
          }
          if (order->MeldungId() != 0) {
            throw Failure(Say(_("order {1} is linked to report {2} already; an order has one "
                                "report (a second link would stop every order list at this "
                                "order). Unlink it first."),
                              linkOrder, order->MeldungId()));
          }
        } else if (order->MeldungId() != linkReport) {
          throw Failure(Say(_("order {1} is not linked to report {2}"), linkOrder, linkReport));
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
  auto* meldung = app.add_subcommand("meldung", _("reports (Meldungen)"))->require_subcommand(1);
  auto* meldungList = meldung->add_subcommand(
      "list", _("list reports: all, by done state, site(s), prefix, object or period"));
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
      app.add_subcommand("leistung", _("labour bookings (Leistungen)"))->require_subcommand(1);
  auto* leistungList = leistung->add_subcommand("list", _("the labour bookings of one order"));
  leistungList->add_option("--auftrag", byOrderRef, _("the order's id or number (A12)"))
      ->required();
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

  auto* material = app.add_subcommand("material", _("material bookings"))->require_subcommand(1);
  auto* materialList = material->add_subcommand("list", _("the material bookings of one order"));
  materialList->add_option("--auftrag", byOrderRef, _("the order's id or number (A12)"))
      ->required();
  auto* ownFlag =
      materialList->add_flag("--own", own, _("only material not supplied with outside work"));
  materialList->add_flag("--fremd", fremd, _("only material supplied with outside work"))
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

  auto* dokument = app.add_subcommand("dokument", _("document links"))->require_subcommand(1);
  auto* dokumentList =
      dokument->add_subcommand("list", _("the document links of an order or a report"));
  auto* orderOpt =
      dokumentList->add_option("--auftrag", byOrderRef, _("the order's id or number (A12)"));
  dokumentList->add_option("--meldung", byReportRef, _("the report's id or number (M7)"))
      ->excludes(orderOpt);
  dokumentList->callback([&] {
    ctx.action = [&] {
      if (byOrderRef.empty() == byReportRef.empty()) {
        throw UsageError(_("give --auftrag ID or --meldung ID"));
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

  FinishHelp(app);
  if (argc == 1) {
    std::fprintf(stderr, "%s", app.help().c_str());
    return kUsage;
  }
  if (const int at = FirstWord(argc, argv); at < argc && std::string(argv[at]) == "help") {
    return Help(app, argc - at - 1, argv + at + 1);
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
  try {
    ctx.action();
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
