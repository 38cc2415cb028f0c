#pragma once

// The statements ZTkDb's engines send, captured so that every contender
// runs exactly those.
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "connection/DbConnectionRegistry.h"
#include "connection/WorkspaceNames.h"
#include "engine/Database.h"

namespace bench {

// An engine that forwards to a real one and remembers each statement as it
// reaches the server.
class Capturing : public ZTkDb::detail::Database {
 public:
  Capturing(std::shared_ptr<ZTkDb::detail::Database> inner,
            std::function<std::string(const std::string&)> adapt)
      : inner_(std::move(inner)), adapt_(std::move(adapt)) {}
  ZTkDb::detail::StorageKind Kind() const override { return inner_->Kind(); }
  int64_t LargestAmount() const override { return inner_->LargestAmount(); }
  const std::string& Path() const override { return inner_->Path(); }
  int64_t Execute(const std::string& sql) override {
    texts.push_back(adapt_(sql));
    return inner_->Execute(sql);
  }
  std::shared_ptr<const ZTkDb::detail::RowSet> Query(
      const std::string& sql,
      ZTkDb::detail::ResultSize size = ZTkDb::detail::ResultSize::kFew) override {
    texts.push_back(adapt_(sql));
    return inner_->Query(sql, size);
  }
  int64_t InsertRows(const std::string& t, const std::vector<std::string>& c,
                     const std::vector<std::vector<ZTkDb::Variant>>& rows) override {
    return inner_->InsertRows(t, c, rows);
  }
  std::optional<std::string> FindTable(const std::string& n) override {
    return inner_->FindTable(n);
  }
  std::vector<ZTkDb::detail::ColumnInfo> Columns(const std::string& t) override {
    return inner_->Columns(t);
  }
  void AddColumn(const std::string& t, const ZTkDb::detail::NewColumn& c) override {
    inner_->AddColumn(t, c);
  }
  std::vector<std::string> TableNames() override { return inner_->TableNames(); }
  std::string QuoteName(const std::string& name) const override { return inner_->QuoteName(name); }
  void BeginTrans() override { inner_->BeginTrans(); }
  void CommitTrans() override { inner_->CommitTrans(); }
  void Rollback() override { inner_->Rollback(); }
  void Close() noexcept override { inner_->Close(); }
  bool IsOpen() const noexcept override { return inner_->IsOpen(); }

  std::vector<std::string> texts;

 private:
  std::shared_ptr<ZTkDb::detail::Database> inner_;
  std::function<std::string(const std::string&)> adapt_;
};

// A capturing engine on a SQLite file or an ODBC connection string,
// registered under `client` while this lives.
struct CaptureClient {
  CaptureClient(const std::string& client, const std::string& target, bool odbc);
  ~CaptureClient();
  std::string ws;
  std::shared_ptr<Capturing> engine;
};

}  // namespace bench
