#include "connection/DbConnection.h"

#include "engine/OpenOdbc.h"
#include "engine/sqlite/SqliteDatabase.h"
#include "runtime/Raise.h"

namespace ZTkDb::detail {

std::unique_ptr<ZTkDb::Workspace> DbConnection::GetWorkspace() const {
  if (!db_) return nullptr;
  return std::make_unique<ZTkDb::Workspace>(name_, db_);
}

std::shared_ptr<Database> DbConnection::GetDatabase() const {
  if (!db_) RaiseStandard(errObjectNotSet, "DbConnection.Database");
  return db_;
}

void DbConnection::OpenJet(const std::string& path, bool exclusive, bool readOnly) {
  db_ = SqliteDatabase::Open(path, exclusive, readOnly);
  path_ = path;
}

void DbConnection::OpenOdbc(const std::string& connect, const std::string& user,
                            const std::string& password, const Variant& exclusive, bool readOnly) {
  db_ = OpenOdbcDatabase(connect, user, password, exclusive.ToBool(), readOnly);
  path_ = connect;
}

void DbConnection::OpenOn(std::shared_ptr<Database> db, const std::string& path) {
  db_ = std::move(db);
  path_ = path;
}

std::unique_ptr<RecordStorage> DbConnection::CreateStorage() const {
  return std::make_unique<RecordStorage>(GetDatabase());
}

void DbConnection::Close() noexcept {
  if (db_) db_->Close();
  db_.reset();
}

}  // namespace ZTkDb::detail
