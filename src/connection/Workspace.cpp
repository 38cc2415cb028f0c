#include "ztkdb/Workspace.h"

#include "engine/Database.h"

namespace ZTkDb {

Workspace::Workspace(std::string name, std::shared_ptr<detail::Database> db)
    : name_(std::move(name)), db_(std::move(db)) {}

Workspace::~Workspace() = default;

void Workspace::BeginTrans() { db_->BeginTrans(); }
void Workspace::CommitTrans() { db_->CommitTrans(); }
void Workspace::Rollback() { db_->Rollback(); }

}  // namespace ZTkDb
