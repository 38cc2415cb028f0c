// ztk: the help-desk module database from a terminal.
#include <cstdio>
#include <iostream>
#include <string>
#include <vector>

#include "connection/DbConnectionRegistry.h"
#include "connection/DbDialect.h"
#include "connection/ModuleSchema.h"
#include "ztkdb/ZTkDb.h"

namespace {

constexpr int kOk = 0;
constexpr int kFailed = 1;
constexpr int kUsage = 2;

const char* kUsageText =
    "usage: ztk <command> [options]\n"
    "\n"
    "commands:\n"
    "  init PATH              create a new, empty module database (refuses an existing file)\n"
    "  tables --db PATH       list the tables of a database with their row counts\n"
    "\n"
    "options:\n"
    "  --db PATH              the embedded database file\n"
    "  --client NAME          client name to open the database under (default \"ztk\")\n"
    "  -h, --help             this text\n";

struct Options {
  std::string command;
  std::vector<std::string> args;
  std::string db;
  std::string client = "ztk";
  bool help = false;
};

bool Parse(int argc, char** argv, Options& o) {
  for (int i = 1; i < argc; ++i) {
    std::string a = argv[i];
    if (a == "-h" || a == "--help") {
      o.help = true;
    } else if (a == "--db" || a == "--client") {
      if (i + 1 >= argc) {
        std::cerr << "ztk: " << a << " needs a value\n";
        return false;
      }
      (a == "--db" ? o.db : o.client) = argv[++i];
    } else if (a.starts_with("--")) {
      std::cerr << "ztk: unknown option " << a << "\n";
      return false;
    } else if (o.command.empty()) {
      o.command = a;
    } else {
      o.args.push_back(a);
    }
  }
  return true;
}

int Init(const Options& o) {
  if (o.args.size() != 1) {
    std::cerr << "usage: ztk init PATH\n";
    return kUsage;
  }
  ZTkDb::detail::CreateModuleDatabase(o.args[0]);
  std::cout << "created " << o.args[0] << "\n";
  return kOk;
}

int Tables(const Options& o) {
  if (o.db.empty()) {
    std::cerr << "usage: ztk tables --db PATH\n";
    return kUsage;
  }
  ZTkDb::CTkDb tkdb;
  tkdb.OpenJetDb(o.client, o.db, false, true);
  auto* connection = ZTkDb::detail::DbConnectionRegistry::Instance().Item(
      ZTkDb::detail::WorkspaceName(o.client));
  auto db = connection->GetDatabase();
  std::printf("%-22s %8s\n", "Tabelle", "Zeilen");
  for (const auto& table : db->TableNames()) {
    ZTkDb::Recordset rs(db, "", db->Query("SELECT count(*) AS n FROM \"" + table + "\""));
    std::printf("%-22s %8d\n", table.c_str(), rs.Fields("n").ToLong());
  }
  return kOk;
}

}  // namespace

int main(int argc, char** argv) {
  Options o;
  if (!Parse(argc, argv, o)) {
    std::cerr << kUsageText;
    return kUsage;
  }
  if (o.help || o.command.empty()) {
    std::cout << kUsageText;
    return o.help ? kOk : kUsage;
  }
  try {
    if (o.command == "init") return Init(o);
    if (o.command == "tables") return Tables(o);
    std::cerr << "ztk: unknown command '" << o.command << "'\n" << kUsageText;
    return kUsage;
  } catch (const ZTkDb::Error& e) {
    std::cerr << "ztk: error " << e.Number() << " (" << e.Source() << "): " << e.Description()
              << "\n";
    return kFailed;
  }
}
