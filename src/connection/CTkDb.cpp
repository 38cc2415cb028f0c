#include "ztkdb/CTkDb.h"

#include <algorithm>
#include <cctype>

#include "connection/DbConnectionRegistry.h"
#include "connection/WorkspaceNames.h"
#include "engine/TableDef.h"
#include "runtime/Guard.h"
#include "runtime/Messages.h"

namespace ZTkDb {

using detail::DbConnectionRegistry;
using detail::ProcessFlags;
using detail::WorkspaceName;

CTkDb::CTkDb() = default;

CTkDb::~CTkDb() {
  try {
    CloseDb();
  } catch (...) {
    // Destruction never raises; the connection is dropped at process end.
  }
}

std::unique_ptr<Workspace> CTkDb::Ws() const {
  return detail::Guard("CTkDb.Ws", [&]() -> std::unique_ptr<Workspace> {
    auto* connection = DbConnectionRegistry::Instance().Item(WorkspaceName(client_name_));
    return connection ? connection->GetWorkspace() : nullptr;
  });
}

std::string CTkDb::DbPath() const {
  return detail::Guard("CTkDb.DbPath", [&]() -> std::string {
    auto* connection = DbConnectionRegistry::Instance().Item(WorkspaceName(client_name_));
    return connection ? connection->DbPath() : std::string();
  });
}

void CTkDb::OpenOdbcDb(const std::string& stClientName, const std::string& stConnStr,
                       bool bExclusive, bool bReadOnly) {
  try {
    detail::Guard("CTkDb.OpenOdbcDb", [&] {
      ProcessFlags::jet_workspace_names = false;
      std::string upper = stConnStr;
      std::transform(upper.begin(), upper.end(), upper.begin(),
                     [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
      if (upper.find("ZANTOORACLE") != std::string::npos) ProcessFlags::oracle = true;
      const std::string ws = WorkspaceName(stClientName);
      auto& registry = DbConnectionRegistry::Instance();
      bool openedHere = false;
      if (!registry.Item(ws)) {
        auto& connection = registry.Add(ws);
        try {
          connection.OpenOdbc(stConnStr, "", "", Variant(bExclusive), bReadOnly);
        } catch (...) {
          // An entry that never opened must not be found by the next open.
          registry.Remove(ws);
          throw;
        }
        openedHere = true;
      }
      opened_here_ = openedHere;
      client_name_ = stClientName;
    });
  } catch (const Error& e) {
    detail::ShowMessageBox("CTkDb.OpenOdbcDb\n" + e.Description(), {}, true, "CTkDb.OpenOdbcDb",
                           e.Number());
  }
}

void CTkDb::OpenJetDb(const std::string& stClientName, const std::string& stDbPath, bool bExclusive,
                      bool bReadOnly) {
  detail::Guard("CTkDb.OpenJetDb", [&] {
    ProcessFlags::jet_workspace_names = true;
    CloseDb();
    const std::string ws = WorkspaceName(stClientName);
    auto& registry = DbConnectionRegistry::Instance();
    if (!registry.Item(ws)) {
      auto& connection = registry.Add(ws);
      try {
        connection.OpenJet(stDbPath, bExclusive, bReadOnly);
      } catch (...) {
        registry.Remove(ws);
        throw;
      }
      opened_here_ = true;
    } else {
      opened_here_ = false;
    }
    client_name_ = stClientName;
    UpgradeSchema();
  });
}

void CTkDb::CloseDb() {
  detail::Guard("CTkDb.CloseDb", [&] {
    if (client_name_.empty() || !opened_here_) return;
    DbConnectionRegistry::Instance().Remove(WorkspaceName(client_name_));
    client_name_.clear();
    opened_here_ = false;
  });
}

// Databases made before the order type existed lack T_Auftrag.byAuftragstyp;
// it is added on every open that finds it missing.
void CTkDb::UpgradeSchema() {
  auto* connection = DbConnectionRegistry::Instance().Item(WorkspaceName(client_name_));
  if (!connection) return;
  const detail::TableDefs tables(connection->GetDatabase());
  auto table = tables.Item("T_Auftrag");
  if (!table) return;
  auto fields = table->GetFields();
  try {
    fields.Item("byAuftragstyp");
    return;
  } catch (const Error&) {
    // The expected path for an old database: the column is missing.
  }
  auto field = table->CreateField("byAuftragstyp", detail::dbByte);
  field.DefaultValue(Variant(int32_t{0}));
  field.Required(true);
  fields.Append(field);
}

}  // namespace ZTkDb
