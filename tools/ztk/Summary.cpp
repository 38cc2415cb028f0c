#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>

#include "Columns.h"
#include "Commands.h"
#include "Fields.h"
#include "Lists.h"
#include "Text.h"

namespace ztk {
namespace {

struct SiteFigures {
  int64_t opened = 0, done = 0, overdue = 0;
  double hours = 0, labour = 0, material = 0;  // costs in currency units
};

bool Within(ZTkDb::Date d, ZTkDb::Date from, ZTkDb::Date to) {
  return d != ZTkDb::NoDate && !(d.DatePart() < from) && !(to < d.DatePart());
}

// Hours to the hundredth, with the desk's decimal mark or a point.
std::string Hours(double h, bool machine) {
  char text[32];
  std::snprintf(text, sizeof text, "%.2f", h);
  std::string s = text;
  if (!machine) std::replace(s.begin(), s.end(), '.', Desk().decimal);
  return s;
}

// Walks every order and booking once through the lists, as a host would:
// the same figures on every engine, with no text of its own to adapt.
std::map<int32_t, SiteFigures> Gather(Session& session, ZTkDb::Date from, ZTkDb::Date to) {
  const ZTkDb::Date today = ZTkDb::Date::Today();
  std::map<int32_t, SiteFigures> sites;
  std::map<int32_t, int32_t> siteOf;
  std::map<int32_t, bool> openedInPeriod;
  ZTkDb::CAuftragListe orders;
  orders.ConnectStorage(session.Client());
  orders.ReadAll();
  for (auto o = orders.MoveFirst(); o; o = orders.MoveNext()) {
    SiteFigures& s = sites[o->SoId()];
    siteOf[o->Id()] = o->SoId();
    const bool opened = Within(o->AuftragsDatum(), from, to);
    openedInPeriod[o->Id()] = opened;
    s.opened += opened;
    s.done += o->Erledigt() && Within(o->ErledigtDatum(), from, to);
    s.overdue += !o->Erledigt() && o->ErledBisDatum() != ZTkDb::NoDate &&
                 o->ErledBisDatum().DatePart() < today;
  }
  ZTkDb::CLeistungListe labour;
  labour.ConnectStorage(session.Client());
  labour.ReadAll();
  for (auto b = labour.MoveFirst(); b; b = labour.MoveNext()) {
    if (!Within(b->AusfDatum(), from, to)) continue;
    SiteFigures& s = sites[siteOf.count(b->AuftragId()) ? siteOf[b->AuftragId()] : 0];
    s.hours += b->Stunden();
    s.labour += b->Stunden() * static_cast<double>(b->PreisProStd().Scaled()) / 10000.0;
  }
  // Material has no date of its own: it counts with the order it was
  // booked on, when that order was opened in the period.
  ZTkDb::CMaterialListe material;
  material.ConnectStorage(session.Client());
  material.ReadAll();
  for (auto m = material.MoveFirst(); m; m = material.MoveNext()) {
    if (!openedInPeriod[m->AuftragId()]) continue;
    sites[siteOf[m->AuftragId()]].material +=
        m->Menge() * static_cast<double>(m->PreisProEinheit().Scaled()) / 10000.0;
  }
  return sites;
}

void Summarize(Session& session, ZTkDb::Date from, ZTkDb::Date to, const OutputOptions& out) {
  const std::map<int32_t, SiteFigures> sites = Gather(session, from, to);
  SiteFigures total;
  nlohmann::ordered_json rows = nlohmann::ordered_json::array();
  // CSV and JSON are read by programs: the same names in both, and the
  // total's, stay as they always were. People get figures never cut.
  Table table(
      out.csv ? Table(std::vector<std::string>{"Standort", "Eroeffnet", "Erledigt", "Ueberfaellig",
                                               "Stunden", "KostenLeistung", "KostenMaterial"})
              : Table({Column{_("Site")}, Column{_("Opened"), 1, true}, Column{_("Done"), 1, true},
                       Column{_("Overdue"), 1, true}, Column{_("Hours"), 1, true},
                       Column{_("Labour cost"), 1, true}, Column{_("Material cost"), 1, true}}));
  const bool machine = out.csv && !out.local;
  // `label`: the site as a person reads it in the table.
  auto add = [&](const std::string& site, const std::string& label, const SiteFigures& s) {
    // A summary speaks in cents: sums of quantities times prices carry
    // fractions of a cent no one bills.
    const ZTkDb::Currency labourCost =
        ZTkDb::Currency::FromDouble(std::round(s.labour * 100) / 100);
    const ZTkDb::Currency materialCost =
        ZTkDb::Currency::FromDouble(std::round(s.material * 100) / 100);
    rows.push_back({{"Standort", site},
                    {"Eroeffnet", s.opened},
                    {"Erledigt", s.done},
                    {"Ueberfaellig", s.overdue},
                    {"Stunden", std::round(s.hours * 100) / 100},
                    {"KostenLeistung", FieldJson(labourCost, out.local)},
                    {"KostenMaterial", FieldJson(materialCost, out.local)}});
    table.Add({out.csv ? site : label, std::to_string(s.opened), std::to_string(s.done),
               std::to_string(s.overdue), Hours(s.hours, machine),
               machine ? MachineText(labourCost) : DeskText(labourCost),
               machine ? MachineText(materialCost) : DeskText(materialCost)});
  };
  for (const auto& [site, s] : sites) {
    if (s.opened + s.done + s.overdue == 0 && s.hours == 0 && s.material == 0) continue;
    add(std::to_string(site), std::to_string(site), s);
    total.opened += s.opened;
    total.done += s.done;
    total.overdue += s.overdue;
    total.hours += s.hours;
    total.labour += s.labour;
    total.material += s.material;
  }
  add("gesamt", _("total"), total);
  if (out.json) return PrintJson(rows);
  // TRANSLATORS: the first and the last day of the period.
  if (!out.csv) std::printf("%s\n", Say(_("{1} to {2}"), DeskText(from), DeskText(to)).c_str());
  table.Print(stdout, out);
}

}  // namespace

void AddSummaryCommand(CLI::App& app, Context& ctx) {
  static std::string from, to;
  auto* summary = app.add_subcommand(
      "summary", _("per site, for a period: orders opened, done, overdue now, hours and costs"));
  summary->add_option("--from", from, _("first day (default: 30 days ago)"));
  summary->add_option("--to", to, _("last day (default: today)"));
  summary->callback([&ctx] {
    ctx.action = [&ctx] {
      const ZTkDb::Date today = ZTkDb::Date::Today();
      const ZTkDb::Date first = from.empty() ? today.AddDays(-30) : ParseDateOption("--from", from);
      const ZTkDb::Date last = to.empty() ? today : ParseDateOption("--to", to);
      if (last < first) throw UsageError(_("--to lies before --from"));
      Session session(ctx.db);
      Summarize(session, first.DatePart(), last.DatePart(), ctx.out);
    };
  });
}

}  // namespace ztk
