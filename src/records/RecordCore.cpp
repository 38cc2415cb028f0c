#include "records/RecordCore.h"

#include "connection/DbConnectionRegistry.h"
#include "connection/WorkspaceNames.h"
#include "runtime/Messages.h"

namespace ZTkDb::detail {

std::unique_ptr<RecordStorage> StorageForClient(const std::string& clientName) {
  if (clientName.empty()) return nullptr;
  // A list connects a new record for every row it hands out, all to the
  // same client: the last lookup holds while no connection came or went.
  struct Last {
    uint64_t generation = 0;
    bool jet = false;
    std::string client;
    DbConnection* connection = nullptr;
  };
  thread_local Last last;
  DbConnectionRegistry& registry = DbConnectionRegistry::Instance();
  const uint64_t generation = registry.Generation();
  const bool jet = ProcessFlags::jet_workspace_names;
  if (last.generation != generation || last.jet != jet || last.client != clientName ||
      generation == 0) {
    last.connection = registry.Item(WorkspaceName(clientName));
    last.generation = generation;
    last.jet = jet;
    last.client = clientName;
  }
  return last.connection ? last.connection->CreateStorage() : nullptr;
}

RowReadCache& ThreadRowReadCache() {
  thread_local RowReadCache cache;
  return cache;
}

void ShowWriteFailed(const std::string& className, const char* member, const char* what) {
  const bool create = std::string_view(what) == "Create";
  ShowMessageBox(className + "." + what + " fehlgeschlagen. Bitte an TORQ melden!", "Zanto", true,
                 member, create ? errInsertFailed : errWriteConflict);
}

void AssignConverted(const Variant& v, int32_t& out) { out = v.ToLong(); }
void AssignConverted(const Variant& v, uint8_t& out) { out = v.ToByte(); }
void AssignConverted(const Variant& v, bool& out) { out = v.ToBool(); }
void AssignConverted(const Variant& v, double& out) { out = v.ToDouble(); }
void AssignConverted(const Variant& v, Currency& out) { out = v.ToCurrency(); }
void AssignConverted(const Variant& v, Date& out) { out = v.ToDate(); }
void AssignConverted(const Variant& v, std::string& out) { out = v.ToString(); }

}  // namespace ZTkDb::detail
