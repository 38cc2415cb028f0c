#include "Columns.h"

#include <cstdio>

#include "Text.h"

namespace ztk {

using ZTkDb::Currency;
using ZTkDb::Date;

namespace {

std::string NumberText(double d, char decimal) {
  char buf[32];
  std::snprintf(buf, sizeof buf, "%.15g", d);
  std::string text = buf;
  for (char& c : text) {
    if (c == '.') c = decimal;
  }
  return text;
}

std::string IsoDate(const Date& d) {
  if (d == ZTkDb::NoDate) return "";
  std::string iso = d.IsoText();
  if (!d.HasTime()) return iso.substr(0, 10);
  iso[10] = 'T';
  return iso;
}

}  // namespace

std::string DeskText(const FieldValue& v) {
  return std::visit(
      [](const auto& x) -> std::string {
        using T = std::decay_t<decltype(x)>;
        if constexpr (std::is_same_v<T, std::string>)
          return x;
        else if constexpr (std::is_same_v<T, bool>)
          return x ? Desk().yes : Desk().no;
        else if constexpr (std::is_same_v<T, Date>)
          return DeskDate(x);
        else if constexpr (std::is_same_v<T, Currency>)
          return DeskAmount(ExactMoneyText(x));
        else if constexpr (std::is_same_v<T, double>)
          return NumberText(x, Desk().decimal);
        else
          return std::to_string(static_cast<int64_t>(x));
      },
      v);
}

std::string MachineText(const FieldValue& v) {
  return std::visit(
      [](const auto& x) -> std::string {
        using T = std::decay_t<decltype(x)>;
        if constexpr (std::is_same_v<T, std::string>)
          return x;
        else if constexpr (std::is_same_v<T, bool>)
          return x ? "true" : "false";
        else if constexpr (std::is_same_v<T, Date>)
          return IsoDate(x);
        else if constexpr (std::is_same_v<T, Currency>)
          return ExactMoneyText(x);
        else if constexpr (std::is_same_v<T, double>)
          return NumberText(x, '.');
        else
          return std::to_string(static_cast<int64_t>(x));
      },
      v);
}

nlohmann::ordered_json FieldJson(const FieldValue& v, bool local) {
  if (local) {
    if (std::holds_alternative<Date>(v) && std::get<Date>(v) == ZTkDb::NoDate) return nullptr;
    if (std::holds_alternative<Date>(v) || std::holds_alternative<bool>(v) ||
        std::holds_alternative<Currency>(v)) {
      return DeskText(v);
    }
  }
  return JsonValue(v);
}

namespace {

// Ranks: 1 the number and the main text (never left out), 2 the dates
// (never cut), 3 what says where and who, 4 ids and flags.
const Column kNumber{"", 1, true};
const Column kMainText{"", 1, false, 20};
const Column kDate{"", 2, true};
const Column kPlace{"", 3, false, 10};
const Column kFigure{"", 3, true};
const Column kId{"", 4, true};

std::string Numbered(const std::string& prefix, int32_t nr) { return prefix + std::to_string(nr); }
std::string Id(int32_t id) { return id == 0 ? std::string() : std::to_string(id); }
std::string Shown(const FieldValue& v) { return DeskText(v); }

}  // namespace

const std::vector<ListColumn<ZTkDb::CAuftrag>>& ListColumns(const ZTkDb::CAuftrag*) {
  using R = ZTkDb::CAuftrag;
  static const std::vector<ListColumn<R>> columns = {
      {N_("No."), kNumber, [](const R& r) { return Numbered(r.NrVorsatz(), r.Nr()); }},
      {N_("Ordered"), kDate, [](const R& r) { return Shown(r.AuftragsDatum()); }},
      {N_("Due"), kDate, [](const R& r) { return Shown(r.ErledBisDatum()); }},
      {N_("Order"), kMainText, [](const R& r) { return r.Auftrag(); }},
      {N_("Place"), kPlace, [](const R& r) { return r.Ort(); }},
      {N_("Done"), kDate,
       [](const R& r) { return r.Erledigt() ? Shown(r.ErledigtDatum()) : std::string(); }},
      {N_("Site"), kId, [](const R& r) { return Id(r.SoId()); }},
      {N_("Report id"), kId, [](const R& r) { return Id(r.MeldungId()); }},
      {N_("Id"), kId, [](const R& r) { return Id(r.Id()); }},
  };
  return columns;
}

const std::vector<ListColumn<ZTkDb::CMeldung>>& ListColumns(const ZTkDb::CMeldung*) {
  using R = ZTkDb::CMeldung;
  static const std::vector<ListColumn<R>> columns = {
      {N_("No."), kNumber, [](const R& r) { return Numbered(r.NrVorsatz(), r.Nr()); }},
      {N_("Reported"), kDate, [](const R& r) { return Shown(r.MeldeDatum()); }},
      {N_("Report"), kMainText, [](const R& r) { return r.Meldung(); }},
      {N_("Place"), kPlace, [](const R& r) { return r.Ort(); }},
      {N_("Reported by"), kPlace, [](const R& r) { return r.Melder(); }},
      {N_("Done"), kDate,
       [](const R& r) { return r.Erledigt() ? Shown(r.ErledigtDatum()) : std::string(); }},
      {N_("Site"), kId, [](const R& r) { return Id(r.SoId()); }},
      {N_("Id"), kId, [](const R& r) { return Id(r.Id()); }},
  };
  return columns;
}

const std::vector<ListColumn<ZTkDb::CLeistung>>& ListColumns(const ZTkDb::CLeistung*) {
  using R = ZTkDb::CLeistung;
  static const std::vector<ListColumn<R>> columns = {
      {N_("Id"), kNumber, [](const R& r) { return Id(r.Id()); }},
      {N_("Done on"), kDate, [](const R& r) { return Shown(r.AusfDatum()); }},
      {N_("Worker"), kMainText, [](const R& r) { return r.Auftragnehmer(); }},
      {N_("Work"), kPlace, [](const R& r) { return r.Leistart(); }},
      {N_("Hours"), kFigure, [](const R& r) { return Shown(r.Stunden()); }},
      {N_("Rate"), kFigure, [](const R& r) { return Shown(r.PreisProStd()); }},
      {N_("Outside"), kId, [](const R& r) { return Shown(r.Fremdleistung()); }},
      {N_("Order id"), kId, [](const R& r) { return Id(r.AuftragId()); }},
  };
  return columns;
}

const std::vector<ListColumn<ZTkDb::CMaterial>>& ListColumns(const ZTkDb::CMaterial*) {
  using R = ZTkDb::CMaterial;
  static const std::vector<ListColumn<R>> columns = {
      {N_("Id"), kNumber, [](const R& r) { return Id(r.Id()); }},
      {N_("Material"), kMainText, [](const R& r) { return r.Bezeichnung(); }},
      {N_("Class"), kPlace, [](const R& r) { return r.MatKlasse(); }},
      {N_("Quantity"), kFigure, [](const R& r) { return Shown(r.Menge()); }},
      {N_("Unit"), kFigure, [](const R& r) { return r.Einheit(); }},
      {N_("Unit price"), kFigure, [](const R& r) { return Shown(r.PreisProEinheit()); }},
      {N_("Outside"), kId, [](const R& r) { return Shown(r.Fremdleistung()); }},
      {N_("Order id"), kId, [](const R& r) { return Id(r.AuftragId()); }},
  };
  return columns;
}

const std::vector<ListColumn<ZTkDb::CMsgOrderDokument>>& ListColumns(
    const ZTkDb::CMsgOrderDokument*) {
  using R = ZTkDb::CMsgOrderDokument;
  static const std::vector<ListColumn<R>> columns = {
      {N_("Id"), kNumber, [](const R& r) { return Id(r.Id()); }},
      {N_("File"), kMainText, [](const R& r) { return r.Datei(); }},
      {N_("Folder"), kPlace, [](const R& r) { return r.Pfad(); }},
      {N_("Order id"), kId, [](const R& r) { return Id(r.OrderId()); }},
      {N_("Report id"), kId, [](const R& r) { return Id(r.MsgId()); }},
  };
  return columns;
}

}  // namespace ztk
