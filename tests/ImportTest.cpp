// ztk import on files Microsoft Access wrote: every table arrives whole with
// its values as Access stored them, and the file is never changed.
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "Engines.h"
#include "TestSupport.h"
#include "ZtkRun.h"
#include "engine/RowSet.h"
#include "engine/odbc/OdbcDatabase.h"
#include "engine/sqlite/SqliteDatabase.h"
#include "ztkdb/ZTkDb.h"

using namespace ZTkDb;
using ztktest::Ztk;

namespace {

// Real Access files are not part of the repository: they lie in the shared
// folder beside the checkout.
std::string Fixture(const char* name) {
  const std::string dir = std::string(ZTKDB_SOURCE_DIR) + "/../shared/fixtures/jet/";
  if (!std::filesystem::is_regular_file(dir + name)) {
    throw std::runtime_error("the Access file " + std::string(name) +
                             " is missing: the test files " + "must lie in " + dir +
                             " (the folder shared/ beside the checkout)");
  }
  return dir + name;
}

// What mdbtools' own command counts in a table.
int64_t MdbCount(const std::string& file, const std::string& table) {
  // mdbtools converts names through iconv, which fails on "Umsätze" in the C
  // locale: the count is asked for in a UTF-8 one whatever the run's is.
  const std::string command = "LC_ALL=C.UTF-8 mdb-count '" + file + "' '" + table + "'";
  FILE* p = popen(command.c_str(), "r");
  char line[64] = {};
  if (!p || !fgets(line, sizeof line, p)) return -1;
  pclose(p);
  return std::stoll(line);
}

std::vector<Variant> Row(detail::Database& db, const std::string& sql) {
  auto rows = db.Query(sql);
  std::vector<Variant> row;
  if (rows->RowCount() > 0) rows->DecodeRow(0, row);
  return row;
}

// A Jet 3 file as Access leaves it with a password or encrypted: the header
// past 0x18 is RC4 with a fixed key; `bytes` go at `offset` of the clear
// header (the password at 0x42, the page key at 0x3e).
std::string WithHeader(const std::string& from, const std::string& to, size_t offset,
                       const std::string& bytes) {
  std::string file = ztktest::FileBytes(from);
  auto rc4 = [](std::string& data, size_t at, size_t n) {
    const unsigned char key[4] = {0xc7, 0xda, 0x39, 0x6b};
    unsigned char st[256];
    for (int i = 0; i < 256; ++i) st[i] = static_cast<unsigned char>(i);
    for (int i = 0, j = 0; i < 256; ++i) {
      j = (j + st[i] + key[i % 4]) % 256;
      std::swap(st[i], st[j]);
    }
    for (size_t k = 0, i = 0, j = 0; k < n; ++k) {
      i = (i + 1) % 256;
      j = (j + st[i]) % 256;
      std::swap(st[i], st[j]);
      data[at + k] = static_cast<char>(data[at + k] ^ st[(st[i] + st[j]) % 256]);
    }
  };
  rc4(file, 0x18, 126);
  file.replace(offset, bytes.size(), bytes);
  rc4(file, 0x18, 126);
  std::ofstream(to, std::ios::binary) << file;
  return to;
}

}  // namespace

TEST(Import, AccessFilesArriveWholeWithTheirStoredValuesAndStayUnchanged) {
  ztktest::TempDb dir(false);
  struct File {
    const char* name;
    std::vector<std::string> tables;
  };
  const File files[] = {
      {"nwind.mdb",
       {"Orders", "Order Details", "Products", "Customers", "Employees", "Suppliers", "Shippers",
        "Categories", "Umsätze"}},
      {"DateTestDatabase.mdb", {"DateTest"}},
      {"ASampleDatabase.accdb", {"Asset Items"}},
  };
  for (const File& f : files) {
    SCOPED_TRACE(f.name);
    const std::string source = Fixture(f.name);
    const std::string before = ztktest::FileBytes(source);
    ASSERT_FALSE(before.empty()) << source;
    const std::string target = dir.Path() + "." + f.name + ".db";
    const auto run = Ztk({"import", source, target, "--all-tables"});
    ASSERT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(ztktest::FileBytes(source), before);
    auto db = detail::SqliteDatabase::Open(target, false, true);
    for (const std::string& table : f.tables) {
      EXPECT_EQ(Row(*db, "SELECT COUNT(*) FROM \"" + table + "\"")[0].ToLong(),
                MdbCount(source, table))
          << table;
      EXPECT_NE(run.out.find(table), std::string::npos) << run.out;
    }
  }
  auto nwind = detail::SqliteDatabase::Open(dir.Path() + ".nwind.mdb.db", false, true);
  EXPECT_EQ(Row(*nwind, "SELECT Freight FROM Orders WHERE OrderID = 10248")[0].ToCurrency(),
            Currency::FromScaled(323800));
  EXPECT_EQ(Row(*nwind, "SELECT COUNT(*) FROM Products WHERE Discontinued <> 0")[0].ToLong(), 8);
  EXPECT_EQ(
      Row(*nwind, "SELECT COUNT(*) FROM Customers WHERE Address LIKE '%Bolívar%'")[0].ToLong(), 1);
  EXPECT_EQ(Row(*nwind, "SELECT CompanyName FROM Customers WHERE CompanyName LIKE 'K%nig%'")[0]
                .ToString(),
            "Königlich Essen");

  auto dates = detail::SqliteDatabase::Open(dir.Path() + ".DateTestDatabase.mdb.db", false, true);
  EXPECT_EQ(Row(*dates, "SELECT DateTimeCol FROM DateTest WHERE IDCol = 2")[0].ToDate().IsoText(),
            "9999-01-01 00:00:00");
  EXPECT_EQ(Row(*dates, "SELECT DateTimeCol FROM DateTest WHERE IDCol = 3")[0].ToDate().IsoText(),
            "1898-01-01 00:00:00");
  EXPECT_EQ(Row(*dates, "SELECT DateCol FROM DateTest WHERE IDCol = 4")[0].ToDate().IsoText(),
            "0633-01-01 00:00:00");
  EXPECT_EQ(Row(*dates, "SELECT LongTextCol FROM DateTest WHERE IDCol = 6")[0].ToString(),
            "New line\r\nin field");

  auto assets = detail::SqliteDatabase::Open(dir.Path() + ".ASampleDatabase.accdb.db", false, true);
  EXPECT_EQ(
      Row(*assets, "SELECT Cost FROM \"Asset Items\" WHERE \"Asset No\" = '30050'")[0].ToCurrency(),
      Currency::FromScaled(19955000));
}

// The way out is named where a user meets it, and a file that is not an
// Access database is refused before anything is created.
TEST(Import, AccessFilesAreNamedAndBadFilesWriteNothing) {
  CTkDb tkdb;
  try {
    tkdb.OpenJetDb("jet", Fixture("nwind.mdb"), false, true);
    ADD_FAILURE() << "an Access file opened";
  } catch (const Error& e) {
    EXPECT_EQ(e.Number(), 3051);
    EXPECT_NE(e.Description().find("ztk import"), std::string::npos) << e.Description();
  }

  ztktest::TempDb dir(false);
  const std::string notAccess = dir.Path() + ".txt", target = dir.Path() + ".out.db";
  std::ofstream(notAccess) << "not a database";
  const auto run = Ztk({"import", notAccess, target});
  EXPECT_EQ(run.code, 1);
  EXPECT_NE(run.err.find("nothing was written"), std::string::npos) << run.err;
  EXPECT_FALSE(std::filesystem::exists(target));
  // A password, or pages encrypted with a key of their own: refused.
  const std::string locked =
      WithHeader(Fixture("nwind.mdb"), dir.Path() + ".pw.mdb", 0x42, "geheim");
  const auto password = Ztk({"import", locked, target, "--all-tables"});
  EXPECT_EQ(password.code, 1);
  EXPECT_NE(password.err.find("password"), std::string::npos) << password.err;
  const std::string encrypted =
      WithHeader(Fixture("nwind.mdb"), dir.Path() + ".enc.mdb", 0x3e, "\x78\x56\x34\x12");
  const auto unreadable = Ztk({"import", encrypted, target, "--all-tables"});
  EXPECT_EQ(unreadable.code, 1);
  EXPECT_NE(unreadable.err.find("cannot be read"), std::string::npos) << unreadable.err;
  EXPECT_FALSE(std::filesystem::exists(target));
  // No module tables in the file and no --all-tables: nothing to do, said so.
  const auto none = Ztk({"import", Fixture("DateTestDatabase.mdb"), target});
  EXPECT_EQ(none.code, 1);
  EXPECT_NE(none.err.find("--all-tables"), std::string::npos) << none.err;

  // A module table found by its name in any case, holding a column the
  // module's table does not have: refused by name, and the new target file
  // is gone again; an existing target is left as it was.
  std::string renamed = ztktest::FileBytes(Fixture("nwind.mdb"));
  for (size_t at = renamed.find("Employees"); at != std::string::npos;
       at = renamed.find("Employees", at)) {
    renamed.replace(at, 9, "t_meldung");
  }
  const std::string foreign = dir.Path() + ".module.mdb";
  std::ofstream(foreign, std::ios::binary) << renamed;
  const auto mismatch = Ztk({"import", foreign, target});
  EXPECT_EQ(mismatch.code, 1);
  EXPECT_NE(mismatch.err.find("T_Meldung has no column EmployeeID"), std::string::npos)
      << mismatch.err;
  EXPECT_FALSE(std::filesystem::exists(target));
  ASSERT_EQ(Ztk({"init", target}).code, 0);
  EXPECT_EQ(Ztk({"import", foreign, target, "--all-tables"}).code, 1);
  ASSERT_TRUE(std::filesystem::exists(target));
  auto db = detail::SqliteDatabase::Open(target, false, false);
  EXPECT_EQ(Row(*db, "SELECT count(*) FROM T_Meldung")[0].ToLong(), 0);
  EXPECT_FALSE(db->FindTable("Orders"));
}

// On the servers: names with blanks and umlauts quoted as each reads them,
// amounts exact.
class ImportToServer : public ::testing::TestWithParam<ztktest::Engine> {};
INSTANTIATE_TEST_SUITE_P(Engines, ImportToServer, ztktest::ServerEngines(), ztktest::EngineName);

TEST_P(ImportToServer, NorthwindArrivesWhole) {
  ztktest::EngineDb db(GetParam());
  ZTKTEST_NEED_ENGINE(db.Create());
  const auto run =
      Ztk({"import", Fixture("nwind.mdb"), "--to-odbc", db.ConnectString(), "--all-tables"});
  ASSERT_EQ(run.code, 0) << run.err;
  auto server = detail::OdbcDatabase::Open(db.ConnectString(), true);
  const auto& d = server->Dialect();
  EXPECT_EQ(Row(*server, "SELECT COUNT(*) FROM " + d.QuoteName("Order Details"))[0].ToLong(), 2155);
  EXPECT_EQ(Row(*server, "SELECT COUNT(*) FROM " + d.QuoteName("Umsätze"))[0].ToLong(), 830);
  EXPECT_EQ(Row(*server, "SELECT " + d.QuoteName("Freight") + " FROM " + d.QuoteName("Orders") +
                             " WHERE " + d.QuoteName("OrderID") + " = 10248")[0]
                .ToCurrency(),
            Currency::FromScaled(323800));
}
