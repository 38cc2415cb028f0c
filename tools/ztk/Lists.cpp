// The list commands of orders and reports: which of the lists' queries the
// options ask for, and the walk over its result.
#include "Lists.h"

#include <cctype>

#include "Docs.h"
#include "Fields.h"
#include "Text.h"

namespace ztk {
namespace {

// The sort orders of the two lists by name, in the order of their numbers.
const std::vector<std::string> kOrderSorts{"none",     "nr",     "datum",  "bis",
                                           "erledigt", "wieder", "meldung"};
const std::vector<std::string> kReportSorts{"none", "nr", "datum", "bis", "erledigt", "wieder"};

std::vector<std::string> SplitList(const std::string& text) {
  std::vector<std::string> parts;
  std::string current;
  for (char c : text + ",") {
    if (c == ',') {
      if (current.empty()) throw UsageError(Say(_("empty entry in the site list '{1}'"), text));
      parts.push_back(current);
      current.clear();
    } else if (std::isdigit(static_cast<unsigned char>(c)) || (c == '-' && current.empty())) {
      current += c;
    } else if (c != ' ') {
      throw UsageError(Say(_("site lists hold numbers separated by commas, got '{1}'"), text));
    }
  }
  return parts;
}

// Sort names of the two lists, with their numbers as an alternative.
int32_t ParseSort(const std::string& text, const std::vector<std::string>& names) {
  if (text.empty()) return 0;
  for (size_t i = 0; i < names.size(); ++i) {
    if (text == names[i] || text == std::to_string(i)) return static_cast<int32_t>(i);
  }
  std::string known;
  for (const auto& n : names) known += (known.empty() ? "" : ", ") + n;
  throw UsageError(
      Say(_("--sort: expected one of {1} (or 0..{2}), got '{3}'"), known, names.size() - 1, text));
}

// Which list query the options ask for; conflicting ones are a usage error.
enum class Query { kAll, kDone, kObj, kPeriod, kReport };

Query ChooseQuery(const ListFilter& f, bool withReport) {
  if (f.open && f.done) throw UsageError(_("--open and --done exclude each other"));
  const bool doneFamily =
      f.open || f.done || f.site != kNoSite || !f.sites.empty() || !f.prefix.empty();
  const bool obj = f.obj != 0 || f.typ >= 0;
  const bool period = !f.from.empty() || !f.to.empty();
  const bool report = withReport && f.meldung != 0;
  if (doneFamily + obj + period + report > 1) {
    throw UsageError(withReport
                         ? _("choose one kind of filter: done state (--open/--done/--site/--sites/"
                             "--prefix), object (--obj/--typ), period (--from/--to) or report "
                             "(--meldung)")
                         : _("choose one kind of filter: done state (--open/--done/--site/--sites/"
                             "--prefix), object (--obj/--typ) or period (--from/--to)"));
  }
  if (f.site != kNoSite && !f.sites.empty())
    throw UsageError(_("--site and --sites exclude each other"));
  if (obj && (f.obj == 0 || f.typ < 0)) throw UsageError(_("--obj and --typ go together"));
  if (period && (f.from.empty() || f.to.empty()))
    throw UsageError(_("--from and --to go together"));
  if (period && ParseDateOption("--to", f.to) < ParseDateOption("--from", f.from)) {
    throw UsageError(_("--to lies before --from"));
  }
  if (f.typ >= 0 && (f.typ < 1 || f.typ > 8)) throw UsageError(_("--typ must lie in 1..8"));
  if (f.days < -32768 || f.days > 32767) throw UsageError(_("--days must lie in -32768..32767"));
  if (obj) return Query::kObj;
  if (period) return Query::kPeriod;
  if (report) return Query::kReport;
  return doneFamily ? Query::kDone : Query::kAll;
}

}  // namespace

ZTkDb::Date ParseDateOption(const std::string& name, const std::string& text) {
  FieldValue v;
  std::string why;
  if (text.empty() || !ParseValue(FieldKind::kDate, text, v, why)) {
    throw UsageError(name + ": " + (why.empty() ? std::string(_("a date is required")) : why));
  }
  return std::get<ZTkDb::Date>(v);
}

void AddFilterOptions(CLI::App* list, ListFilter& f, bool orders) {
  list->add_flag("--open", f.open, _("open ones only (the default of the done-state filters)"));
  list->add_flag("--done", f.done, _("done ones only (those done in the last --days days)"));
  list->add_option("--days", f.days, _("how many days back done ones are shown"))
      ->capture_default_str();
  auto* sort = list->add_option("--sort", f.sort,
                                orders ? _("nr, datum, bis, erledigt, wieder or meldung (or 0..6)")
                                       : _("nr, datum, bis, erledigt or wieder (or 0..5)"));
  OfferValues(sort, orders ? kOrderSorts : kReportSorts);
  list->add_option("--site", f.site, _("one site (lSoId); site 0 rows are shown as well"));
  list->add_option("--sites", f.sites, _("a list of sites, e.g. 3,7; site 0 rows as well"));
  list->add_option("--prefix", f.prefix, _("number prefix (NrVorsatz)"));
  list->add_option("--obj", f.obj, _("object id; needs --typ"));
  list->add_option("--typ", f.typ, _("object type (1 site … 8 object)"));
  list->add_option("--from", f.from, _("first date of a period; needs --to"));
  list->add_option("--to", f.to, _("last date of a period"));
  list->add_option(
      "--search", f.search,
      orders ? _("only orders whose text, remark, place or object, or whose report's "
                 "text, holds TEXT (any case)")
             : _("only reports whose text, remark, place or object holds TEXT (any case)"));
  if (orders) {
    list->add_flag("--overdue", f.overdue, _("open orders past their due date (ErledBisDatum)"));
  }
}

namespace {

// Lower case for a search without regard to case: ASCII and the Latin-1
// capitals (Ä, Ö, Ü, É …) in UTF-8.
std::string Folded(const std::string& text) {
  std::string out = text;
  for (size_t i = 0; i < out.size(); ++i) {
    const auto c = static_cast<unsigned char>(out[i]);
    if (c >= 'A' && c <= 'Z') {
      out[i] = static_cast<char>(c + 32);
    } else if (c == 0xC3 && i + 1 < out.size()) {
      const auto next = static_cast<unsigned char>(out[i + 1]);
      if (next >= 0x80 && next <= 0x9E && next != 0x97) out[i + 1] = static_cast<char>(next + 32);
      ++i;
    }
  }
  return out;
}

bool Holds(const std::string& text, const std::string& folded) {
  return Folded(text).find(folded) != std::string::npos;
}

// The list query the options chose, on either list class: both have the
// same families, and only the order list has one by report.
template <typename List, typename Sort>
void Read(List& list, Query query, const ListFilter& f, Sort sort) {
  const int32_t days = f.days;
  switch (query) {
    case Query::kAll: list.ReadAll(sort); break;
    case Query::kObj: list.ReadByObj(f.obj, static_cast<ZTkDb::TkObjTypes>(f.typ)); break;
    case Query::kPeriod:
      list.ReadAllInZeitraum(ParseDateOption("--from", f.from), ParseDateOption("--to", f.to));
      break;
    case Query::kReport:
      if constexpr (requires { list.ReadByMsgId(f.meldung, sort); }) {
        list.ReadByMsgId(f.meldung, sort);
      }
      break;
    case Query::kDone:
      if (!f.sites.empty()) {
        const auto sites = SplitList(f.sites);
        if (f.prefix.empty())
          list.ReadByDoneAndSoListe(sites, f.done, sort, days);
        else
          list.ReadByDoneAndSoListeAndVorsatz(sites, f.done, f.prefix, sort, days);
      } else if (f.site != kNoSite) {
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
}

}  // namespace

void ListOrders(Session& session, const ListFilter& given, const OutputOptions& out) {
  ListFilter f = given;
  if (f.overdue) {
    if (f.done) throw UsageError(_("--overdue and --done exclude each other"));
    f.open = true;  // overdue ones are open
  }
  const Query query = ChooseQuery(f, true);
  const auto sort = static_cast<ZTkDb::OrderSortOrderConstants>(ParseSort(f.sort, kOrderSorts));
  ZTkDb::CAuftragListe list;
  list.ConnectStorage(session.Client());
  Read(list, query, f, sort);
  const ZTkDb::Date today = ZTkDb::Date::Today();
  const std::string needle = Folded(f.search);
  ZTkDb::CMeldung report;
  report.ConnectStorage(session.Client());
  PrintList(list, out, [&](const ZTkDb::CAuftrag& o) {
    if (f.overdue && (o.Erledigt() || o.ErledBisDatum() == ZTkDb::NoDate ||
                      !(o.ErledBisDatum().DatePart() < today))) {
      return false;
    }
    if (needle.empty()) return true;
    if (Holds(o.Auftrag(), needle) || Holds(o.Bemerkung(), needle) || Holds(o.Ort(), needle) ||
        Holds(o.Objekt(), needle)) {
      return true;
    }
    if (o.MeldungId() == 0) return false;
    report.ReadById(o.MeldungId());
    return report.Id() != 0 && Holds(report.Meldung(), needle);
  });
}

void ListReports(Session& session, const ListFilter& f, const OutputOptions& out) {
  const Query query = ChooseQuery(f, false);
  const auto sort = static_cast<ZTkDb::MsgSortOrderConstants>(ParseSort(f.sort, kReportSorts));
  ZTkDb::CMeldungListe list;
  list.ConnectStorage(session.Client());
  Read(list, query, f, sort);
  const std::string needle = Folded(f.search);
  PrintList(list, out, [&](const ZTkDb::CMeldung& m) {
    return needle.empty() || Holds(m.Meldung(), needle) || Holds(m.Bemerkung(), needle) ||
           Holds(m.Ort(), needle) || Holds(m.Objekt(), needle);
  });
}

}  // namespace ztk
