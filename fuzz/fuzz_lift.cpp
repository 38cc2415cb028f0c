// Lifted literals against the literal text, on SQLite itself: for any text
// SQLite prepares as a read-only statement, its shape with the values bound
// must prepare too and give the same columns (names included) and the same
// rows, value for value and type for type.
#include <sqlite3.h>

#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "engine/LiteralLifting.h"
#include "engine/dialect/ServerDialect.h"

using namespace ZTkDb::detail;

namespace {

sqlite3* Db() {
  static sqlite3* db = [] {
    sqlite3* d = nullptr;
    sqlite3_open(":memory:", &d);
    sqlite3_exec(d,
                 "CREATE TABLE T_Auftrag (lId INTEGER PRIMARY KEY, stOrt TEXT, curKosten CURRENCY, "
                 "AuftragsDatum DATETIME, bErledigt BIT);"
                 "INSERT INTO T_Auftrag VALUES (1, 'Ulm', 12.5, '2026-11-15 00:00:00', -1),"
                 "(2, '5', 0, '1899-12-30 00:00:00', 0), (3, NULL, -3, NULL, 0),"
                 "(4, 'a''b', 1e3, '9999-12-31 00:00:00', -1), (5, '1.50', 0.1, '1.5', 0);",
                 nullptr, nullptr, nullptr);
    // Nothing a statement does may outlast it.
    sqlite3_exec(d, "PRAGMA query_only=1", nullptr, nullptr, nullptr);
    return d;
  }();
  return db;
}

sqlite3_stmt* Prepare(const std::string& sql) {
  sqlite3_stmt* s = nullptr;
  const char* tail = nullptr;
  if (sqlite3_prepare_v2(Db(), sql.c_str(), static_cast<int>(sql.size()), &s, &tail) != SQLITE_OK) {
    return nullptr;
  }
  if (s && (*tail != '\0' || !sqlite3_stmt_readonly(s))) {
    sqlite3_finalize(s);
    return nullptr;
  }
  return s;
}

// One row's cells as type-tagged text: equal rows, equal strings.
std::string Row(sqlite3_stmt* s) {
  std::string out;
  for (int i = 0; i < sqlite3_column_count(s); ++i) {
    out += std::to_string(sqlite3_column_type(s, i)) + ":";
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(s, i));
    if (text) out.append(text, static_cast<size_t>(sqlite3_column_bytes(s, i)));
    out += '\x1f';
  }
  return out;
}

std::vector<std::string> Run(sqlite3_stmt* s, bool& failed) {
  std::vector<std::string> rows;
  std::string names;
  for (int i = 0; i < sqlite3_column_count(s); ++i)
    names += std::string(sqlite3_column_name(s, i)) + "|";
  rows.push_back(names);
  int rc = SQLITE_ROW;
  for (int n = 0; n < 64 && (rc = sqlite3_step(s)) == SQLITE_ROW; ++n) rows.push_back(Row(s));
  failed = rc != SQLITE_ROW && rc != SQLITE_DONE;
  if (failed) rows.push_back(sqlite3_errmsg(Db()));
  return rows;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string sql(reinterpret_cast<const char*>(data), size);
  if (sql.find('\0') != std::string::npos) return 0;
  Doubt doubt;
  const auto tokens = Tokenize(sql, SqliteDialect().Lexical(), &doubt);
  if (doubt) return 0;
  LiftingRules rules;
  rules.any_string = true;
  rules.decimal_marker = SqliteDialect().BoundDecimal();
  const auto lifted = LiftLiterals(tokens, rules);
  if (!lifted || lifted->values.empty()) return 0;
  sqlite3_stmt* literal = Prepare(sql);
  if (!literal) return 0;
  if (sqlite3_bind_parameter_count(literal) > 0) {  // markers of its own: not the library's texts
    sqlite3_finalize(literal);
    return 0;
  }
  sqlite3_stmt* shaped = Prepare(lifted->shape);
  if (!shaped) {
    std::fprintf(stderr, "shape of a valid statement does not prepare:\n%s\n%s\n%s\n", sql.c_str(),
                 lifted->shape.c_str(), sqlite3_errmsg(Db()));
    std::abort();
  }
  int k = 1;
  for (const LiftedValue& v : lifted->values) {
    if (v.kind == LiftedValue::kInteger)
      sqlite3_bind_int64(shaped, k++, v.integer);
    else
      sqlite3_bind_text(shaped, k++, v.text.data(), static_cast<int>(v.text.size()), SQLITE_STATIC);
  }
  bool literalFailed = false, shapedFailed = false;
  const auto expected = Run(literal, literalFailed);
  const auto actual = Run(shaped, shapedFailed);
  sqlite3_finalize(literal);
  sqlite3_finalize(shaped);
  if (expected != actual && !(literalFailed && shapedFailed)) {
    std::fprintf(stderr, "lifted statement reads differently:\n%s\n%s\n", sql.c_str(),
                 lifted->shape.c_str());
    for (size_t i = 0; i < std::max(expected.size(), actual.size()); ++i) {
      std::fprintf(stderr, "  %s  |  %s\n", i < expected.size() ? expected[i].c_str() : "-",
                   i < actual.size() ? actual[i].c_str() : "-");
    }
    std::abort();
  }
  return 0;
}
