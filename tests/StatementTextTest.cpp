#include <gtest/gtest.h>

#include "RecordingDatabase.h"
#include "TestSupport.h"
#include "lists/ListCursor.h"
#include "ztkdb/CMsgOrderDokument.h"
#include "ztkdb/CMsgOrderDokumentListe.h"
#include "ztkdb/CTkDb.h"
#include "ztkdb/Error.h"

using namespace ZTkDb;

namespace {

// One document row as the recording engine hands it back.
std::shared_ptr<detail::RowSet> DokumentRow(int32_t id, const std::string& uid) {
  auto rows = std::make_shared<detail::RowSet>(
      std::vector<std::string>{"lId", "stUId", "lMsgId", "lOrderId", "stPfad", "stDatei"});
  rows->BeginRow();
  rows->AppendLong(id);
  rows->AppendText(uid);
  rows->AppendLong(1);
  rows->AppendLong(2);
  rows->AppendText("p");
  rows->AppendText("f");
  rows->EndRow();
  return rows;
}

}  // namespace

TEST(DokumentStatements, ExactTextsOnBothKinds) {
  for (int16_t kind : {1, 2}) {
    SCOPED_TRACE(kind);
    ztktest::RecordingClient client("rec", kind);
    CMsgOrderDokument d;
    d.ConnectStorage("rec");
    d.CreateNew(3, 4, "C:\\O'Neil", "a'b.pdf");
    ASSERT_EQ(client.db->statements.size(), 2u);
    const std::string& insert = client.db->statements[0];
    const std::string uid = insert.substr(insert.find("VALUES ('") + 9, 31);
    EXPECT_EQ(
        insert,
        "INSERT INTO T_MsgOrderDokument (stUId, lMsgId, lOrderId, stPfad, stDatei) VALUES ('" +
            uid + "', 3, 4, 'C:\\O''Neil', 'a''b.pdf');");
    EXPECT_EQ(
        client.db->statements[1],
        "SELECT T_MsgOrderDokument.* FROM T_MsgOrderDokument WHERE T_MsgOrderDokument.stUId = '" +
            uid + "';");

    client.db->next_rows = DokumentRow(12, "OLD");
    d.ReadById(12);
    EXPECT_EQ(
        client.db->statements.back(),
        "SELECT T_MsgOrderDokument.* FROM T_MsgOrderDokument WHERE T_MsgOrderDokument.lId = 12;");
    d.Pfad("neu");
    d.Update();
    const std::string& update = client.db->statements.back();
    const std::string newUid = d.UId();
    EXPECT_EQ(update,
              "UPDATE T_MsgOrderDokument SET T_MsgOrderDokument.stUId = '" + newUid +
                  "', T_MsgOrderDokument.lMsgId = 1, T_MsgOrderDokument.lOrderId = 2, "
                  "T_MsgOrderDokument.stPfad = 'neu', T_MsgOrderDokument.stDatei = 'f' WHERE "
                  "((T_MsgOrderDokument.lId=12) AND (T_MsgOrderDokument.stUId='OLD'));");
    d.Delete();
    EXPECT_EQ(client.db->statements.back(),
              kind == 1 ? "DELETE T_MsgOrderDokument.* FROM T_MsgOrderDokument WHERE "
                          "T_MsgOrderDokument.lId = 12;"
                        : "DELETE T_MsgOrderDokument WHERE T_MsgOrderDokument.lId = 12;");
  }
}

TEST(DokumentStatements, UnknownKindDeletesWithAnEmptyStatement) {
  ztktest::RecordingClient client("rec3", 3);
  CMsgOrderDokument d;
  d.ConnectStorage("rec3");
  d.Delete();
  ASSERT_EQ(client.db->statements.size(), 1u);
  EXPECT_EQ(client.db->statements[0], "");
}

TEST(DokumentStatements, ListQueries) {
  ztktest::RecordingClient client("recl", 2);
  CMsgOrderDokumentListe list;
  list.ConnectStorage("recl");
  list.ReadAll();
  list.ReadByOrderId(0);
  list.ReadByMsgId(-5);
  EXPECT_EQ(client.db->statements,
            (std::vector<std::string>{"SELECT T_MsgOrderDokument.* FROM T_MsgOrderDokument;",
                                      "SELECT T_MsgOrderDokument.* FROM T_MsgOrderDokument WHERE "
                                      "T_MsgOrderDokument.lOrderId = 0",
                                      "SELECT T_MsgOrderDokument.* FROM T_MsgOrderDokument WHERE "
                                      "T_MsgOrderDokument.lMsgId = -5"}));
}

TEST(ListCursor, RepeatedRowIdEndsTheQueryOnTheDuplicateRow) {
  ztktest::TempDb temp;
  CTkDb tkdb;
  tkdb.OpenJetDb("dup", temp.Path(), false, false);
  for (int i = 0; i < 2; ++i) {
    CMsgOrderDokument d;
    d.ConnectStorage("dup");
    d.CreateNew(0, 1, "p", "f" + std::to_string(i));
  }
  detail::ListCursor<CMsgOrderDokument> cursor("CMsgOrderDokumentListe");
  cursor.ConnectStorage("dup");
  // Each document joined with two copies: lIds 1, 1, 2, 2.
  try {
    cursor.RunQuery("test", detail::Statement::Text(
                                "SELECT d.* FROM T_MsgOrderDokument d JOIN (SELECT 1 AS k UNION "
                                "ALL SELECT 2) ORDER BY d.lId, k"));
    FAIL() << "duplicate accepted";
  } catch (const Error& e) {
    EXPECT_EQ(e.Number(), errDuplicateKeyInCollection);
  }
  EXPECT_EQ(cursor.Count(), 4);
  EXPECT_EQ(cursor.AbsolutePosition(), 1) << "the cursor stays on the repeated row";
  auto first = cursor.ItemByRecId(1);
  ASSERT_NE(first, nullptr) << "rows before the repeat are indexed";
  EXPECT_EQ(cursor.AbsolutePosition(), 0);
  EXPECT_EQ(cursor.ItemByRecId(2), nullptr) << "rows after it are not";
}
