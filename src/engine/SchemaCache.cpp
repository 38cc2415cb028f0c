#include "engine/SchemaCache.h"

#include "engine/RowSet.h"

namespace ZTkDb::detail {

const SchemaCache::TableFacts& SchemaCache::Facts(const std::string& table) {
  auto it = tables_.find(table);
  if (it != tables_.end()) return it->second;
  TableFacts facts;
  for (const ColumnInfo& column : load_(table)) {
    facts.exists = true;
    auto& set = column.is_date   ? facts.date_columns
                : column.is_text ? facts.text_columns
                                 : facts.other_columns;
    set.insert(LowerAscii(column.name));
    if (column.is_float || (column.precision > 0 && column.scale >= 0)) {
      facts.number_columns[LowerAscii(column.name)] = {column.is_float, column.precision,
                                                       column.scale};
    }
  }
  return tables_.emplace(table, std::move(facts)).first->second;
}

bool SchemaCache::IsDateColumn(const std::string& table, const std::string& column) {
  const TableFacts& facts = Facts(table);
  return !facts.date_columns.empty() && facts.date_columns.count(LowerAscii(column)) != 0;
}

ColumnClass SchemaCache::ClassOf(const std::string& table, const std::string& column) {
  const TableFacts& facts = Facts(table);
  const std::string name = LowerAscii(column);
  if (facts.date_columns.count(name)) return ColumnClass::kDate;
  if (facts.text_columns.count(name)) return ColumnClass::kText;
  if (facts.other_columns.count(name)) return ColumnClass::kOther;
  return ColumnClass::kUnknown;
}

std::optional<DecimalRoom> SchemaCache::RoomOf(const std::string& table,
                                               const std::string& column) {
  const TableFacts& facts = Facts(table);
  const auto it = facts.number_columns.find(LowerAscii(column));
  if (it == facts.number_columns.end()) return std::nullopt;
  return it->second;
}

LiftingRules SchemaCache::Lifting() {
  LiftingRules rules;
  rules.decimal_room = [this](const std::string& t, const std::string& c) { return RoomOf(t, c); };
  rules.is_table = [this](const std::string& t) { return IsTable(t); };
  rules.column_class = [this](const std::string& t, const std::string& c) { return ClassOf(t, c); };
  return rules;
}

AdaptationRules SchemaCache::Rules(std::function<std::string(const Date&)> dateLiteral) {
  AdaptationRules rules;
  rules.date_literal = std::move(dateLiteral);
  rules.is_table = [this](const std::string& t) { return IsTable(t); };
  rules.is_date_column = [this](const std::string& t, const std::string& c) {
    return IsDateColumn(t, c);
  };
  return rules;
}

}  // namespace ZTkDb::detail
