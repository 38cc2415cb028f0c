#include "Capture.h"

#include "engine/odbc/OdbcDatabase.h"
#include "engine/sqlite/SqliteDatabase.h"

namespace bench {

CaptureClient::CaptureClient(const std::string& client, const std::string& target, bool odbc)
    : ws(ZTkDb::detail::WorkspaceName(client)) {
  if (odbc) {
    auto inner = ZTkDb::detail::OdbcDatabase::Open(target, false);
    engine = std::make_shared<Capturing>(inner,
                                         [inner](const std::string& s) { return inner->Adapt(s); });
  } else {
    auto inner = ZTkDb::detail::SqliteDatabase::Open(target, false, false);
    engine = std::make_shared<Capturing>(inner,
                                         [inner](const std::string& s) { return inner->Adapt(s); });
  }
  ZTkDb::detail::DbConnectionRegistry::Instance().Add(ws).OpenOn(engine, "capture");
}

CaptureClient::~CaptureClient() { ZTkDb::detail::DbConnectionRegistry::Instance().Remove(ws); }

}  // namespace bench
