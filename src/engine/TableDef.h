#pragma once

#include <memory>
#include <string>
#include <vector>

#include "engine/Database.h"

namespace ZTkDb::detail {

// A field about to be created (CreateField) or one that exists.
class Field {
 public:
  Field(std::string name, DaoFieldType type) : column_{std::move(name), type, {}, false} {}
  const std::string& Name() const { return column_.name; }
  DaoFieldType Type() const { return column_.type; }
  void DefaultValue(const Variant& value) { column_.default_value = value; }
  void Required(bool value) { column_.required = value; }
  const NewColumn& Definition() const { return column_; }

 private:
  NewColumn column_;
};

class Fields {
 public:
  Fields(std::shared_ptr<Database> db, std::string table);
  // Raises 3265 when the table has no such column (case-insensitive).
  ColumnInfo Item(const std::string& name) const;
  // Adds the column to the table (ALTER TABLE ... ADD).
  void Append(const Field& field);
  size_t Count() const;

 private:
  std::shared_ptr<Database> db_;
  std::string table_;
};

class TableDef {
 public:
  TableDef(std::shared_ptr<Database> db, std::string name);
  const std::string& Name() const { return name_; }
  Fields GetFields() const { return Fields(db_, name_); }
  Field CreateField(const std::string& name, DaoFieldType type) const { return Field(name, type); }

 private:
  std::shared_ptr<Database> db_;
  std::string name_;
};

class TableDefs {
 public:
  explicit TableDefs(std::shared_ptr<Database> db) : db_(std::move(db)) {}
  // Nothing (empty) when the database has no such table.
  std::unique_ptr<TableDef> Item(const std::string& name) const;

 private:
  std::shared_ptr<Database> db_;
};

}  // namespace ZTkDb::detail
