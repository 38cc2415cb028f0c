// The support engineer's commands: what the database holds, and a question
// asked of it in SQL.
#include "Inspect.h"

#include "Fields.h"
#include "Text.h"
#include "connection/DbConnectionRegistry.h"
#include "connection/DbDialect.h"
#include "engine/Database.h"

namespace ztk {

namespace {

std::shared_ptr<ZTkDb::detail::Database> Opened(Session& session) {
  return ZTkDb::detail::DbConnectionRegistry::Instance()
      .Item(ZTkDb::detail::WorkspaceName(session.Client()))
      ->GetDatabase();
}

// A value for CSV: what JSON says of it, without JSON's quotes.
std::string MachineCell(const ZTkDb::Variant& v) {
  const nlohmann::ordered_json j = VariantJson(v);
  if (j.is_null()) return "";
  if (j.is_string()) return j.get<std::string>();
  return j.dump();
}

}  // namespace

void Tables(Session& session, const OutputOptions& out) {
  auto db = Opened(session);
  nlohmann::ordered_json doc = nlohmann::ordered_json::object();
  Table table({Column{_("Table")}, Column{_("Rows"), 1, true}});
  for (const auto& name : db->TableNames()) {
    ZTkDb::Recordset rs(db, "", db->Query("SELECT count(*) AS n FROM " + name));
    doc[name] = rs.Fields("n").ToLong();
    table.Add({name, std::to_string(rs.Fields("n").ToLong())});
  }
  if (out.json) return PrintJson(doc);
  table.Print(stdout, out);
}

void Query(Session& session, const std::string& sql, const OutputOptions& out) {
  auto db = Opened(session);
  ZTkDb::Recordset rs(db, sql, db->Query(sql));
  const int32_t columns = rs.FieldCount();
  std::vector<std::string> names;
  for (int32_t i = 0; i < columns; ++i) names.push_back(rs.FieldName(i));
  nlohmann::ordered_json rows = nlohmann::ordered_json::array();
  Table table(names);
  if (rs.RecordCount() > 0) {
    for (rs.MoveFirst(); !rs.Eof(); rs.MoveNext()) {
      nlohmann::ordered_json row = nlohmann::ordered_json::object();
      std::vector<std::string> cells;
      for (int32_t i = 0; i < columns; ++i) {
        const ZTkDb::Variant v = rs.Fields(i);
        cells.push_back(out.csv && !out.local ? MachineCell(v) : VariantText(v));
        row[names[static_cast<size_t>(i)]] = VariantJson(v);
      }
      rows.push_back(std::move(row));
      table.Add(std::move(cells));
    }
  }
  if (out.json) return PrintJson(rows);
  const auto hidden = table.Print(stdout, out);
  if (!out.csv) PrintCount(table.Rows(), hidden);
}

}  // namespace ztk
