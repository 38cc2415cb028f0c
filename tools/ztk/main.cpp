// ztk: the help-desk module database from a terminal, through the library
// exactly as a host application uses it.
#include <CLI/CLI.hpp>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <iostream>

#include "Demo.h"
#include "Fields.h"
#include "Records.h"
#include "Session.h"
#include "connection/DbConnectionRegistry.h"
#include "connection/DbDialect.h"
#include "connection/ModuleSchema.h"
#include "engine/Database.h"

namespace ztk {
namespace {

constexpr int kOk = 0;
constexpr int kFailed = 1;
constexpr int kUsage = 2;

struct Context {
  DbOptions db;
  OutputOptions out;
  std::function<void()> action;
};

std::vector<std::string> SplitList(const std::string& text) {
  std::vector<std::string> parts;
  std::string current;
  for (char c : text + ",") {
    if (c == ',') {
      if (current.empty()) throw UsageError("empty entry in the site list '" + text + "'");
      parts.push_back(current);
      current.clear();
    } else if (std::isdigit(static_cast<unsigned char>(c)) || (c == '-' && current.empty())) {
      current += c;
    } else if (c != ' ') {
      throw UsageError("site lists hold numbers separated by commas, got '" + text + "'");
    }
  }
  return parts;
}

ZTkDb::Date ParseDateOption(const std::string& name, const std::string& text) {
  FieldValue v;
  std::string why;
  if (text.empty() || !ParseValue(FieldKind::kDate, text, v, why)) {
    throw UsageError(name + ": " + (why.empty() ? "a date is required" : why));
  }
  return std::get<ZTkDb::Date>(v);
}

// Sort names of the two lists, with their numbers as an alternative.
int32_t ParseSort(const std::string& text, const std::vector<std::string>& names) {
  if (text.empty()) return 0;
  for (size_t i = 0; i < names.size(); ++i) {
    if (text == names[i] || text == std::to_string(i)) return static_cast<int32_t>(i);
  }
  std::string known;
  for (const auto& n : names) known += (known.empty() ? "" : ", ") + n;
  throw UsageError("--sort: expected one of " + known + " (or 0.." +
                   std::to_string(names.size() - 1) + "), got '" + text + "'");
}

struct ListFilter {
  bool open = false;
  bool done = false;
  int days = 30;
  std::string sort;
  int32_t site = 0;
  std::string sites;
  std::string prefix;
  int32_t obj = 0;
  int typ = -1;
  std::string from;
  std::string to;
  int32_t meldung = 0;
};

void AddFilterOptions(CLI::App* list, ListFilter& f, bool orders) {
  list->add_flag("--open", f.open, "open ones only (the default of the done-state filters)");
  list->add_flag("--done", f.done, "done ones only (those done in the last --days days)");
  list->add_option("--days", f.days, "how many days back done ones are shown")
      ->capture_default_str();
  list->add_option("--sort", f.sort,
                   orders ? "nr, datum, bis, erledigt, wieder or meldung (or 0..6)"
                          : "nr, datum, bis, erledigt or wieder (or 0..5)");
  list->add_option("--site", f.site, "one site (lSoId); site 0 rows are shown as well");
  list->add_option("--sites", f.sites, "a list of sites, e.g. 3,7; site 0 rows as well");
  list->add_option("--prefix", f.prefix, "number prefix (NrVorsatz)");
  list->add_option("--obj", f.obj, "object id; needs --typ");
  list->add_option("--typ", f.typ, "object type (1 site … 8 object)");
  list->add_option("--from", f.from, "first date of a period; needs --to");
  list->add_option("--to", f.to, "last date of a period");
}

// Which list query the options ask for; conflicting ones are a usage error.
enum class Query { kAll, kDone, kObj, kPeriod, kReport };

Query ChooseQuery(const ListFilter& f, bool withReport) {
  if (f.open && f.done) throw UsageError("--open and --done exclude each other");
  const bool doneFamily = f.open || f.done || f.site != 0 || !f.sites.empty() || !f.prefix.empty();
  const bool obj = f.obj != 0 || f.typ >= 0;
  const bool period = !f.from.empty() || !f.to.empty();
  const bool report = withReport && f.meldung != 0;
  if (doneFamily + obj + period + report > 1) {
    throw UsageError(
        "choose one kind of filter: done state (--open/--done/--site/--sites/--prefix), "
        "object (--obj/--typ), period (--from/--to)" +
        std::string(withReport ? " or report (--meldung)" : ""));
  }
  if (f.site != 0 && !f.sites.empty()) throw UsageError("--site and --sites exclude each other");
  if (obj && (f.obj == 0 || f.typ < 0)) throw UsageError("--obj and --typ go together");
  if (period && (f.from.empty() || f.to.empty())) throw UsageError("--from and --to go together");
  if (f.days < -32768 || f.days > 32767) throw UsageError("--days must lie in -32768..32767");
  if (obj) return Query::kObj;
  if (period) return Query::kPeriod;
  if (report) return Query::kReport;
  return doneFamily ? Query::kDone : Query::kAll;
}

void ListOrders(Session& session, const ListFilter& f, const OutputOptions& out) {
  const Query query = ChooseQuery(f, true);
  const auto sort = static_cast<ZTkDb::OrderSortOrderConstants>(
      ParseSort(f.sort, {"none", "nr", "datum", "bis", "erledigt", "wieder", "meldung"}));
  const auto days = static_cast<int16_t>(f.days);
  ZTkDb::CAuftragListe list;
  list.ConnectStorage(session.Client());
  switch (query) {
    case Query::kAll:
      list.ReadAll(sort);
      break;
    case Query::kObj:
      list.ReadByObj(f.obj, static_cast<ZTkDb::TkObjTypes>(f.typ));
      break;
    case Query::kPeriod:
      list.ReadAllInZeitraum(ParseDateOption("--from", f.from), ParseDateOption("--to", f.to));
      break;
    case Query::kReport:
      list.ReadByMsgId(f.meldung, sort);
      break;
    case Query::kDone:
      if (!f.sites.empty()) {
        const auto sites = SplitList(f.sites);
        if (f.prefix.empty())
          list.ReadByDoneAndSoListe(sites, f.done, sort, days);
        else
          list.ReadByDoneAndSoListeAndVorsatz(sites, f.done, f.prefix, sort, days);
      } else if (f.site != 0) {
        if (f.prefix.empty())
          list.ReadByDoneAndSo(f.site, f.done, sort, days);
        else
          list.ReadByDoneAndSoAndVorsatz(f.site, f.done, f.prefix, sort, days);
      } else if (!f.prefix.empty()) {
        list.ReadByDoneAndVorsatz(f.done, f.prefix, sort, days);
      } else {
        list.ReadByDone(f.done, sort, days);
      }
      break;
  }
  PrintList(list, out);
}

void ListReports(Session& session, const ListFilter& f, const OutputOptions& out) {
  const Query query = ChooseQuery(f, false);
  const auto sort = static_cast<ZTkDb::MsgSortOrderConstants>(
      ParseSort(f.sort, {"none", "nr", "datum", "bis", "erledigt", "wieder"}));
  const auto days = static_cast<int16_t>(f.days);
  ZTkDb::CMeldungListe list;
  list.ConnectStorage(session.Client());
  switch (query) {
    case Query::kAll:
      list.ReadAll(sort);
      break;
    case Query::kObj:
      list.ReadByObj(f.obj, static_cast<ZTkDb::TkObjTypes>(f.typ));
      break;
    case Query::kPeriod:
      list.ReadAllInZeitraum(ParseDateOption("--from", f.from), ParseDateOption("--to", f.to));
      break;
    case Query::kReport:
      break;
    case Query::kDone:
      if (!f.sites.empty()) {
        const auto sites = SplitList(f.sites);
        if (f.prefix.empty())
          list.ReadByDoneAndSoListe(sites, f.done, sort, days);
        else
          list.ReadByDoneAndSoListeAndVorsatz(sites, f.done, f.prefix, sort, days);
      } else if (f.site != 0) {
        if (f.prefix.empty())
          list.ReadByDoneAndSo(f.site, f.done, sort, days);
        else
          list.ReadByDoneAndSoAndVorsatz(f.site, f.done, f.prefix, sort, days);
      } else if (!f.prefix.empty()) {
        list.ReadByDoneAndVorsatz(f.done, f.prefix, sort, days);
      } else {
        list.ReadByDone(f.done, sort, days);
      }
      break;
  }
  PrintList(list, out);
}

// show / add / set / delete (and done where the record has a done state) of
// one record class, under `parent`.
template <typename R>
void AddRecordCommands(CLI::App* parent, Context& ctx, bool withDone) {
  const std::string word = RecordKind<R>::kWord;
  static int32_t id = 0;
  static std::vector<std::string> assignments;

  auto* show = parent->add_subcommand("show", "show every field of one " + word);
  show->add_option("ID", id, "its id")->required();
  show->callback([&ctx] {
    ctx.action = [&ctx] { Show<R>(*std::make_unique<Session>(ctx.db), id, ctx.out); };
  });

  auto* add = parent->add_subcommand(
      "add", "add a " + word + " from FIELD=VALUE pairs (fields as `show` names them)");
  add->add_option("FIELD=VALUE", assignments, "field values; the rest take their defaults");
  add->callback([&ctx] {
    ctx.action = [&ctx] {
      Session session(ctx.db);
      Add<R>(session, assignments, ctx.out);
    };
  });

  auto* set = parent->add_subcommand("set", "change fields of one " + word);
  set->add_option("ID", id, "its id")->required();
  set->add_option("FIELD=VALUE", assignments, "the new values")->required();
  set->callback([&ctx] {
    ctx.action = [&ctx] {
      Session session(ctx.db);
      Set<R>(session, id, assignments, ctx.out);
    };
  });

  if (withDone) {
    if constexpr (requires(R r) { r.Erledigt(true); }) {
      auto* done = parent->add_subcommand("done", "mark one " + word + " done, today, now");
      done->add_option("ID", id, "its id")->required();
      done->callback([&ctx] {
        ctx.action = [&ctx] {
          Session session(ctx.db);
          Done<R>(session, id, ctx.out);
        };
      });
    }
  }

  auto* del = parent->add_subcommand("delete", "delete one " + word);
  del->add_option("ID", id, "its id")->required();
  del->callback([&ctx] {
    ctx.action = [&ctx] {
      Session session(ctx.db);
      Delete<R>(session, id, ctx.out);
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
  table.Print(stdout);
}

int Run(int argc, char** argv) {
  Context ctx;
  CLI::App app{
      "ztk: the help-desk module database (reports, orders, bookings, documents)\n"
      "from a terminal. Exit status 0 ok, 1 error, 2 wrong command line."};
  app.require_subcommand(1);
  app.fallthrough();
  app.add_option("--db", ctx.db.db, "the embedded database file");
  app.add_option("--odbc", ctx.db.odbc, "an ODBC connection string (DSN=…; or Driver=…;…)");
  app.add_option("--client", ctx.db.client, "client name to open the database under")
      ->capture_default_str();
  app.add_flag("--json", ctx.out.json, "one JSON document on stdout (dates ISO 8601)");

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
      if (!ctx.db.odbc.empty()) {
        ZTkDb::detail::CreateModuleSchemaOdbc(ctx.db.odbc);
      } else {
        ZTkDb::detail::CreateModuleDatabase(demoPath);
        ctx.db.db = demoPath;
      }
      Session session(ctx.db);
      BuildDemoData(session, demoReports);
      if (!ctx.out.json)
        std::printf("Datenbank: %s\n\n", ctx.db.odbc.empty() ? demoPath.c_str() : "ODBC");
      PrintTypicalRequest(session, ctx.out);
    };
  });

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
  auftragList->add_option("--meldung", orderFilter.meldung, "orders linked to this report");
  auftragList->callback([&] {
    ctx.action = [&] {
      Session session(ctx.db);
      ListOrders(session, orderFilter, ctx.out);
    };
  });
  AddRecordCommands<ZTkDb::CAuftrag>(auftrag, ctx, true);
  int32_t linkOrder = 0, linkReport = 0;
  for (const char* verb : {"link", "unlink"}) {
    const bool linking = std::string(verb) == "link";
    auto* cmd = auftrag->add_subcommand(
        verb, linking ? "link an order to a report" : "remove the link of an order to a report");
    cmd->add_option("ID", linkOrder, "the order's id")->required();
    cmd->add_option("--meldung", linkReport, "the report's id")->required();
    cmd->callback([&, linking] {
      ctx.action = [&, linking] {
        Session session(ctx.db);
        auto order = Load<ZTkDb::CAuftrag>(session, linkOrder);
        if (linking) Load<ZTkDb::CMeldung>(session, linkReport);
        session.Write([&] {
          if (linking) {
            order->Connect2Msg(linkReport);
          } else {
            order->MeldungId(linkReport);
            order->DisConnectFromMsg();
          }
        });
        if (ctx.out.json)
          return PrintJson({{"auftrag", linkOrder}, {"meldung", linkReport}, {"linked", linking}});
        std::printf("auftrag %d %s meldung %d\n", linkOrder,
                    linking ? "linked to" : "unlinked from", linkReport);
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
  int32_t byOrder = 0, byReport = 0;
  bool own = false, fremd = false;
  auto* leistung =
      app.add_subcommand("leistung", "labour bookings (Leistungen)")->require_subcommand(1);
  auto* leistungList = leistung->add_subcommand("list", "the labour bookings of one order");
  leistungList->add_option("--auftrag", byOrder, "the order's id")->required();
  leistungList->callback([&] {
    ctx.action = [&] {
      Session session(ctx.db);
      ZTkDb::CLeistungListe list;
      list.ConnectStorage(session.Client());
      list.ReadByOrderId(byOrder);
      PrintList(list, ctx.out);
    };
  });
  AddRecordCommands<ZTkDb::CLeistung>(leistung, ctx, false);

  auto* material = app.add_subcommand("material", "material bookings")->require_subcommand(1);
  auto* materialList = material->add_subcommand("list", "the material bookings of one order");
  materialList->add_option("--auftrag", byOrder, "the order's id")->required();
  auto* ownFlag =
      materialList->add_flag("--own", own, "only material not supplied with outside work");
  materialList->add_flag("--fremd", fremd, "only material supplied with outside work")
      ->excludes(ownFlag);
  materialList->callback([&] {
    ctx.action = [&] {
      Session session(ctx.db);
      ZTkDb::CMaterialListe list;
      list.ConnectStorage(session.Client());
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
  auto* orderOpt = dokumentList->add_option("--auftrag", byOrder, "the order's id");
  dokumentList->add_option("--meldung", byReport, "the report's id")->excludes(orderOpt);
  dokumentList->callback([&] {
    ctx.action = [&] {
      if ((byOrder == 0) == (byReport == 0)) throw UsageError("give --auftrag ID or --meldung ID");
      Session session(ctx.db);
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
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& e) {
    if (e.get_exit_code() == 0) return app.exit(e);  // --help
    std::fprintf(stderr, "ztk: %s\nRun ztk --help (or ztk COMMAND --help) for the usage.\n",
                 e.what());
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
  } catch (const Failure& e) {
    std::fprintf(stderr, "ztk: %s\n", e.what());
    return kFailed;
  } catch (const ZTkDb::Error& e) {
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
