#include "Fields.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <stdexcept>
#include <string_view>

#include "Columns.h"
#include "Text.h"
#include "records/RecordColumns.h"

namespace ztk {
namespace {

using ZTkDb::CAuftrag;
using ZTkDb::CLeistung;
using ZTkDb::CMaterial;
using ZTkDb::CMeldung;
using ZTkDb::CMsgOrderDokument;
using ZTkDb::Currency;
using ZTkDb::Date;
using ZTkDb::TkObjTypes;

std::string Lower(std::string s) {
  for (char& c : s) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return s;
}

bool ParseInteger(const std::string& text, int64_t min, int64_t max, int64_t& out) {
  if (text.empty()) return false;
  size_t used = 0;
  try {
    const long long v = std::stoll(text, &used, 10);
    if (used != text.size() || v < min || v > max) return false;
    out = v;
    return true;
  } catch (const std::exception&) {
    return false;
  }
}

// A number as a desk writes it, in the one form the parsers read: "12,50",
// "12.50", "1.234,56" and "1,234.56" all become [-]digits[.digits]. With
// both marks the last one is the decimal mark and the other groups
// thousands (groups of three); a lone "," is a decimal mark, and so is a
// lone "." unless it repeats ("1.234.567" groups).
bool NormalizeNumber(const std::string& text, std::string& out) {
  std::string body = text;
  std::string sign;
  if (!body.empty() && (body[0] == '-' || body[0] == '+')) {
    if (body[0] == '-') sign = "-";
    body.erase(0, 1);
  }
  const size_t lastDot = body.rfind('.'), lastComma = body.rfind(',');
  char decimal = 0, group = 0;
  if (lastDot != std::string::npos && lastComma != std::string::npos) {
    decimal = lastDot > lastComma ? '.' : ',';
    group = decimal == '.' ? ',' : '.';
  } else if (lastComma != std::string::npos) {
    decimal = ',';
  } else if (lastDot != std::string::npos) {
    const bool repeats = body.find('.') != lastDot;
    decimal = repeats ? 0 : '.';
    group = repeats ? '.' : 0;
  }
  const size_t mark = decimal ? body.rfind(decimal) : std::string::npos;
  const std::string whole = body.substr(0, mark);
  const std::string fraction = mark == std::string::npos ? "" : body.substr(mark + 1);
  std::string digits;
  size_t run = 0, groups = 0;
  for (char c : whole) {
    if (group && c == group) {
      if (run == 0 || (groups > 0 && run != 3) || (groups == 0 && run > 3)) return false;
      ++groups;
      run = 0;
      continue;
    }
    if (!std::isdigit(static_cast<unsigned char>(c))) return false;
    digits += c;
    ++run;
  }
  if (groups > 0 && run != 3) return false;
  for (char c : fraction) {
    if (!std::isdigit(static_cast<unsigned char>(c))) return false;
  }
  if (digits.empty() && fraction.empty()) return false;
  if (mark != std::string::npos && fraction.empty()) return false;
  out = sign + (digits.empty() ? "0" : digits) + (fraction.empty() ? "" : "." + fraction);
  return true;
}

// Exact: "12,5" and "-0.0001" become scaled integers without a double.
bool ParseMoney(const std::string& text, Currency& out, std::string& why) {
  std::string v;
  // "1.234" is a thousand and more to a German desk and a little over one
  // to an English one: such an amount is refused rather than guessed.
  const std::string body =
      !text.empty() && (text[0] == '-' || text[0] == '+') ? text.substr(1) : text;
  if (body.size() >= 5 && body.size() <= 7 && body[0] != '0' &&
      (body[body.size() - 4] == '.' || body[body.size() - 4] == ',') &&
      std::all_of(body.begin(), body.end() - 4, ::isdigit) &&
      std::all_of(body.end() - 3, body.end(), ::isdigit)) {
    std::string whole = body;
    whole.erase(whole.size() - 4, 1);
    std::string decimal = body;
    decimal[decimal.size() - 4] = '.';
    why = Say(_("'{1}' can mean {2} or {3}: write the amount with its decimals, e.g. {4}"), text,
              DeskAmount(whole), DeskAmount(decimal), DeskAmount(whole));
    return false;
  }
  if (!NormalizeNumber(text, v)) {
    why = Say(_("expected an amount such as 12,50 or 1.234,56, got '{1}'"), text);
    return false;
  }
  const bool negative = v[0] == '-';
  const size_t dot = v.find('.');
  const std::string whole = v.substr(negative ? 1 : 0, dot - (negative ? 1 : 0));
  std::string fraction = dot == std::string::npos ? "" : v.substr(dot + 1);
  if (fraction.size() > 4) {
    why = Say(_("an amount has at most 4 decimals, got '{1}'"), text);
    return false;
  }
  fraction.resize(4, '0');
  const size_t lead = whole.find_first_not_of('0');
  const std::string significant = lead == std::string::npos ? "" : whole.substr(lead);
  constexpr int64_t kMaxWhole = INT64_MAX / 10000;
  const std::string largest = std::to_string(kMaxWhole);
  const int64_t part = std::stoll(fraction);
  if (significant.size() > largest.size() ||
      (significant.size() == largest.size() && significant > largest) ||
      (significant == largest && part > INT64_MAX % 10000)) {
    why = Say(_("'{1}' is too large: an amount reaches at most 922.337.203.685.477,5807"), text);
    return false;
  }
  const int64_t w = significant.empty() ? 0 : std::stoll(significant);
  out = Currency::FromScaled((negative ? -1 : 1) * (w * 10000 + part));
  return true;
}

}  // namespace

bool ParseValue(FieldKind kind, const std::string& text, FieldValue& out, std::string& why) {
  int64_t n = 0;
  switch (kind) {
    case FieldKind::kLong:
      if (!ParseInteger(text, INT32_MIN, INT32_MAX, n)) {
        why = Say(_("expected a whole number, got '{1}'"), text);
        return false;
      }
      out = static_cast<int32_t>(n);
      return true;
    case FieldKind::kByte:
      if (!ParseInteger(text, 0, 255, n)) {
        why = Say(_("expected a number from 0 to 255, got '{1}'"), text);
        return false;
      }
      out = static_cast<uint8_t>(n);
      return true;
    case FieldKind::kBool: {
      const std::string v = Lower(text);
      if (v == "ja" || v == "true" || v == "1" || v == "-1" || v == "yes")
        out = true;
      else if (v == "nein" || v == "false" || v == "0" || v == "no")
        out = false;
      else {
        why = Say(_("expected yes or no, got '{1}'"), text);
        return false;
      }
      return true;
    }
    case FieldKind::kDate: {
      const std::string v = Lower(text);
      Date d;
      if (v.empty())
        d = ZTkDb::NoDate;
      else if (v == "heute" || v == "today")
        d = Date::Today();
      else if (!Date::TryParse(text, d)) {
        why = Say(_("expected a date such as 15.11.2026 or 2026-11-15, got '{1}'"), text);
        return false;
      }
      out = d;
      return true;
    }
    case FieldKind::kCurrency: {
      Currency c;
      if (!ParseMoney(text, c, why)) return false;
      out = c;
      return true;
    }
    case FieldKind::kDouble: {
      std::string v;
      size_t used = 0;
      try {
        const double d = NormalizeNumber(text, v) ? std::stod(v, &used) : 0;
        if (!v.empty() && used == v.size() && std::isfinite(d)) {
          out = d;
          return true;
        }
      } catch (const std::exception&) {
      }
      why = Say(_("expected a number such as 1,5 or 1.5, got '{1}'"), text);
      return false;
    }
    case FieldKind::kText: out = text; return true;
  }
  return false;
}

std::string ExactMoneyText(const Currency& c) {
  const int64_t scaled = c.Scaled();
  // INT64_MIN has no positive counterpart: its digits are spelled out.
  if (scaled == INT64_MIN) return "-922337203685477.5808";
  const uint64_t magnitude = static_cast<uint64_t>(scaled < 0 ? -scaled : scaled);
  std::string text = (scaled < 0 ? "-" : "") + std::to_string(magnitude / 10000);
  std::string fraction = std::to_string(magnitude % 10000);
  fraction.insert(0, 4 - fraction.size(), '0');
  while (!fraction.empty() && fraction.back() == '0') fraction.pop_back();
  if (!fraction.empty()) text += "." + fraction;
  return text;
}

std::string VariantText(const ZTkDb::Variant& v) {
  if (v.IsNull() || v.IsEmpty()) return "";
  switch (v.Type()) {
    case ZTkDb::vtDate: return DeskText(FieldValue(v.ToDate()));
    case ZTkDb::vtCurrency: return DeskText(FieldValue(v.ToCurrency()));
    case ZTkDb::vtBoolean: return DeskText(FieldValue(v.ToBool()));
    default: return v.ToString();
  }
}

nlohmann::ordered_json VariantJson(const ZTkDb::Variant& v) {
  if (v.IsNull() || v.IsEmpty()) return nullptr;
  switch (v.Type()) {
    case ZTkDb::vtDate: return JsonValue(FieldValue(v.ToDate()));
    case ZTkDb::vtCurrency: return ExactMoneyText(v.ToCurrency());
    case ZTkDb::vtBoolean: return v.ToBool();
    case ZTkDb::vtByte:
    case ZTkDb::vtInteger:
    case ZTkDb::vtLong: return v.ToLong();
    case ZTkDb::vtDouble: return v.ToDouble();
    default: return v.ToString();
  }
}

nlohmann::ordered_json JsonValue(const FieldValue& v) {
  return std::visit(
      [](const auto& x) -> nlohmann::ordered_json {
        using T = std::decay_t<decltype(x)>;
        if constexpr (std::is_same_v<T, Date>) {
          if (x == ZTkDb::NoDate) return nullptr;
          std::string iso = x.IsoText();
          if (!x.HasTime()) return iso.substr(0, 10);
          iso[10] = 'T';
          return iso;
        } else if constexpr (std::is_same_v<T, Currency>) {
          return ExactMoneyText(x);
        } else if constexpr (std::is_same_v<T, uint8_t>) {
          return static_cast<int>(x);
        } else {
          return x;
        }
      },
      v);
}

template <typename R>
std::vector<std::pair<const Field<R>*, FieldValue>> ParseAssignments(
    const std::vector<Field<R>>& fields, const std::vector<std::string>& assignments) {
  std::vector<std::pair<const Field<R>*, FieldValue>> out;
  for (const std::string& a : assignments) {
    const size_t eq = a.find('=');
    if (eq == std::string::npos || eq == 0) {
      throw std::invalid_argument(Say(_("expected FIELD=VALUE, got '{1}'"), a));
    }
    const std::string name = Lower(a.substr(0, eq));
    const Field<R>* field = nullptr;
    for (const auto& f : fields) {
      if (Lower(f.name) == name) field = &f;
    }
    if (!field) throw std::invalid_argument(Say(_("unknown field '{1}'"), a.substr(0, eq)));
    if (!field->set) throw std::invalid_argument(Say(_("field {1} is read-only"), field->name));
    FieldValue value;
    std::string why;
    if (!ParseValue(field->kind, a.substr(eq + 1), value, why)) {
      // TRANSLATORS: {1} is a field name, {2} why its value was refused.
      throw std::invalid_argument(Say(_("{1}: {2}"), field->name, why));
    }
    out.emplace_back(field, std::move(value));
  }
  return out;
}

template std::vector<std::pair<const Field<CAuftrag>*, FieldValue>> ParseAssignments(
    const std::vector<Field<CAuftrag>>&, const std::vector<std::string>&);
template std::vector<std::pair<const Field<CMeldung>*, FieldValue>> ParseAssignments(
    const std::vector<Field<CMeldung>>&, const std::vector<std::string>&);
template std::vector<std::pair<const Field<CLeistung>*, FieldValue>> ParseAssignments(
    const std::vector<Field<CLeistung>>&, const std::vector<std::string>&);
template std::vector<std::pair<const Field<CMaterial>*, FieldValue>> ParseAssignments(
    const std::vector<Field<CMaterial>>&, const std::vector<std::string>&);
template std::vector<std::pair<const Field<CMsgOrderDokument>*, FieldValue>> ParseAssignments(
    const std::vector<Field<CMsgOrderDokument>>&, const std::vector<std::string>&);

// The tool's kind of a property's type; an enumeration is typed as its number.
template <typename T>
constexpr FieldKind KindOf() {
  if constexpr (std::is_same_v<T, uint8_t>)
    return FieldKind::kByte;
  else if constexpr (std::is_same_v<T, bool>)
    return FieldKind::kBool;
  else if constexpr (std::is_same_v<T, Date>)
    return FieldKind::kDate;
  else if constexpr (std::is_same_v<T, Currency>)
    return FieldKind::kCurrency;
  else if constexpr (std::is_same_v<T, double>)
    return FieldKind::kDouble;
  else if constexpr (std::is_same_v<T, std::string>)
    return FieldKind::kText;
  else
    return FieldKind::kLong;
}

template <typename T>
FieldValue AsField(const T& value) {
  if constexpr (std::is_enum_v<T>)
    return static_cast<int32_t>(value);
  else
    return value;
}

template <typename T>
T FromField(const FieldValue& v) {
  if constexpr (std::is_enum_v<T>)
    return static_cast<T>(std::get<int32_t>(v));
  else
    return std::get<T>(v);
}

// A record class's fields, from its column table: every property under its
// own name, settable where the class keeps what it is given (a unit the
// record keeps on assignment is set only by `add`).
// clang-format off
#define ZTK_FIELD(Property, Type, column, placeholder, load, insert, update, access) \
  ZTK_FIELD_##access(Property, Type),
#define ZTK_FIELD_ro(Property, Type) \
  Field<R>{#Property, KindOf<Type>(), [](const R& r) { return AsField(r.Property()); }, nullptr}
#define ZTK_FIELD_kept ZTK_FIELD_ro
#define ZTK_FIELD_rw(Property, Type)                                                      \
  Field<R>{#Property, KindOf<Type>(), [](const R& r) { return AsField(r.Property()); },  \
           [](R& r, const FieldValue& v) { r.Property(FromField<Type>(v)); }}
// clang-format on

// The order a desk reads a record in: the fields it looks at first, then the
// rest as the class lists its columns.
template <typename R>
std::vector<Field<R>> DeskOrder(std::vector<Field<R>> fields,
                                std::initializer_list<std::string_view> first) {
  std::vector<Field<R>> ordered;
  for (std::string_view name : first) {
    auto it =
        std::find_if(fields.begin(), fields.end(), [&](const auto& f) { return f.name == name; });
    if (it == fields.end()) throw std::logic_error("no field " + std::string(name));
    ordered.push_back(std::move(*it));
    fields.erase(it);
  }
  ordered.insert(ordered.end(), std::make_move_iterator(fields.begin()),
                 std::make_move_iterator(fields.end()));
  return ordered;
}

const std::vector<Field<CAuftrag>>& AuftragFields() {
  using R = CAuftrag;
  static const std::vector<Field<R>> fields = DeskOrder<R>(
      {ZTKDB_AUFTRAG_COLUMNS(ZTK_FIELD)}, {"Id", "UId", "NrVorsatz", "Nr", "AuftragsDatum",
                                           "AuftragsZeit", "Auftrag", "Ort", "Objekt"});
  return fields;
}

const std::vector<Field<CMeldung>>& MeldungFields() {
  using R = CMeldung;
  static const std::vector<Field<R>> fields =
      DeskOrder<R>({ZTKDB_MELDUNG_COLUMNS(ZTK_FIELD)},
                   {"Id", "UId", "NrVorsatz", "Nr", "MeldeDatum", "MeldeZeit", "Melder",
                    "MelderFaId", "MelderTel", "Email", "Meldung", "Ort", "Objekt"});
  return fields;
}

const std::vector<Field<CLeistung>>& LeistungFields() {
  using R = CLeistung;
  static const std::vector<Field<R>> fields = DeskOrder<R>(
      {ZTKDB_LEISTUNG_COLUMNS(ZTK_FIELD)},
      {"Id", "UId", "AuftragId", "AusfDatum", "AusfZeit", "Auftragnehmer", "AuftragNehmerId"});
  return fields;
}

const std::vector<Field<CMaterial>>& MaterialFields() {
  using R = CMaterial;
  static const std::vector<Field<R>> fields =
      DeskOrder<R>({ZTKDB_MATERIAL_COLUMNS(ZTK_FIELD)},
                   {"Id", "UId", "AuftragId", "MatKlasse", "Bezeichnung", "Menge", "Einheit"});
  return fields;
}

const std::vector<Field<CMsgOrderDokument>>& DokumentFields() {
  using R = CMsgOrderDokument;
  static const std::vector<Field<R>> fields = {ZTKDB_DOKUMENT_COLUMNS(ZTK_FIELD)};
  return fields;
}

}  // namespace ztk
