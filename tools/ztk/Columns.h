#pragma once

// How values and rows are written: for people (the desk's forms, list
// columns chosen and ranked for a terminal) and for programs (machine forms).
#include <functional>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "Fields.h"
#include "Output.h"

namespace ztk {

// Desk forms, in the language of the messages: dates, yes/no, grouped
// amounts, decimal marks.
std::string DeskText(const FieldValue& v);
// Machine forms: ISO 8601 dates (no date: empty), true/false, amounts as
// exact decimal text, '.' as the decimal mark.
std::string MachineText(const FieldValue& v);
// JSON: machine forms, or with `local` the desk's texts for dates, flags
// and amounts.
nlohmann::ordered_json FieldJson(const FieldValue& v, bool local);

// Every field of a record for programs: CSV headers and JSON keys are the
// property names, the same in both.
template <typename R>
nlohmann::ordered_json RowJson(const std::vector<Field<R>>& fields, const R& record, bool local) {
  nlohmann::ordered_json out = nlohmann::ordered_json::object();
  for (const auto& f : fields) out[f.name] = FieldJson(f.get(record), local);
  return out;
}
template <typename R>
std::vector<std::string> RowCsv(const std::vector<Field<R>>& fields, const R& record, bool local) {
  std::vector<std::string> cells;
  for (const auto& f : fields) {
    const FieldValue v = f.get(record);
    cells.push_back(local ? DeskText(v) : MachineText(v));
  }
  return cells;
}
template <typename R>
Table CsvTable(const std::vector<Field<R>>& fields) {
  std::vector<std::string> names;
  names.reserve(fields.size());
  for (const auto& f : fields) names.push_back(f.name);
  return Table(names);
}

// A column of a list as people read it: a header (English, marked for
// translation), how it fits a terminal, and its cell.
template <typename R>
struct ListColumn {
  const char* header;
  Column fit;
  std::function<std::string(const R&)> cell;
};

const std::vector<ListColumn<ZTkDb::CAuftrag>>& ListColumns(const ZTkDb::CAuftrag*);
const std::vector<ListColumn<ZTkDb::CMeldung>>& ListColumns(const ZTkDb::CMeldung*);
const std::vector<ListColumn<ZTkDb::CLeistung>>& ListColumns(const ZTkDb::CLeistung*);
const std::vector<ListColumn<ZTkDb::CMaterial>>& ListColumns(const ZTkDb::CMaterial*);
const std::vector<ListColumn<ZTkDb::CMsgOrderDokument>>& ListColumns(
    const ZTkDb::CMsgOrderDokument*);

// The table of a list, its headers translated.
template <typename R>
Table ListTable() {
  std::vector<Column> columns;
  for (const auto& c : ListColumns(static_cast<const R*>(nullptr))) {
    Column fit = c.fit;
    fit.header = ::gettext(c.header);
    columns.push_back(fit);
  }
  return Table(columns);
}

}  // namespace ztk
