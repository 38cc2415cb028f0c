#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "connection/UIdGenerator.h"
#include "records/RecordCore.h"
#include "sql/Literals.h"
#include "sql/Statement.h"

namespace ZTkDb {
class CAuftrag;
class CMeldung;
class CLeistung;
class CMaterial;
class CMsgOrderDokument;
}  // namespace ZTkDb

namespace ZTkDb::detail {

// The statements of one record class, as its hosts have always seen them.
struct RecordStatements {
  const char* class_name;
  const char* table;         // #Tabelle#
  const char* detail_table;  // #DetailTabelle#, nullptr when unused
  const char* insert;
  const char* update;
  const char* select_by_id;
  const char* select_by_uid;
  const char* delete_jet;
  const char* delete_other;
  // True: only kind 2 takes delete_other, any other kind sends an empty
  // statement. False: every kind but 1 takes delete_other.
  bool delete_needs_known_kind = false;
};

// A record class's statements, for the test that holds them against its
// column table; each class's file defines its own.
template <typename Record>
const RecordStatements& StatementsOf();
template <>
const RecordStatements& StatementsOf<CAuftrag>();
template <>
const RecordStatements& StatementsOf<CMeldung>();
template <>
const RecordStatements& StatementsOf<CLeistung>();
template <>
const RecordStatements& StatementsOf<CMaterial>();
template <>
const RecordStatements& StatementsOf<CMsgOrderDokument>();

// The texts most record classes share.
inline constexpr const char* kSelectByIdText =
    "SELECT #Tabelle#.* FROM #Tabelle# WHERE #Tabelle#.lId = #lId#";
inline constexpr const char* kSelectByUIdText =
    "SELECT #Tabelle#.* FROM #Tabelle# WHERE #Tabelle#.stUId = '#stUId#'";
inline constexpr const char* kDeleteJetText =
    "DELETE #Tabelle#.* FROM #Tabelle# WHERE #Tabelle#.lId = #lId#";
inline constexpr const char* kDeleteOtherText = "DELETE #Tabelle# WHERE #Tabelle#.lId = #lId#";

// Create, read by key, guarded update and delete of a record class, driven
// by its statements and the layout its column table gives.
template <typename Fields>
class TableRecord {
 public:
  TableRecord(const RecordStatements& statements, const RecordLayout<Fields>& layout)
      : core(statements.class_name, layout.load), statements_(statements), layout_(layout) {}

  // A template for the connection's kind with the class's table filled in.
  // The table names go in first and the joined table last, after every
  // value (see Finish): a value naming #DetailTabelle# is filled with it,
  // one naming #Tabelle# is not (the order of filling).
  Statement Begin(const char* text, StorageKind kind) const {
    Statement sql(text, kind);
    sql.Name("#Tabelle#", statements_.table);
    return sql;
  }
  Statement Begin(const char* member, const char* text) { return Begin(text, core.DbKind(member)); }
  // The last step: the joined table.
  Statement&& Finish(Statement& sql) const {
    if (statements_.detail_table) sql.Name("#DetailTabelle#", statements_.detail_table);
    return std::move(sql);
  }
  Statement&& Finish(Statement&& sql) const { return Finish(sql); }

  // Clears the record, inserts `row` under a fresh UId (a box when nothing
  // was inserted) and loads the new row back by that UId.
  void Create(const char* member, const Fields& row) {
    core.ClearFields();
    const StorageKind kind = core.DbKind(member);
    const int64_t largest = core.LargestAmount(member);
    const std::string uid = UIdGenerator::Instance().NewUId();
    Statement sql = Begin(statements_.insert, kind);
    sql.Text("#stUId#", uid);
    FillValues(sql, row, layout_.insert, largest);
    core.ExecuteChecked(member, Finish(sql), "Create");
    core.Storage(member).CloseRecordset();
    ReadByUId(uid);
  }

  void ReadById(const char* member, int32_t id) {
    core.ReadBy(member, Finish(Begin(member, statements_.select_by_id).Long("#lId#", id)));
  }

  void ReadByUId(const std::string& uid) {
    const std::string member = std::string(statements_.class_name) + ".ReadByUId";
    core.ReadBy(member.c_str(),
                Finish(Begin(member.c_str(), statements_.select_by_uid).Raw("#stUId#", uid)));
  }

  // Writes every field under the old UId; the record takes the new UId
  // whether or not a row was written, so after a failed update every further
  // Update fails too until the record is read again.
  void Update(const char* member) {
    Fields& f = core.F();
    const StorageKind kind = core.DbKind(member);
    const int64_t largest = core.LargestAmount(member);
    const std::string newUid = UIdGenerator::Instance().NewUId();
    Statement sql = Begin(statements_.update, kind);
    sql.Raw("#stNewUId#", newUid);
    FillValues(sql, f, layout_.update, largest);
    sql.Long("#lId#", f.Id).Raw("#stUId#", f.UId);
    FillValues(sql, f, layout_.after_key, largest);
    core.ExecuteChecked(member, Finish(sql), "Update");
    f.UId = newUid;
    core.Storage(member).CloseRecordset();
  }

  // Deletes the row whatever its version; then clears the record.
  void Delete(const char* member) {
    const StorageKind kind = core.DbKind(member);
    const char* text = "";
    if (kind == StorageKind::Jet)
      text = statements_.delete_jet;
    else if (kind == StorageKind::Odbc || !statements_.delete_needs_known_kind)
      text = statements_.delete_other;
    core.ExecutePlain(member, Finish(Begin(text, kind).Long("#lId#", core.F().Id)));
    core.ClearFields();
  }

  // The column LastNr of the first row of `text` (a Max(lNr) query), 0 when
  // it is Null.
  int32_t LastNumber(const char* member, Statement sql) {
    RecordStorage& storage = core.Storage(member);
    storage.SetSql("", std::move(sql));
    storage.OpenRecordset();
    Recordset& rs = *storage.GetRecordset();
    int32_t last = 0;
    if (rs.RecordCount() >= 1) {
      rs.MoveFirst();
      if (!rs.Fields("LastNr").IsNull()) last = rs.Fields("LastNr").ToLong();
    }
    storage.CloseRecordset();
    storage.ReleaseQuery();
    return last;
  }

  RecordCore<Fields> core;

 private:
  const RecordStatements& statements_;
  const RecordLayout<Fields>& layout_;
};

}  // namespace ZTkDb::detail
