#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "engine/Database.h"
#include "engine/StatementAdapter.h"

namespace ZTkDb::detail {

// What statement adaptation asks of a schema (is this a table, is this a
// date column), answered from the engine's catalogue once per table and
// then from memory. Names compare without regard to case.
class SchemaCache {
 public:
  using Loader = std::function<std::vector<ColumnInfo>(const std::string& table)>;
  explicit SchemaCache(Loader load) : load_(std::move(load)) {}

  bool IsTable(const std::string& table) { return Facts(table).exists; }
  bool IsDateColumn(const std::string& table, const std::string& column);
  ColumnClass ClassOf(const std::string& table, const std::string& column);
  // The decimals a number column (floating, or exact with a known size)
  // stores as they are written; nothing for other columns.
  std::optional<DecimalRoom> RoomOf(const std::string& table, const std::string& column);
  // Lifting rules whose column questions this cache answers.
  LiftingRules Lifting();
  // After DDL: everything is asked again.
  void Clear() { tables_.clear(); }

  // Adaptation rules whose schema questions this cache answers.
  AdaptationRules Rules(std::function<std::string(const Date&)> dateLiteral);

 private:
  struct TableFacts {
    bool exists = false;
    std::unordered_set<std::string> date_columns;                 // lower case
    std::unordered_set<std::string> text_columns;                 // lower case
    std::unordered_set<std::string> other_columns;                // lower case
    std::unordered_map<std::string, DecimalRoom> number_columns;  // lower case
  };
  const TableFacts& Facts(const std::string& table);

  Loader load_;
  // Keyed by the name as asked: the same spelling comes back statement after
  // statement, so the usual lookup needs no case folding.
  std::unordered_map<std::string, TableFacts> tables_;
};

}  // namespace ZTkDb::detail
