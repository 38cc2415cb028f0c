#include "engine/TableDef.h"

#include <strings.h>

#include "runtime/Raise.h"

namespace ZTkDb::detail {

Fields::Fields(std::shared_ptr<Database> db, std::string table)
    : db_(std::move(db)), table_(std::move(table)) {}

ColumnInfo Fields::Item(const std::string& name) const {
  for (auto& column : db_->Columns(table_)) {
    if (strcasecmp(column.name.c_str(), name.c_str()) == 0) return column;
  }
  RaiseStandard(errItemNotFound, "DAO.Fields");
}

void Fields::Append(const Field& field) { db_->AddColumn(table_, field.Definition()); }

size_t Fields::Count() const { return db_->Columns(table_).size(); }

TableDef::TableDef(std::shared_ptr<Database> db, std::string name)
    : db_(std::move(db)), name_(std::move(name)) {}

std::unique_ptr<TableDef> TableDefs::Item(const std::string& name) const {
  std::optional<std::string> found = db_->FindTable(name);
  if (!found) return nullptr;
  return std::make_unique<TableDef>(db_, std::move(*found));
}

}  // namespace ZTkDb::detail
