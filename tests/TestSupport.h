#pragma once

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "connection/ModuleSchema.h"
#include "ztkdb/Error.h"
#include "ztkdb/MessageBox.h"

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

// The number of the ZTkDb::Error that `f` raises, 0 when it raises none.
inline long ErrorNumberOf(const std::function<void()>& f) {
  try {
    f();
  } catch (const ZTkDb::Error& e) {
    return e.Number();
  }
  return 0;
}

// Collects the message boxes shown while it lives.
class CapturedBoxes {
 public:
  CapturedBoxes() {
    ZTkDb::SetMessageSink([this](const ZTkDb::MessageBoxCall& box) { boxes.push_back(box); });
  }
  ~CapturedBoxes() { ZTkDb::SetMessageSink({}); }
  std::vector<ZTkDb::MessageBoxCall> boxes;
};

}  // namespace ztktest
