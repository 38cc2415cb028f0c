#include <gtest/gtest.h>

#include <fstream>

#include "TestSupport.h"
#include "engine/QueryDef.h"
#include "engine/RowSet.h"
#include "engine/TableDef.h"
#include "engine/sqlite/SqliteDatabase.h"
#include "sql/Statement.h"
#include "ztkdb/Error.h"
#include "ztkdb/Recordset.h"

using namespace ZTkDb;
using ZTkDb::detail::QueryDef;
using ZTkDb::detail::SqliteDatabase;
using ztktest::ErrorNumberOf;

namespace {

class SqliteEngine : public ::testing::Test {
 protected:
  void SetUp() override { db = SqliteDatabase::Open(temp.Path(), false, false); }

  std::unique_ptr<Recordset> Open(const std::string& sql) {
    return QueryDef(db, detail::Statement::Text(sql)).OpenRecordset();
  }
  int64_t Exec(const std::string& sql) {
    QueryDef q(db, detail::Statement::Text(sql));
    q.Execute();
    return q.RecordsAffected();
  }
  void InsertDocs(int n) {
    for (int i = 1; i <= n; ++i) {
      Exec("INSERT INTO T_MsgOrderDokument (stUId, lMsgId, lOrderId, stPfad, stDatei) VALUES ('u" +
           std::to_string(++uid) + "', " + std::to_string(i) + ", 0, 'p', 'f')");
    }
  }

  ztktest::TempDb temp;
  std::shared_ptr<SqliteDatabase> db;
  int uid = 0;
};

}  // namespace

TEST_F(SqliteEngine, StoredFormsReadBackAsTypedValues) {
  EXPECT_EQ(Exec("INSERT INTO T_Auftrag (stUId, lNr, AuftragsDatum, bErledigt, byObjTyp, cuKosten, "
                 "stAuftrag) VALUES ('a', 17, '15.11.2026 08:30:00', -1, 6, 123456789.1234, "
                 "'Tür klemmt')"),
            1);
  auto rs = Open("SELECT T_Auftrag.* FROM T_Auftrag");
  ASSERT_EQ(rs->RecordCount(), 1);
  EXPECT_EQ(rs->Fields("lnr").Type(), vtLong);
  EXPECT_EQ(rs->Fields("AUFTRAGSDATUM").ToDate(), Date::FromYmd(2026, 11, 15, 8, 30, 0));
  EXPECT_EQ(rs->Fields("AuftragsDatum").Type(), vtDate);
  EXPECT_EQ(rs->Fields("bErledigt").Type(), vtBoolean);
  EXPECT_TRUE(rs->Fields("bErledigt").ToBool());
  EXPECT_EQ(rs->Fields("byObjTyp").Type(), vtByte);
  EXPECT_EQ(rs->Fields("cuKosten").ToCurrency().Scaled(), 1234567891234);
  EXPECT_EQ(rs->Fields("stAuftrag").ToString(), "Tür klemmt");
  EXPECT_TRUE(rs->Fields("ErledigtDatum").IsNull());
  EXPECT_EQ(rs->Fields("byAuftragstyp").ToByte(), 0);
  EXPECT_EQ(ErrorNumberOf([&] { rs->Fields("gibtsnicht"); }), errItemNotFound);
  // the date is stored in its ISO form, so text comparisons order correctly
  auto raw = Open("SELECT typeof(AuftragsDatum) AS t, AuftragsDatum || '' AS v FROM T_Auftrag");
  EXPECT_EQ(raw->Fields("v").ToString(), "2026-11-15 08:30:00");
}

TEST_F(SqliteEngine, NavigationOverASnapshot) {
  InsertDocs(3);
  auto rs = Open("SELECT lMsgId FROM T_MsgOrderDokument ORDER BY lMsgId");
  EXPECT_EQ(rs->RecordCount(), 3);
  EXPECT_EQ(rs->AbsolutePosition(), 0);
  EXPECT_FALSE(rs->Bof());
  rs->MoveLast();
  EXPECT_EQ(rs->Fields("lMsgId").ToLong(), 3);
  rs->MoveNext();
  EXPECT_TRUE(rs->Eof());
  EXPECT_EQ(rs->AbsolutePosition(), -1);
  EXPECT_EQ(ErrorNumberOf([&] { rs->Fields("lMsgId"); }), errNoCurrentRecord);
  EXPECT_EQ(ErrorNumberOf([&] { rs->MoveNext(); }), errNoCurrentRecord);
  rs->MovePrevious();
  EXPECT_EQ(rs->Fields("lMsgId").ToLong(), 3);
  rs->AbsolutePosition(1);
  EXPECT_EQ(rs->Fields("lMsgId").ToLong(), 2);
  rs->Move(0);
  EXPECT_EQ(rs->Fields("lMsgId").ToLong(), 2);
  EXPECT_EQ(ErrorNumberOf([&] { rs->AbsolutePosition(3); }), errInvalidArgument);
  rs->MoveFirst();
  rs->MovePrevious();
  EXPECT_TRUE(rs->Bof());
  EXPECT_FALSE(rs->Eof());
}

TEST_F(SqliteEngine, EmptyResultIsBofAndEof) {
  auto rs = Open("SELECT * FROM T_MsgOrderDokument");
  EXPECT_EQ(rs->RecordCount(), 0);
  EXPECT_TRUE(rs->Bof());
  EXPECT_TRUE(rs->Eof());
  rs->MoveFirst();
  rs->MoveLast();
  EXPECT_TRUE(rs->Eof());
}

TEST_F(SqliteEngine, CloneHasItsOwnPositionAndRequerySeesNewRows) {
  InsertDocs(2);
  auto rs = Open("SELECT lMsgId FROM T_MsgOrderDokument ORDER BY lMsgId");
  rs->MoveLast();
  auto clone = rs->Clone();
  clone->MoveFirst();
  EXPECT_EQ(clone->Fields("lMsgId").ToLong(), 1);
  EXPECT_EQ(rs->Fields("lMsgId").ToLong(), 2);
  InsertDocs(3);  // adds ids 1..3 again: five rows in all
  EXPECT_EQ(rs->RecordCount(), 2);
  ASSERT_TRUE(rs->Restartable());
  rs->Requery();
  EXPECT_EQ(rs->RecordCount(), 5);
  EXPECT_EQ(rs->AbsolutePosition(), 0);
  EXPECT_EQ(clone->RecordCount(), 2);
}

TEST_F(SqliteEngine, ARecordsetKeepsItsStatementForRequery) {
  InsertDocs(3);
  // A query given a new statement leaves its recordsets the old one.
  QueryDef q(db, detail::Statement("SELECT lMsgId FROM T_MsgOrderDokument WHERE lMsgId = #a#",
                                   detail::StorageKind::Jet));
  q.SQL(std::move(detail::Statement("SELECT lMsgId FROM T_MsgOrderDokument WHERE lMsgId = #a#",
                                    detail::StorageKind::Jet)
                      .Long("#a#", 3)));
  auto three = q.OpenRecordset();
  q.SQL(detail::Statement::Text("SELECT lMsgId FROM T_MsgOrderDokument"));
  EXPECT_EQ(q.OpenRecordset()->RecordCount(), 3);
  Exec("DELETE FROM T_MsgOrderDokument WHERE lMsgId <> 3");
  three->Requery();
  EXPECT_EQ(three->RecordCount(), 1);
  EXPECT_EQ(three->Fields("lMsgId").ToLong(), 3);
}

TEST_F(SqliteEngine, ErrorsCarryDaoNumbersAndEngineText) {
  EXPECT_EQ(ErrorNumberOf([&] { Open("SELECT * FROM T_Nirgends"); }), errTableNotFound);
  EXPECT_EQ(ErrorNumberOf([&] { Open("SELECT FROM WHERE"); }), errSyntax);
  EXPECT_EQ(ErrorNumberOf([&] { Open("SELECT * FROM T_Auftrag WHERE T_Auftrag.lSoId IN)"); }),
            errSyntax);
  EXPECT_EQ(ErrorNumberOf([&] { Open(""); }), errInvalidStatement);
  EXPECT_EQ(ErrorNumberOf([&] { Exec("SELECT 1"); }), 3065);
  Exec("INSERT INTO T_MsgOrderDokument (stUId) VALUES ('dup')");
  try {
    Exec("INSERT INTO T_MsgOrderDokument (stUId) VALUES ('dup')");
    FAIL() << "duplicate accepted";
  } catch (const Error& e) {
    EXPECT_EQ(e.Number(), errDuplicateValue);
    EXPECT_NE(e.Description().find("UNIQUE"), std::string::npos) << e.Description();
  }
}

TEST_F(SqliteEngine, OneStatementPerCallNothingExecuted) {
  InsertDocs(1);
  EXPECT_EQ(ErrorNumberOf([&] {
              Open(
                  "SELECT * FROM T_MsgOrderDokument WHERE stPfad = 'x'; DELETE FROM "
                  "T_MsgOrderDokument; --'");
            }),
            errInvalidStatement);
  EXPECT_EQ(Open("SELECT * FROM T_MsgOrderDokument")->RecordCount(), 1);
  EXPECT_EQ(Exec("DELETE T_MsgOrderDokument.* FROM T_MsgOrderDokument WHERE "
                 "T_MsgOrderDokument.lMsgId = 1;"),
            1);
}

TEST_F(SqliteEngine, DatesCompareAsDatesThroughBothLiteralForms) {
  Exec("INSERT INTO T_Meldung (stUId, MeldeDatum) VALUES ('a', '09.11.2026')");
  Exec("INSERT INTO T_Meldung (stUId, MeldeDatum) VALUES ('b', '10.12.2026')");
  // as text '10.12.2026' < '11.11.2026'; as dates it is later
  EXPECT_EQ(
      Open("SELECT * FROM T_Meldung WHERE T_Meldung.MeldeDatum >= '11.11.2026'")->RecordCount(), 1);
  EXPECT_EQ(Open("SELECT * FROM T_Meldung WHERE T_Meldung.MeldeDatum >= #2026-11-11 00:00:00#")
                ->RecordCount(),
            1);
}

TEST_F(SqliteEngine, TableDefsAppendAddsARequiredColumnWithDefault) {
  detail::TableDefs tables(db);
  EXPECT_EQ(tables.Item("T_Nirgends"), nullptr);
  auto table = tables.Item("t_auftrag");
  ASSERT_NE(table, nullptr);
  EXPECT_EQ(table->Name(), "T_Auftrag");
  auto fields = table->GetFields();
  EXPECT_EQ(ErrorNumberOf([&] { fields.Item("byNeu"); }), errItemNotFound);
  Exec("INSERT INTO T_Auftrag (stUId) VALUES ('old')");
  auto field = table->CreateField("byNeu", detail::dbByte);
  field.DefaultValue(Variant(int32_t{0}));
  field.Required(true);
  fields.Append(field);
  EXPECT_EQ(fields.Item("BYNEU").declared_type, "TINYINT");
  EXPECT_EQ(Open("SELECT byNeu FROM T_Auftrag")->Fields("byNeu").ToByte(), 0);
  EXPECT_NE(ErrorNumberOf([&] { Exec("INSERT INTO T_Auftrag (stUId, byNeu) VALUES ('n', NULL)"); }),
            0);
}

TEST(SqliteOpen, AccessAndForeignFilesAreRefusedWithAClearError) {
  ztktest::TempDb temp(false);
  {
    std::ofstream out(temp.Path(), std::ios::binary);
    out << std::string("\0\1\0\0", 4) << "Standard Jet DB" << std::string(2000, '\0');
  }
  try {
    SqliteDatabase::Open(temp.Path(), false, false);
    FAIL();
  } catch (const Error& e) {
    EXPECT_EQ(e.Number(), errCannotOpenFile);
    EXPECT_NE(e.Description().find("Microsoft Access"), std::string::npos);
  }
  {
    std::ofstream out(temp.Path(), std::ios::binary | std::ios::trunc);
    out << std::string(4096, 'x');
  }
  EXPECT_EQ(ErrorNumberOf([&] { SqliteDatabase::Open(temp.Path(), false, false); }),
            errCannotOpenFile);
}

TEST(SqliteOpen, ExclusiveLocksOutOtherConnections) {
  ztktest::TempDb temp;
  auto owner = SqliteDatabase::Open(temp.Path(), true, false);
  EXPECT_EQ(ErrorNumberOf([&] { SqliteDatabase::Open(temp.Path(), true, false); }),
            errCannotOpenFile);
  owner->Close();
  EXPECT_NO_THROW(SqliteDatabase::Open(temp.Path(), true, false));
}

TEST(SqliteOpen, CreateRefusesAnExistingFile) {
  ztktest::TempDb temp;
  EXPECT_EQ(ErrorNumberOf([&] { detail::CreateModuleDatabase(temp.Path()); }), 3204);
  auto db = SqliteDatabase::Open(temp.Path(), false, true);
  EXPECT_EQ(db->TableNames().size(), 6u);
}

TEST(SqliteOpen, ClosedDatabaseRaises3420) {
  ztktest::TempDb temp;
  auto db = SqliteDatabase::Open(temp.Path(), false, false);
  db->Close();
  EXPECT_EQ(ErrorNumberOf([&] { db->Query("SELECT 1"); }), 3420);
}
