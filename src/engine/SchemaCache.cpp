#include "engine/SchemaCache.h"

#include "engine/RowSet.h"

namespace ZTkDb::detail {

const SchemaCache::TableFacts& SchemaCache::Facts(const std::string& table) {
  auto it = tables_.find(table);
  if (it != tables_.end()) return it->second;
  TableFacts facts;
  for (const ColumnInfo& column : load_(table)) {
    facts.exists = true;
    if (column.is_date) facts.date_columns.insert(LowerAscii(column.name));
  }
  return tables_.emplace(table, std::move(facts)).first->second;
}

bool SchemaCache::IsDateColumn(const std::string& table, const std::string& column) {
  const TableFacts& facts = Facts(table);
  return !facts.date_columns.empty() && facts.date_columns.count(LowerAscii(column)) != 0;
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
