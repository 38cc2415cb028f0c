#pragma once

#include <string>
#include <vector>

#include "connection/DbConnectionRegistry.h"
#include "connection/WorkspaceNames.h"
#include "engine/Database.h"
#include "engine/RowSet.h"

namespace ztktest {

// An engine that runs nothing: it records every statement it is given, as it
// is given, reports one affected row per write and answers queries with the
// rows a test put in `next_rows`.
class RecordingDatabase : public ZTkDb::detail::Database {
 public:
  // Any number, as a host's engine could report one.
  explicit RecordingDatabase(int16_t kind) : kind_(static_cast<ZTkDb::detail::StorageKind>(kind)) {}
  using ZTkDb::detail::Database::Execute;
  using ZTkDb::detail::Database::Query;
  ZTkDb::detail::StorageKind Kind() const override { return kind_; }
  const std::string& Path() const override { return path_; }
  int64_t Execute(const std::string& sql) override {
    statements.push_back(sql);
    return 1;
  }
  std::shared_ptr<const ZTkDb::detail::RowSet> Query(
      const std::string& sql,
      ZTkDb::detail::ResultSize = ZTkDb::detail::ResultSize::kFew) override {
    statements.push_back(sql);
    if (next_rows) return std::exchange(next_rows, nullptr);
    return std::make_shared<ZTkDb::detail::RowSet>(std::vector<std::string>{"lId"});
  }
  int64_t InsertRows(const std::string& table, const std::vector<std::string>&,
                     const std::vector<std::vector<ZTkDb::Variant>>& rows) override {
    statements.push_back("INSERT INTO " + table + " (" + std::to_string(rows.size()) + " rows)");
    return static_cast<int64_t>(rows.size());
  }
  std::optional<std::string> FindTable(const std::string&) override { return std::nullopt; }
  std::vector<ZTkDb::detail::ColumnInfo> Columns(const std::string&) override { return {}; }
  void AddColumn(const std::string&, const ZTkDb::detail::NewColumn&) override {}
  std::vector<std::string> TableNames() override { return {}; }
  std::string QuoteName(const std::string& name) const override { return name; }
  void BeginTrans() override {}
  void CommitTrans() override {}
  void Rollback() override {}
  void Close() noexcept override {}
  bool IsOpen() const noexcept override { return true; }

  std::vector<std::string> statements;
  std::shared_ptr<ZTkDb::detail::RowSet> next_rows;

 private:
  ZTkDb::detail::StorageKind kind_;
  std::string path_ = "recording";
};

// Registers a recording engine under a client name for as long as it lives.
class RecordingClient {
 public:
  RecordingClient(const std::string& client, int16_t kind)
      : ws_(ZTkDb::detail::WorkspaceName(client)), db(std::make_shared<RecordingDatabase>(kind)) {
    ZTkDb::detail::DbConnectionRegistry::Instance().Add(ws_).OpenOn(db, "recording");
  }
  ~RecordingClient() { ZTkDb::detail::DbConnectionRegistry::Instance().Remove(ws_); }

 private:
  std::string ws_;

 public:
  std::shared_ptr<RecordingDatabase> db;
};

}  // namespace ztktest
