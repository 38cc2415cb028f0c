#pragma once

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "connection/DbConnectionRegistry.h"
#include "connection/ModuleSchema.h"
#include "connection/WorkspaceNames.h"
#include "engine/Database.h"
#include "engine/RecordsetAccess.h"
#include "ztkdb/Date.h"
#include "ztkdb/Error.h"
#include "ztkdb/MessageBox.h"
#include "ztkdb/Recordset.h"

namespace ztktest {

// A fresh module database in a temporary folder, removed with the object.
class TempDb {
 public:
  explicit TempDb(bool withSchema = true) {
    std::string pattern = (std::filesystem::temp_directory_path() / "ztkdb-test-XXXXXX").string();
    dir_ = mkdtemp(pattern.data());
    path_ = dir_ + "/module.db";
    if (withSchema) ZTkDb::detail::CreateModuleDatabase(path_);
  }
  ~TempDb() {
    std::error_code ignored;
    std::filesystem::remove_all(dir_, ignored);
  }
  const std::string& Path() const { return path_; }
  const std::string& Dir() const { return dir_; }

 private:
  std::string dir_;
  std::string path_;
};

// A file's bytes, whole ("" when it cannot be read).
inline std::string FileBytes(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

// The number of the ZTkDb::Error that `f` raises, 0 when it raises none.
inline long ErrorNumberOf(const std::function<void()>& f) {
  try {
    f();
  } catch (const ZTkDb::Error& e) {
    return e.Number();
  }
  return 0;
}

// The engine under an open client, for checks and set-ups that bypass the
// records (raw rows, Nulls the records never write).
inline std::shared_ptr<ZTkDb::detail::Database> EngineOf(const std::string& client) {
  return ZTkDb::detail::DbConnectionRegistry::Instance()
      .Item(ZTkDb::detail::WorkspaceName(client))
      ->GetDatabase();
}
inline void Exec(const std::string& client, const std::string& sql) {
  EngineOf(client)->Execute(sql);
}
// The first column of the first row of `sql`.
inline ZTkDb::Variant Scalar(const std::string& client, const std::string& sql) {
  auto db = EngineOf(client);
  return ZTkDb::detail::RecordsetAccess::Make(db, "", db->Query(sql))->Fields(0);
}

// A record of class R, read by its id under `client`.
template <typename R>
std::unique_ptr<R> ReadBack(const std::string& client, int32_t id) {
  auto record = std::make_unique<R>();
  record->ConnectStorage(client);
  record->ReadById(id);
  return record;
}

// The numbers (Nr) of a list's rows in cursor order, walked from the first.
template <typename List>
std::vector<int32_t> WalkNumbers(List& list) {
  std::vector<int32_t> nrs;
  for (auto item = list.MoveFirst(); item; item = list.MoveNext()) nrs.push_back(item->Nr());
  return nrs;
}
template <typename List>
std::set<int32_t> NumberSet(List& list) {
  auto nrs = WalkNumbers(list);
  return {nrs.begin(), nrs.end()};
}

// "dd.mm.yyyy", the date form of the ODBC filters.
inline std::string GermanDate(ZTkDb::Date d) {
  char buf[16];
  std::snprintf(buf, sizeof buf, "%02d.%02d.%04d", d.Day(), d.Month(), d.Year());
  return buf;
}

// Collects the message boxes shown while it lives. Captures nest: the
// innermost one collects, and the one around it takes over again after it.
class CapturedBoxes {
 public:
  CapturedBoxes() : outer_(Innermost()) {
    Innermost() = this;
    Install(this);
  }
  ~CapturedBoxes() {
    Innermost() = outer_;
    Install(outer_);
  }
  CapturedBoxes(const CapturedBoxes&) = delete;
  CapturedBoxes& operator=(const CapturedBoxes&) = delete;

  std::vector<ZTkDb::MessageBoxCall> boxes;

 private:
  static CapturedBoxes*& Innermost() {
    static CapturedBoxes* innermost = nullptr;
    return innermost;
  }
  static void Install(CapturedBoxes* capture) {
    if (!capture) return ZTkDb::SetMessageSink({});
    ZTkDb::SetMessageSink(
        [capture](const ZTkDb::MessageBoxCall& box) { capture->boxes.push_back(box); });
  }

  CapturedBoxes* outer_;
};

}  // namespace ztktest
