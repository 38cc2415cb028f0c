// Each record class's column table against what must agree with it but is
// written apart: its INSERT and UPDATE texts and the three schemas.
#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "RecordingDatabase.h"
#include "records/RecordColumns.h"
#include "records/TableRecord.h"
#include "ztkdb/ZTkDb.h"

namespace {

using ZTkDb::detail::RecordStatements;
using ZTkDb::detail::StatementsOf;
using Pairs = std::map<std::string, std::string>;  // column -> placeholder

struct Line {
  std::string column, placeholder;
  int insert, update;
  bool linked;  // read from a joined table, not a column of the class's own
};

#define ZTKTEST_LINE(Property, Type, column, placeholder, load, insert, update, access) \
  {#column, "#" #placeholder "#", insert, update, NullRule::load == NullRule::kOptional},

struct Table {
  const char* name;
  const RecordStatements& statements;
  std::vector<Line> lines;
};

std::vector<Table> Tables() {
  using ZTkDb::detail::kLast;
  using ZTkDb::detail::NullRule;
  return {
      {"CAuftrag", StatementsOf<ZTkDb::CAuftrag>(), {ZTKDB_AUFTRAG_COLUMNS(ZTKTEST_LINE)}},
      {"CMeldung", StatementsOf<ZTkDb::CMeldung>(), {ZTKDB_MELDUNG_COLUMNS(ZTKTEST_LINE)}},
      {"CLeistung", StatementsOf<ZTkDb::CLeistung>(), {ZTKDB_LEISTUNG_COLUMNS(ZTKTEST_LINE)}},
      {"CMaterial", StatementsOf<ZTkDb::CMaterial>(), {ZTKDB_MATERIAL_COLUMNS(ZTKTEST_LINE)}},
      {"CMsgOrderDokument",
       StatementsOf<ZTkDb::CMsgOrderDokument>(),
       {ZTKDB_DOKUMENT_COLUMNS(ZTKTEST_LINE)}},
  };
}

std::string Trim(std::string s) {
  const auto first = s.find_first_not_of(" '");
  const auto last = s.find_last_not_of(" '");
  return first == std::string::npos ? "" : s.substr(first, last - first + 1);
}

std::vector<std::string> Split(const std::string& s) {
  std::vector<std::string> parts;
  std::stringstream in(s);
  for (std::string part; std::getline(in, part, ',');) parts.push_back(Trim(part));
  return parts;
}

std::string Between(const std::string& s, const std::string& from, const std::string& to,
                    size_t start = 0) {
  const size_t a = s.find(from, start);
  const size_t b = s.find(to, a + from.size());
  if (a == std::string::npos || b == std::string::npos) return "";
  return s.substr(a + from.size(), b - a - from.size());
}

// Column and placeholder pairs of "INSERT INTO #Tabelle# (a, b) VALUES (#a#, '#b#')".
Pairs InsertPairs(const std::string& text) {
  const auto columns = Split(Between(text, "#Tabelle# (", ")"));
  const std::string values = text.substr(text.find("VALUES"));
  const auto placeholders =
      Split(values.substr(values.find('(') + 1, values.rfind(')') - values.find('(') - 1));
  EXPECT_EQ(columns.size(), placeholders.size()) << text;
  Pairs pairs;
  for (size_t i = 0; i < columns.size() && i < placeholders.size(); ++i)
    pairs[columns[i]] = placeholders[i];
  return pairs;
}

// The pairs of "UPDATE #Tabelle# SET #Tabelle#.a = #a#, … WHERE …".
Pairs UpdatePairs(const std::string& text) {
  Pairs pairs;
  for (const auto& item : Split(Between(text, " SET ", " WHERE "))) {
    const size_t eq = item.find('=');
    std::string column = Trim(item.substr(0, eq));
    column.erase(0, std::string("#Tabelle#.").size());
    pairs[column] = Trim(item.substr(eq + 1));
  }
  return pairs;
}

TEST(ColumnTables, TheWritingTemplatesCarryExactlyTheTablesColumns) {
  for (const Table& t : Tables()) {
    Pairs inserted{{"stUId", "#stUId#"}}, updated{{"stUId", "#stNewUId#"}};
    std::set<int> insertPlaces, updatePlaces;
    for (const Line& c : t.lines) {
      if (c.insert > 0) {
        inserted[c.column] = c.placeholder;
        EXPECT_TRUE(insertPlaces.insert(c.insert).second) << t.name << " " << c.column;
      }
      if (c.update > 0) {
        updated[c.column] = c.placeholder;
        EXPECT_TRUE(updatePlaces.insert(c.update).second) << t.name << " " << c.column;
      }
    }
    EXPECT_EQ(InsertPairs(t.statements.insert), inserted) << t.name;
    EXPECT_EQ(UpdatePairs(t.statements.update), updated) << t.name;
    const std::string where = t.statements.update;
    EXPECT_NE(where.find("#Tabelle#.lId=#lId#) AND (#Tabelle#.stUId='#stUId#'"), std::string::npos)
        << t.name;
  }
}

// The columns of each CREATE TABLE in a schema file.
std::map<std::string, std::set<std::string>> SchemaColumns(const std::string& file) {
  std::ifstream in(std::string(ZTKDB_SOURCE_DIR) + "/schema/" + file);
  EXPECT_TRUE(in) << file;
  std::map<std::string, std::set<std::string>> tables;
  const std::regex create(R"(^CREATE TABLE `?(\w+)`? \()"), column(R"(^\s+`?(\w+)`?\s)");
  std::string table, line;
  std::smatch m;
  while (std::getline(in, line)) {
    if (std::regex_search(line, m, create))
      table = m[1];
    else if (line.rfind(")", 0) == 0)
      table.clear();
    else if (!table.empty() && std::regex_search(line, m, column)) {
      const std::string name = m[1];
      if (name != "PRIMARY" && name != "UNIQUE" && name != "KEY" && name != "INDEX")
        tables[table].insert(name);
    }
  }
  return tables;
}

TEST(ColumnTables, EverySchemaHasTheTablesColumnsAndNoOthers) {
  for (const char* file : {"sqlite.sql", "postgresql.sql", "mariadb.sql"}) {
    auto schema = SchemaColumns(file);
    for (const Table& t : Tables()) {
      std::set<std::string> expected;
      for (const Line& c : t.lines)
        if (!c.linked) expected.insert(c.column);
      EXPECT_EQ(schema[t.statements.table], expected) << file << " " << t.statements.table;
    }
  }
}

// Placeholders are filled one after another, so a value naming a later
// placeholder is filled again and one naming an earlier one stays as typed:
// the filling order is what the tables' insert and update places decide.
TEST(ColumnTables, AValueNamingALaterPlaceholderIsFilledAgain) {
  ztktest::RecordingClient client("order", 2);
  const auto& sent = client.db->statements;
  auto has = [&](const std::string& part) {
    return sent.back().find(part) != std::string::npos
               ? ::testing::AssertionSuccess()
               : ::testing::AssertionFailure() << sent.back();
  };

  ZTkDb::CLeistung booking;
  booking.ConnectStorage("order");
  booking.Auftragnehmer("A");
  booking.Ansprech("#stAuftragnehmer#");  // the contractor was filled before
  booking.Kostenart("#stKST#");           // the cost centre comes after
  booking.Kostenstelle("K");
  booking.Update();
  EXPECT_TRUE(has("T_Leistung.stKostenart = 'K',"));
  EXPECT_TRUE(has("T_Leistung.stAnsprech = '#stAuftragnehmer#',"));

  ZTkDb::CMeldung report;
  report.ConnectStorage("order");
  report.Objekt("O");
  report.Ort("#stObjekt#");  // loads after the e-mail, fills before the object
  report.Email("#stOrt#");
  report.Update();
  EXPECT_TRUE(has("T_Meldung.stOrt='O'"));
  EXPECT_TRUE(has("T_Meldung.stEmail='#stOrt#'"));

  // The unit comes before the recipient in the INSERT, after it in the
  // UPDATE; the flag is filled last.
  ZTkDb::CMaterial material;
  material.ConnectStorage("order");
  material.CreateNew3(1, "#bFremdleistung#", "#lId#", 1, {}, 1, 0, "", "", "Stk", "#stEinheit#",
                      true);
  const std::string insert = sent[sent.size() - 2];
  EXPECT_NE(insert.find("'#stEinheit#'"), std::string::npos) << insert;
  EXPECT_NE(insert.find("1, '1', '#lId#',"), std::string::npos) << insert;
  material.RechnEmpf("#stEinheit#");
  material.MatKlasse("#bFremdleistung#");
  material.Fremdleistung(true);
  material.Update();
  EXPECT_TRUE(has("T_AMaterial.stRechnEmpf = '',"));
  EXPECT_TRUE(has("T_AMaterial.stMatKlasse = '1',"));
}

}  // namespace
