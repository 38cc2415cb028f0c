// The record families: auftrag, meldung, leistung, material and dokument,
// each with its list and the commands on one record.
#include <cstdio>

#include "Commands.h"
#include "Fields.h"
#include "Lists.h"
#include "Records.h"
#include "Refs.h"
#include "Text.h"

namespace ztk {
namespace {

// One record family's arguments: one command of the family runs.
struct RecordArgs {
  std::string ref;
  std::vector<std::string> assignments;
  bool force = false, cascade = false;
  std::string done_date, if_unchanged;
};

template <typename R>
RecordArgs& ArgsOf() {
  static RecordArgs args;
  return args;
}

template <typename R>
std::string IdHelp() {
  const std::string word = RecordKind<R>::kWord;
  return word == "auftrag"   ? _("its id or number (A12)")
         : word == "meldung" ? _("its id or number (M7)")
                             : _("its id");
}

template <typename R>
int32_t Resolved(Session& session) {
  return ResolveRef(session, RecordKind<R>::kWord, ArgsOf<R>().ref);
}

// --if-unchanged TOKEN on a command that writes over a row.
void AddGuard(CLI::App* command, std::string& token) {
  command
      ->add_option("--if-unchanged", token,
                   _("write only if the row still holds this token (UId, as show prints "
                     "it); otherwise exit 3 and write nothing"))
      // An empty token (a script's unset variable) must not turn the guard
      // off.
      ->check([](const std::string& given) {
        return given.empty() ? std::string(_("the token is empty: give the UId show printed"))
                             : std::string();
      });
}

template <typename R>
void AddShowAddSet(CLI::App* parent, Context& ctx) {
  RecordArgs& a = ArgsOf<R>();
  const std::string noun = _(RecordKind<R>::kNoun);
  auto* show = parent->add_subcommand("show", Say(_("show every field of one {1}"), noun));
  show->add_option("ID", a.ref, IdHelp<R>())->required();
  show->callback([&ctx] {
    ctx.action = [&ctx] {
      Session session(ctx.db);
      Show<R>(session, Resolved<R>(session), ctx.out);
    };
  });

  auto* add = parent->add_subcommand(
      "add", Say(_("add one {1} from FIELD=VALUE pairs (fields as show names them)"), noun));
  add->add_option("FIELD=VALUE", a.assignments, _("field values; the rest take their defaults"));
  add->add_flag("--force", a.force,
                _("add it even when its number exists under its prefix, or with hours past 24, "
                  "quantities past 100,000 and amounts past 1,000,000.00"));
  add->callback([&ctx, &a] {
    ctx.action = [&ctx, &a] {
      Session session(ctx.db);
      Add<R>(session, a.assignments, a.force, ctx.out);
    };
  });

  auto* set = parent->add_subcommand("set", Say(_("change fields of one {1}"), noun));
  set->add_option("ID", a.ref, IdHelp<R>())->required();
  set->add_option("FIELD=VALUE", a.assignments, _("the new values"))->required();
  set->callback([&ctx, &a] {
    ctx.action = [&ctx, &a] {
      Session session(ctx.db);
      Set<R>(session, Resolved<R>(session), a.assignments, ctx.out, a.if_unchanged, a.force);
    };
  });
  set->add_flag("--force", a.force,
                _("take a number another record holds, or hours past 24, quantities past "
                  "100,000 and amounts past 1,000,000.00"));
  AddGuard(set, a.if_unchanged);
}

template <typename R>
void AddDoneReopen(CLI::App* parent, Context& ctx) {
  RecordArgs& a = ArgsOf<R>();
  const std::string noun = _(RecordKind<R>::kNoun);
  auto* done = parent->add_subcommand(
      "done",
      Say(_("mark one {1} done: today, now (one already done keeps its date unless --date)"),
          noun));
  done->add_option("ID", a.ref, IdHelp<R>())->required();
  done->add_option("--date", a.done_date,
                   _("the completion date (yyyy-mm-dd or dd.mm.yyyy, a time hh:mm may follow)"));
  done->callback([&ctx, &a] {
    ctx.action = [&ctx, &a] {
      Session session(ctx.db);
      const int32_t id = Resolved<R>(session);
      if (a.done_date.empty()) return Done<R>(session, id, true, nullptr, ctx.out, a.if_unchanged);
      const ZTkDb::Date date = ParseDateOption("--date", a.done_date);
      Done<R>(session, id, true, &date, ctx.out, a.if_unchanged);
    };
  });
  AddGuard(done, a.if_unchanged);
  auto* reopen = parent->add_subcommand(
      "reopen", Say(_("open one {1} again: not done, no completion date (31.12.9999)"), noun));
  reopen->add_option("ID", a.ref, IdHelp<R>())->required();
  reopen->callback([&ctx, &a] {
    ctx.action = [&ctx, &a] {
      Session session(ctx.db);
      Done<R>(session, Resolved<R>(session), false, nullptr, ctx.out, a.if_unchanged);
    };
  });
  AddGuard(reopen, a.if_unchanged);
}

// show / add / set / delete (and done / reopen where the record has a done
// state) of one record class, under `parent`.
template <typename R>
void AddRecordCommands(CLI::App* parent, Context& ctx) {
  RecordArgs& a = ArgsOf<R>();
  AddShowAddSet<R>(parent, ctx);
  if constexpr (requires(R r) { r.Erledigt(true); }) AddDoneReopen<R>(parent, ctx);
  auto* del = parent->add_subcommand("delete",
                                     Say(_("delete one {1} (refused while other rows refer to it)"),
                                         std::string(_(RecordKind<R>::kNoun))));
  del->add_option("ID", a.ref, IdHelp<R>())->required();
  del->add_flag("--cascade", a.cascade,
                _("delete the rows that refer to it too, in one transaction"));
  del->callback([&ctx, &a] {
    ctx.action = [&ctx, &a] {
      Session session(ctx.db);
      Delete<R>(session, Resolved<R>(session), a.cascade, ctx.out);
    };
  });
}

// `auftrag link|unlink ID --meldung ID`: an order has at most one report.
void LinkOrder(Context& ctx, const std::string& orderRef, const std::string& reportRef,
               bool linking) {
  Session session(ctx.db);
  const int32_t orderId = ResolveRef(session, "auftrag", orderRef);
  const int32_t reportId = ResolveRef(session, "meldung", reportRef);
  auto order = Load<ZTkDb::CAuftrag>(session, orderId);
  if (linking) {
    Load<ZTkDb::CMeldung>(session, reportId);
    // A second link row would make every order list stop at this order
    // (error 457).
    if (order->MeldungId() == reportId) {
      throw Failure(Say(_("order {1} is linked to report {2} already"), orderId, reportId));
    }
    if (order->MeldungId() != 0) {
      throw Failure(Say(_("order {1} is linked to report {2} already; an order has one "
                          "report (a second link would stop every order list at this "
                          "order). Unlink it first."),
                        orderId, order->MeldungId()));
    }
  } else if (order->MeldungId() != reportId) {
    throw Failure(Say(_("order {1} is not linked to report {2}"), orderId, reportId));
  }
  session.Write([&] {
    if (linking) {
      order->Connect2Msg(reportId);
    } else {
      order->MeldungId(reportId);
      order->DisConnectFromMsg();
    }
  });
  PrintStored<ZTkDb::CAuftrag>(session, orderId, ctx.out);
}

void AddOrders(CLI::App& app, Context& ctx) {
  static ListFilter filter;
  static std::string reportRef, linkOrderRef, linkReportRef;
  auto* auftrag = app.add_subcommand("auftrag", _("work orders (Aufträge)"))->require_subcommand(1);
  auto* list = auftrag->add_subcommand(
      "list", _("list orders: all, by done state, site(s), prefix, object, period or report"));
  AddFilterOptions(list, filter, true);
  list->add_option("--meldung", reportRef,
                   _("orders linked to this report (its id or number, M7)"));
  list->callback([&ctx] {
    ctx.action = [&ctx] {
      Session session(ctx.db);
      if (!reportRef.empty()) filter.meldung = ResolveRef(session, "meldung", reportRef);
      ListOrders(session, filter, ctx.out);
    };
  });
  AddRecordCommands<ZTkDb::CAuftrag>(auftrag, ctx);
  for (const bool linking : {true, false}) {
    auto* cmd = auftrag->add_subcommand(
        linking ? "link" : "unlink",
        linking ? _("link an order to a report") : _("remove the link of an order to a report"));
    cmd->add_option("ID", linkOrderRef, _("the order's id or number (A12)"))->required();
    cmd->add_option("--meldung", linkReportRef, _("the report's id or number (M7)"))->required();
    cmd->callback([&ctx, linking] {
      ctx.action = [&ctx, linking] { LinkOrder(ctx, linkOrderRef, linkReportRef, linking); };
    });
  }
}

void AddReports(CLI::App& app, Context& ctx) {
  static ListFilter filter;
  auto* meldung = app.add_subcommand("meldung", _("reports (Meldungen)"))->require_subcommand(1);
  auto* list = meldung->add_subcommand(
      "list", _("list reports: all, by done state, site(s), prefix, object or period"));
  AddFilterOptions(list, filter, false);
  list->callback([&ctx] {
    ctx.action = [&ctx] {
      Session session(ctx.db);
      ListReports(session, filter, ctx.out);
    };
  });
  AddRecordCommands<ZTkDb::CMeldung>(meldung, ctx);
}

// The bookings' and documents' lists: one order's (or report's) rows.
struct BookingArgs {
  std::string order_ref, report_ref;
  bool own = false, fremd = false;
};

void AddLabour(CLI::App& app, Context& ctx, BookingArgs& a) {
  auto* leistung =
      app.add_subcommand("leistung", _("labour bookings (Leistungen)"))->require_subcommand(1);
  auto* list = leistung->add_subcommand("list", _("the labour bookings of one order"));
  list->add_option("--auftrag", a.order_ref, _("the order's id or number (A12)"))->required();
  list->callback([&ctx, &a] {
    ctx.action = [&ctx, &a] {
      Session session(ctx.db);
      ZTkDb::CLeistungListe rows;
      rows.ConnectStorage(session.Client());
      rows.ReadByOrderId(ResolveRef(session, "auftrag", a.order_ref));
      PrintList(rows, ctx.out);
    };
  });
  AddRecordCommands<ZTkDb::CLeistung>(leistung, ctx);
}

void AddMaterial(CLI::App& app, Context& ctx, BookingArgs& a) {
  auto* material = app.add_subcommand("material", _("material bookings"))->require_subcommand(1);
  auto* list = material->add_subcommand("list", _("the material bookings of one order"));
  list->add_option("--auftrag", a.order_ref, _("the order's id or number (A12)"))->required();
  auto* ownFlag = list->add_flag("--own", a.own, _("only material not supplied with outside work"));
  list->add_flag("--fremd", a.fremd, _("only material supplied with outside work"))
      ->excludes(ownFlag);
  list->callback([&ctx, &a] {
    ctx.action = [&ctx, &a] {
      Session session(ctx.db);
      ZTkDb::CMaterialListe rows;
      rows.ConnectStorage(session.Client());
      const int32_t order = ResolveRef(session, "auftrag", a.order_ref);
      if (a.own)
        rows.ReadMaterialByOrderId(order);
      else if (a.fremd)
        rows.ReadFremdByOrderId(order);
      else
        rows.ReadByOrderId(order);
      PrintList(rows, ctx.out);
    };
  });
  AddRecordCommands<ZTkDb::CMaterial>(material, ctx);
}

void ListDocuments(Context& ctx, const BookingArgs& a) {
  if (a.order_ref.empty() == a.report_ref.empty()) {
    throw UsageError(_("give --auftrag ID or --meldung ID"));
  }
  Session session(ctx.db);
  const int32_t order = a.order_ref.empty() ? 0 : ResolveRef(session, "auftrag", a.order_ref);
  const int32_t report = a.report_ref.empty() ? 0 : ResolveRef(session, "meldung", a.report_ref);
  ZTkDb::CMsgOrderDokumentListe rows;
  rows.ConnectStorage(session.Client());
  if (order != 0)
    rows.ReadByOrderId(order);
  else
    rows.ReadByMsgId(report);
  PrintList(rows, ctx.out);
}

void AddDocuments(CLI::App& app, Context& ctx, BookingArgs& a) {
  auto* dokument = app.add_subcommand("dokument", _("document links"))->require_subcommand(1);
  auto* list = dokument->add_subcommand("list", _("the document links of an order or a report"));
  auto* orderOpt = list->add_option("--auftrag", a.order_ref, _("the order's id or number (A12)"));
  list->add_option("--meldung", a.report_ref, _("the report's id or number (M7)"))
      ->excludes(orderOpt);
  list->callback([&ctx, &a] { ctx.action = [&ctx, &a] { ListDocuments(ctx, a); }; });
  AddRecordCommands<ZTkDb::CMsgOrderDokument>(dokument, ctx);
}

}  // namespace

void AddRecordFamilies(CLI::App& app, Context& ctx) {
  static BookingArgs bookings;
  AddOrders(app, ctx);
  AddReports(app, ctx);
  AddLabour(app, ctx, bookings);
  AddMaterial(app, ctx, bookings);
  AddDocuments(app, ctx, bookings);
}

}  // namespace ztk
