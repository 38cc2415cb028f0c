// The SQLite contenders: the C API, prepared or literal, and SQLiteCpp.
#include <SQLiteCpp/SQLiteCpp.h>
#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "Contenders.h"
#include "engine/dialect/ServerDialect.h"

namespace bench {
namespace {

using ZTkDb::detail::LiftedValue;

[[noreturn]] void Die(sqlite3* db, const char* what) {
  std::fprintf(stderr, "raw sqlite: %s: %s\n", what, sqlite3_errmsg(db));
  std::abort();
}

// Every column into a value of its own, as a program using the C API would.
int64_t ReadRow(sqlite3_stmt* s, std::vector<std::string>& texts) {
  int64_t sum = 0;
  const int n = sqlite3_column_count(s);
  texts.resize(static_cast<size_t>(n));
  for (int i = 0; i < n; ++i) {
    switch (sqlite3_column_type(s, i)) {
      case SQLITE_INTEGER: sum += sqlite3_column_int64(s, i); break;
      case SQLITE_FLOAT: sum += static_cast<int64_t>(sqlite3_column_double(s, i)); break;
      case SQLITE_TEXT: {
        const auto* t = reinterpret_cast<const char*>(sqlite3_column_text(s, i));
        texts[static_cast<size_t>(i)].assign(t, static_cast<size_t>(sqlite3_column_bytes(s, i)));
        sum += static_cast<int64_t>(texts[static_cast<size_t>(i)].size());
        break;
      }
      default: break;
    }
  }
  return sum;
}

class RawSqliteContender final : public Contender {
 public:
  RawSqliteContender(const std::string& path, bool write, bool literal) : literal_(literal) {
    if (sqlite3_open_v2(
            path.c_str(), &db_,
            (write ? SQLITE_OPEN_READWRITE : SQLITE_OPEN_READONLY) | SQLITE_OPEN_NOMUTEX,
            nullptr) != SQLITE_OK) {
      Die(db_, "open");
    }
    // The settings ZTkDb's engine uses for a file it writes.
    if (write)
      sqlite3_exec(db_, "PRAGMA journal_mode=WAL; PRAGMA synchronous=NORMAL", nullptr, nullptr,
                   nullptr);
  }
  ~RawSqliteContender() override {
    for (auto* s : statements_) sqlite3_finalize(s);
    sqlite3_close(db_);
  }

  size_t Add(const std::string& shape, const Values&) override {
    shapes_.push_back(shape);
    sqlite3_stmt* s = nullptr;
    if (!literal_ && sqlite3_prepare_v3(db_, shape.c_str(), -1, SQLITE_PREPARE_PERSISTENT, &s,
                                        nullptr) != SQLITE_OK) {
      Die(db_, "prepare");
    }
    statements_.push_back(s);
    return shapes_.size() - 1;
  }

  int64_t Run(size_t which, const Values& values) override {
    sqlite3_stmt* s = statements_[which];
    if (literal_) {
      const std::string text = LiteralText(shapes_[which], values);
      if (sqlite3_prepare_v2(db_, text.c_str(), static_cast<int>(text.size()), &s, nullptr) !=
          SQLITE_OK) {
        Die(db_, "prepare");
      }
    } else {
      int k = 1;
      for (const LiftedValue& v : values) {
        if (v.kind == LiftedValue::kInteger)
          sqlite3_bind_int64(s, k++, v.integer);
        else if (v.kind == LiftedValue::kDouble)
          sqlite3_bind_double(s, k++, v.number);
        else
          sqlite3_bind_text(s, k++, v.text.data(), static_cast<int>(v.text.size()), SQLITE_STATIC);
      }
    }
    int64_t rows = 0;
    int rc;
    while ((rc = sqlite3_step(s)) == SQLITE_ROW) {
      benchmark::DoNotOptimize(ReadRow(s, texts_));
      ++rows;
    }
    if (rc != SQLITE_DONE) Die(db_, "step");
    if (sqlite3_column_count(s) == 0) rows = sqlite3_changes(db_);
    if (literal_)
      sqlite3_finalize(s);
    else
      sqlite3_reset(s);
    return rows;
  }

 private:
  bool literal_;
  sqlite3* db_ = nullptr;
  std::vector<std::string> shapes_;
  std::vector<sqlite3_stmt*> statements_;
  std::vector<std::string> texts_;
};

class SqliteCppContender final : public Contender {
 public:
  SqliteCppContender(const std::string& path, bool write)
      : db_(path, write ? SQLite::OPEN_READWRITE : SQLite::OPEN_READONLY) {
    if (write) {
      db_.exec("PRAGMA journal_mode=WAL");
      db_.exec("PRAGMA synchronous=NORMAL");
    }
  }

  size_t Add(const std::string& shape, const Values&) override {
    statements_.push_back(std::make_unique<SQLite::Statement>(db_, shape));
    return statements_.size() - 1;
  }

  int64_t Run(size_t which, const Values& values) override {
    SQLite::Statement& st = *statements_[which];
    st.reset();
    int k = 1;
    for (const LiftedValue& v : values) {
      if (v.kind == LiftedValue::kInteger)
        st.bind(k++, static_cast<int64_t>(v.integer));
      else if (v.kind == LiftedValue::kDouble)
        st.bind(k++, v.number);
      else
        st.bind(k++, v.text);
    }
    int64_t rows = 0;
    const int columns = st.getColumnCount();
    texts_.resize(static_cast<size_t>(columns));
    while (st.executeStep()) {
      int64_t sum = 0;
      for (int i = 0; i < columns; ++i) {
        const SQLite::Column c = st.getColumn(i);
        if (c.isInteger())
          sum += c.getInt64();
        else if (c.isFloat())
          sum += static_cast<int64_t>(c.getDouble());
        else if (c.isText()) {
          texts_[static_cast<size_t>(i)] = c.getString();
          sum += static_cast<int64_t>(texts_[static_cast<size_t>(i)].size());
        }
      }
      benchmark::DoNotOptimize(sum);
      ++rows;
    }
    return columns == 0 ? db_.getChanges() : rows;
  }

 private:
  SQLite::Database db_;
  std::vector<std::unique_ptr<SQLite::Statement>> statements_;
  std::vector<std::string> texts_;
};

}  // namespace

std::unique_ptr<Contender> RawSqlite(const std::string& path, bool write, bool literal) {
  return std::make_unique<RawSqliteContender>(path, write, literal);
}

std::unique_ptr<Contender> SqliteCpp(const std::string& path, bool write) {
  return std::make_unique<SqliteCppContender>(path, write);
}

ZTkDb::detail::LiftedStatement Shape(const std::string& sent, bool server) {
  using namespace ZTkDb::detail;
  LiftingRules rules;
  // The bench's texts hold strings beside text and date columns only: on a
  // server each is bound as text and the server converts.
  rules.any_string = true;
  // An amount, as a host program binds it: a double.
  constexpr std::string_view kDecimal = "?/*decimal*/";
  rules.decimal_marker = kDecimal.data();
  const Lexicon& lexicon = server ? PostgresDialect().Lexical() : SqliteDialect().Lexical();
  auto lifted = LiftLiterals(Tokenize(sent, lexicon), rules);
  if (!lifted) {
    std::fprintf(stderr, "bench: no shape for %s\n", sent.c_str());
    std::abort();
  }
  size_t value = 0;
  for (size_t at = lifted->shape.find('?'); at != std::string::npos;
       at = lifted->shape.find('?', at + 1)) {
    if (lifted->shape.compare(at, kDecimal.size(), kDecimal) == 0) {
      LiftedValue& v = lifted->values[value];
      v.kind = LiftedValue::kDouble;
      v.number = std::strtod(v.text.c_str(), nullptr);
      lifted->shape.erase(at + 1, kDecimal.size() - 1);
    }
    ++value;
  }
  return *lifted;
}

std::string LiteralText(const std::string& shape, const Values& values) {
  std::string out;
  size_t next = 0;
  for (char c : shape) {
    if (c != '?') {
      out += c;
      continue;
    }
    const LiftedValue& v = values[next++];
    if (v.kind == LiftedValue::kInteger) {
      out += std::to_string(v.integer);
      continue;
    }
    if (v.kind == LiftedValue::kDouble) {
      out += v.text;
      continue;
    }
    out += '\'';
    for (char t : v.text) {
      if (t == '\'') out += '\'';
      out += t;
    }
    out += '\'';
  }
  return out;
}

}  // namespace bench
