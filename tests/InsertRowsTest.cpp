// Whole tables written with bound values (how ztk copy and import fill a
// target): every kind of value comes back as it was given on every engine,
// across the statements a server's parameter limit splits the rows into,
// and a table holding a value the engine cannot store writes nothing.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "Engines.h"
#include "TestSupport.h"
#include "engine/RowSet.h"
#include "engine/odbc/OdbcDatabase.h"
#include "engine/sqlite/SqliteDatabase.h"
#include "ztkdb/Error.h"

using namespace ZTkDb;
using ztktest::Engine;
using ztktest::ErrorNumberOf;

namespace {

const std::vector<std::string> kColumns = {"lId",        "stUId",         "AusfDatum",
                                           "dStunden",   "cuPreisProStd", "stBemerkung",
                                           "lAuftragId", "bFremdleistung"};

// Texts a statement's reading could take for something else, were they
// ever written into one.
const std::vector<std::string> kTexts = {
    "x'; DELETE FROM T_Leistung; --",
    "?",
    "$1",
    "a ? b ?",
    "back\\slash\\",
    "",
    "Umsätze €",
    "/* c */ -- d",
    "x' || $$'$$ ; --",
    "line\nbreak\r\n",
    "`tick`",
    std::string(3000, 'L'),
};

const std::vector<Date> kDates = {Date(-657434.0),                    // 01.01.0100
                                  Date(2958465.0 + 86399.0 / 86400),  // 31.12.9999 23:59:59
                                  Date(0.0), Date(45000.5), Date(-1.25)};

// Row r of the table; Nulls wander through the columns, and the first
// row is Null wherever it can be, so that no column's type is known from it.
// The largest amount each engine gives back exactly: REAL in a file to
// ±2^39, and through the SQLite driver's 15-digit text below 10^11.
int64_t LargestAmount(Engine engine) {
  if (engine == Engine::kSqliteFile) return (int64_t{1} << 39) * 10000;
  if (engine == Engine::kSqliteOdbc) return 999999999999999;
  return std::numeric_limits<int64_t>::max();
}

std::vector<Variant> RowOf(int r, int64_t largest) {
  std::vector<Variant> row = {
      Variant(r + 1),
      Variant("UID-" + std::to_string(r)),
      Variant(kDates[static_cast<size_t>(r) % kDates.size()]),
      Variant(r % 3 == 0   ? 0.1
              : r % 3 == 1 ? -1e300
                           : 4.9e-324),
      Variant(Currency::FromScaled(r % 2 ? largest : -largest + r)),
      Variant(kTexts[static_cast<size_t>(r) % kTexts.size()]),
      Variant(r % 5 == 0 ? std::numeric_limits<int32_t>::min()
                         : std::numeric_limits<int32_t>::max()),
      Variant(r % 2 == 0),
  };
  for (size_t c = 1; c < row.size(); ++c) {
    if (r == 0 || (r + static_cast<int>(c)) % 7 == 0) row[c] = Variant::Null();
  }
  return row;
}

void ExpectSame(const Variant& given, const Variant& read, const std::string& where) {
  SCOPED_TRACE(where);
  if (given.IsNull()) {
    EXPECT_TRUE(read.IsNull());
    return;
  }
  ASSERT_FALSE(read.IsNull());
  switch (given.Type()) {
    case vtBoolean: EXPECT_EQ(read.ToBool(), given.ToBool()); break;
    case vtLong: EXPECT_EQ(read.ToLong(), given.ToLong()); break;
    case vtDouble: EXPECT_EQ(read.ToDouble(), given.ToDouble()); break;
    case vtCurrency: EXPECT_EQ(read.ToCurrency().Scaled(), given.ToCurrency().Scaled()); break;
    case vtDate: EXPECT_EQ(read.ToDate().IsoText(), given.ToDate().IsoText()); break;
    default: EXPECT_EQ(read.ToString(), given.ToString()); break;
  }
}

class InsertRows : public ::testing::TestWithParam<Engine> {
 protected:
  void SetUp() override {
    ZTKTEST_NEED_ENGINE(target.Create());
    db = Open(false);
  }
  std::shared_ptr<detail::Database> Open(bool readOnly) {
    if (GetParam() == Engine::kSqliteFile) {
      return detail::SqliteDatabase::Open(target.FilePath(), false, readOnly);
    }
    return detail::OdbcDatabase::Open(target.ConnectString(), readOnly);
  }
  int64_t Count() {
    auto rows = db->Query("SELECT COUNT(*) AS n FROM T_Leistung");
    std::vector<Variant> row;
    rows->DecodeRow(0, row);
    return row[0].ToLong();
  }

  ztktest::EngineDb target{GetParam()};
  std::shared_ptr<detail::Database> db;
};

TEST_P(InsertRows, EveryKindOfValueComesBackAsGiven) {
  std::vector<std::vector<Variant>> rows;
  for (int r = 0; r < 1200; ++r) rows.push_back(RowOf(r, LargestAmount(GetParam())));
  // A table of which whole columns are Null.
  std::vector<std::vector<Variant>> nulls;
  for (int r = 1200; r < 1203; ++r) {
    nulls.push_back({Variant(r + 1), Variant::Null(), Variant::Null(), Variant::Null(),
                     Variant::Null(), Variant::Null(), Variant::Null(), Variant::Null()});
  }
  db->BeginTrans();
  EXPECT_EQ(db->InsertRows("T_Leistung", kColumns, rows), 1200);
  EXPECT_EQ(db->InsertRows("T_Leistung", kColumns, nulls), 3);
  EXPECT_EQ(db->InsertRows("T_Leistung", kColumns, {}), 0);
  db->CommitTrans();
  rows.insert(rows.end(), nulls.begin(), nulls.end());

  std::string select = "SELECT ";
  for (size_t c = 0; c < kColumns.size(); ++c) select += (c ? ", " : "") + kColumns[c];
  auto read = db->Query(select + " FROM T_Leistung ORDER BY lId");
  ASSERT_EQ(read->RowCount(), static_cast<int64_t>(rows.size()));
  std::vector<Variant> row;
  for (size_t r = 0; r < rows.size(); ++r) {
    read->DecodeRow(static_cast<int64_t>(r), row);
    for (size_t c = 0; c < kColumns.size(); ++c) {
      ExpectSame(rows[r][c], row[c], "row " + std::to_string(r) + " " + kColumns[c]);
    }
    if (HasFailure()) break;
  }
}

TEST_P(InsertRows, ATableWithAValueTheEngineCannotStoreWritesNothing) {
  const int64_t largest = LargestAmount(GetParam());
  auto refused = [&](Variant bad, size_t column) {
    std::vector<std::vector<Variant>> rows;
    for (int r = 1; r < 600; ++r) rows.push_back(RowOf(r, largest));
    rows.back()[column] = std::move(bad);
    return ErrorNumberOf([&] { db->InsertRows("T_Leistung", kColumns, rows); });
  };
  EXPECT_EQ(refused(Variant(Date(2958466.0)), 2), errOverflow);  // 01.01.10000
  EXPECT_EQ(refused(Variant(Date(-657435.0)), 2), errOverflow);  // 31.12.0099
  // Within the last day but rounding to the next second: 01.01.10000.
  EXPECT_EQ(refused(Variant(Date(2958465.0 + 86399.9 / 86400.0)), 2), errOverflow);
  EXPECT_EQ(refused(Variant(std::nan("")), 3), errOverflow);
  EXPECT_EQ(refused(Variant(std::numeric_limits<double>::infinity()), 3), errOverflow);
  if (largest < std::numeric_limits<int64_t>::max()) {
    EXPECT_EQ(refused(Variant(Currency::FromScaled(-largest - 1)), 4), errOverflow);
  }
  EXPECT_EQ(ErrorNumberOf([&] {
              db->InsertRows("T_Leistung", kColumns, {RowOf(1, largest), {Variant(7)}});
            }),
            errInvalidArgument);
  EXPECT_EQ(Count(), 0);

  // A clashing key fails in the server: the caller's transaction takes back
  // the rows before it.
  db->BeginTrans();
  EXPECT_EQ(ErrorNumberOf([&] {
              db->InsertRows("T_Leistung", kColumns, {RowOf(1, largest), RowOf(1, largest)});
            }),
            errDuplicateValue);
  db->Rollback();
  EXPECT_EQ(Count(), 0);

  auto readOnly = Open(true);
  EXPECT_EQ(
      ErrorNumberOf([&] { readOnly->InsertRows("T_Leistung", kColumns, {RowOf(1, largest)}); }),
      errReadOnly);
  EXPECT_EQ(Count(), 0);
}

INSTANTIATE_TEST_SUITE_P(Engines, InsertRows, ztktest::AllEngines(), ztktest::EngineName);

}  // namespace
