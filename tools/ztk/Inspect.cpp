// The support engineer's commands: what the database holds, and a question
// asked of it in SQL.
#include "Inspect.h"

#include "Fields.h"
#include "Text.h"
#include "connection/ToolAccess.h"

namespace ztk {

namespace {

std::shared_ptr<ZTkDb::tool::Database> Opened(Session& session) {
  return ZTkDb::tool::EngineOf(session.Client());
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
  // CSV keeps its names whatever the language, as JSON does.
  Table table(out.csv ? Table(std::vector<std::string>{"Table", "Rows"})
                      : Table({Column{_("Table")}, Column{_("Rows"), 1, true}}));
  // A table another program made may have any name: it is quoted as its
  // server quotes names, never read as SQL.
  for (const auto& name : db->TableNames()) {
    const int32_t rows =
        ZTkDb::tool::Results(db, "SELECT count(*) AS n FROM " + db->QuoteName(name))
            ->Fields("n")
            .ToLong();
    doc[name] = rows;
    table.Add({name, std::to_string(rows)});
  }
  if (out.json) return PrintJson(doc);
  table.Print(stdout, out);
}

void Query(Session& session, const std::string& sql, const OutputOptions& out) {
  if (sql.find_first_not_of(" \t\r\n") == std::string::npos) {
    throw UsageError(_("query needs a statement: ztk query \"SELECT …\""));
  }
  auto db = Opened(session);
  const auto result = ZTkDb::tool::Results(db, sql);
  ZTkDb::Recordset& rs = *result;
  const int32_t count = rs.FieldCount();
  std::vector<std::string> names;
  names.reserve(static_cast<size_t>(count));
  for (int32_t i = 0; i < count; ++i) names.push_back(rs.FieldName(i));
  nlohmann::ordered_json rows = nlohmann::ordered_json::array();
  std::vector<std::vector<std::string>> lines;
  // A column that holds only numbers and dates is never cut.
  std::vector<bool> whole(names.size(), true);
  if (rs.RecordCount() > 0) {
    for (rs.MoveFirst(); !rs.Eof(); rs.MoveNext()) {
      nlohmann::ordered_json row = nlohmann::ordered_json::object();
      std::vector<std::string> cells;
      for (int32_t i = 0; i < count; ++i) {
        const ZTkDb::Variant& v = rs.Fields(i);
        const auto at = static_cast<size_t>(i);
        cells.push_back(out.csv && !out.local ? MachineCell(v) : VariantText(v));
        row[names[at]] = VariantJson(v);
        const auto type = v.Type();
        if (!v.IsNull() && !v.IsEmpty() && type != ZTkDb::vtDate && type != ZTkDb::vtCurrency &&
            type != ZTkDb::vtByte && type != ZTkDb::vtInteger && type != ZTkDb::vtLong &&
            type != ZTkDb::vtDouble && type != ZTkDb::vtBoolean) {
          whole[at] = false;
        }
      }
      rows.push_back(std::move(row));
      lines.push_back(std::move(cells));
    }
  }
  std::vector<Column> columns;
  for (size_t i = 0; i < names.size(); ++i) columns.push_back(Column{names[i], 1, whole[i]});
  Table table(columns);
  for (auto& line : lines) table.Add(std::move(line));
  if (out.json) return PrintJson(rows);
  const auto hidden = table.Print(stdout, out);
  if (!out.csv) PrintCount(table.Rows(), hidden);
}

}  // namespace ztk
