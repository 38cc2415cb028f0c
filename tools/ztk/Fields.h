#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <nlohmann/json.hpp>
#include <string>
#include <variant>
#include <vector>

#include "ztkdb/ZTkDb.h"

namespace ztk {

enum class FieldKind { kLong, kByte, kBool, kDate, kCurrency, kDouble, kText };

using FieldValue =
    std::variant<int32_t, uint8_t, bool, ZTkDb::Date, ZTkDb::Currency, double, std::string>;

// One property of a record class as the tool shows and sets it, under the
// property's own name.
template <typename R>
struct Field {
  const char* name;
  FieldKind kind;
  std::function<FieldValue(const R&)> get;
  std::function<void(R&, const FieldValue&)> set;  // empty: read-only
};

// Reads a value typed on the command line. Dates: dd.mm.yyyy[ hh:mm[:ss]],
// yyyy-mm-dd[Thh:mm[:ss]], "heute"/"today", or "" for no date; flags:
// ja/nein, true/false, 1/0; currency with '.' or ',' and at most 4 decimals.
// Returns false with the reason in `why`.
bool ParseValue(FieldKind kind, const std::string& text, FieldValue& out, std::string& why);

// For --json: dates ISO 8601 (no date: null), money as its exact decimal
// text ("1234567.8901", no binary rounding on the way), doubles as numbers.
nlohmann::ordered_json JsonValue(const FieldValue& v);
std::string ExactMoneyText(const ZTkDb::Currency& c);
// Any value a query gives, for a table cell and for JSON.
std::string VariantText(const ZTkDb::Variant& v);
nlohmann::ordered_json VariantJson(const ZTkDb::Variant& v);

// The field tables of the five record classes.
const std::vector<Field<ZTkDb::CAuftrag>>& AuftragFields();
const std::vector<Field<ZTkDb::CMeldung>>& MeldungFields();
const std::vector<Field<ZTkDb::CLeistung>>& LeistungFields();
const std::vector<Field<ZTkDb::CMaterial>>& MaterialFields();
const std::vector<Field<ZTkDb::CMsgOrderDokument>>& DokumentFields();

// FIELD=VALUE assignments checked against a field table: an unknown field,
// a read-only one, a missing '=' or a value of the wrong form is a usage
// error (std::invalid_argument naming it). Field names compare without
// regard to case. Nothing is applied here.
template <typename R>
std::vector<std::pair<const Field<R>*, FieldValue>> ParseAssignments(
    const std::vector<Field<R>>& fields, const std::vector<std::string>& assignments);

template <typename R>
void Apply(R& record, const std::vector<std::pair<const Field<R>*, FieldValue>>& values) {
  for (const auto& [field, value] : values) field->set(record, value);
}

template <typename R>
nlohmann::ordered_json RecordJson(const std::vector<Field<R>>& fields, const R& record) {
  nlohmann::ordered_json out = nlohmann::ordered_json::object();
  for (const auto& f : fields) out[f.name] = JsonValue(f.get(record));
  return out;
}

}  // namespace ztk
