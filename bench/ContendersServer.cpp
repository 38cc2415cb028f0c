// The server contenders: ODBC's C API, prepared or literal, and SOCI on
// its native PostgreSQL backend.
#include <benchmark/benchmark.h>
#include <soci/odbc/soci-odbc.h>
#include <soci/postgresql/soci-postgresql.h>
#include <soci/soci.h>
#include <sql.h>
#include <sqlext.h>

#include <cstdio>
#include <cstdlib>
#include <map>

#include "Contenders.h"
#include "engine/odbc/Utf16.h"

namespace bench {
namespace {

using ZTkDb::detail::LiftedValue;

[[noreturn]] void Die(SQLSMALLINT type, SQLHANDLE h, const char* what) {
  SQLCHAR state[6] = {}, text[512] = {};
  SQLINTEGER native = 0;
  SQLSMALLINT length = 0;
  SQLGetDiagRec(type, h, 1, state, &native, text, sizeof text, &length);
  std::fprintf(stderr, "raw odbc: %s: [%s] %s\n", what, state, text);
  std::abort();
}

class RawOdbcContender final : public Contender {
 public:
  RawOdbcContender(const std::string& connect, bool literal) : literal_(literal) {
    SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &env_);
    SQLSetEnvAttr(env_, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
    SQLAllocHandle(SQL_HANDLE_DBC, env_, &dbc_);
    auto wide = ZTkDb::detail::ToUtf16(connect);
    if (!SQL_SUCCEEDED(SQLDriverConnectW(dbc_, nullptr, wide.data(),
                                         static_cast<SQLSMALLINT>(wide.size()), nullptr, 0, nullptr,
                                         SQL_DRIVER_NOPROMPT))) {
      Die(SQL_HANDLE_DBC, dbc_, "connect");
    }
  }
  ~RawOdbcContender() override {
    for (SQLHANDLE s : statements_) {
      if (s) SQLFreeHandle(SQL_HANDLE_STMT, s);
    }
    SQLDisconnect(dbc_);
    SQLFreeHandle(SQL_HANDLE_DBC, dbc_);
    SQLFreeHandle(SQL_HANDLE_ENV, env_);
  }

  size_t Add(const std::string& shape, const Values&) override {
    shapes_.push_back(shape);
    SQLHANDLE s = SQL_NULL_HANDLE;
    if (!literal_) {
      SQLAllocHandle(SQL_HANDLE_STMT, dbc_, &s);
      auto wide = ZTkDb::detail::ToUtf16(shape);
      if (!SQL_SUCCEEDED(SQLPrepareW(s, wide.data(), static_cast<SQLINTEGER>(wide.size())))) {
        Die(SQL_HANDLE_STMT, s, "prepare");
      }
    }
    statements_.push_back(s);
    return shapes_.size() - 1;
  }

  int64_t Run(size_t which, const Values& values) override {
    SQLHANDLE s = statements_[which];
    SQLRETURN rc;
    if (literal_) {
      SQLAllocHandle(SQL_HANDLE_STMT, dbc_, &s);
      auto wide = ZTkDb::detail::ToUtf16(LiteralText(shapes_[which], values));
      rc = SQLExecDirectW(s, wide.data(), static_cast<SQLINTEGER>(wide.size()));
    } else {
      std::vector<std::basic_string<SQLWCHAR>> texts;
      std::vector<SQLBIGINT> integers;
      std::vector<double> numbers;
      std::vector<SQLLEN> lengths;
      texts.reserve(values.size());
      integers.reserve(values.size());
      numbers.reserve(values.size());
      lengths.reserve(values.size());
      SQLUSMALLINT k = 1;
      for (const LiftedValue& v : values) {
        if (v.kind == LiftedValue::kInteger) {
          integers.push_back(v.integer);
          SQLBindParameter(s, k++, SQL_PARAM_INPUT, SQL_C_SBIGINT, SQL_INTEGER, 0, 0,
                           &integers.back(), 0, nullptr);
        } else if (v.kind == LiftedValue::kDouble) {
          numbers.push_back(v.number);
          SQLBindParameter(s, k++, SQL_PARAM_INPUT, SQL_C_DOUBLE, SQL_DOUBLE, 0, 0, &numbers.back(),
                           0, nullptr);
        } else {
          texts.push_back(ZTkDb::detail::ToUtf16(v.text));
          lengths.push_back(static_cast<SQLLEN>(texts.back().size() * sizeof(SQLWCHAR)));
          SQLBindParameter(s, k++, SQL_PARAM_INPUT, SQL_C_WCHAR, SQL_WVARCHAR,
                           std::max<size_t>(texts.back().size(), 1), 0, texts.back().data(),
                           lengths.back(), &lengths.back());
        }
      }
      rc = SQLExecute(s);
    }
    if (!SQL_SUCCEEDED(rc) && rc != SQL_NO_DATA) Die(SQL_HANDLE_STMT, s, "execute");
    const int64_t rows = ReadAll(s);
    if (literal_)
      SQLFreeHandle(SQL_HANDLE_STMT, s);
    else
      SQLFreeStmt(s, SQL_CLOSE);
    return rows;
  }

 private:
  // Every column fetched with SQLGetData into its C type, text as UTF-16
  // the way the Unicode driver delivers it.
  int64_t ReadAll(SQLHANDLE s) {
    SQLSMALLINT columns = 0;
    SQLNumResultCols(s, &columns);
    if (columns == 0) {
      SQLLEN affected = 0;
      SQLRowCount(s, &affected);
      return affected;
    }
    std::vector<SQLSMALLINT> types(static_cast<size_t>(columns));
    for (SQLUSMALLINT c = 1; c <= columns; ++c) {
      SQLSMALLINT nameLength = 0, digits = 0, nullable = 0;
      SQLULEN size = 0;
      SQLWCHAR name[256];
      SQLDescribeColW(s, c, name, 256, &nameLength, &types[c - 1], &size, &digits, &nullable);
    }
    int64_t rows = 0;
    SQLWCHAR buffer[2048];
    while (SQL_SUCCEEDED(SQLFetch(s))) {
      for (SQLUSMALLINT c = 1; c <= columns; ++c) {
        SQLLEN indicator = 0;
        switch (types[c - 1]) {
          case SQL_INTEGER:
          case SQL_SMALLINT:
          case SQL_BIGINT: {
            SQLBIGINT v = 0;
            SQLGetData(s, c, SQL_C_SBIGINT, &v, sizeof v, &indicator);
            benchmark::DoNotOptimize(v);
            break;
          }
          case SQL_DOUBLE:
          case SQL_FLOAT: {
            double v = 0;
            SQLGetData(s, c, SQL_C_DOUBLE, &v, sizeof v, &indicator);
            benchmark::DoNotOptimize(v);
            break;
          }
          case SQL_TYPE_TIMESTAMP: {
            SQL_TIMESTAMP_STRUCT v{};
            SQLGetData(s, c, SQL_C_TYPE_TIMESTAMP, &v, sizeof v, &indicator);
            benchmark::DoNotOptimize(v);
            break;
          }
          default: {
            SQLRETURN r;
            text_.clear();
            while (SQL_SUCCEEDED(
                r = SQLGetData(s, c, SQL_C_WCHAR, buffer, sizeof buffer, &indicator))) {
              if (indicator == SQL_NULL_DATA) break;
              const size_t units =
                  indicator == SQL_NO_TOTAL || indicator > static_cast<SQLLEN>(sizeof buffer) - 2
                      ? sizeof buffer / 2 - 1
                      : static_cast<size_t>(indicator) / 2;
              text_.append(reinterpret_cast<const char16_t*>(buffer), units);
              if (r == SQL_SUCCESS) break;
            }
            benchmark::DoNotOptimize(text_.data());
          }
        }
      }
      ++rows;
    }
    return rows;
  }

  bool literal_;
  SQLHANDLE env_ = SQL_NULL_HANDLE;
  SQLHANDLE dbc_ = SQL_NULL_HANDLE;
  std::vector<std::string> shapes_;
  std::vector<SQLHANDLE> statements_;
  std::u16string text_;
};

// "Key=value;..." of an ODBC connection string, keys in lower case.
std::map<std::string, std::string> Keys(const std::string& connect) {
  std::map<std::string, std::string> out;
  size_t at = 0;
  while (at < connect.size()) {
    const size_t end = connect.find(';', at);
    const std::string part =
        connect.substr(at, end == std::string::npos ? std::string::npos : end - at);
    const size_t eq = part.find('=');
    if (eq != std::string::npos) {
      std::string key = part.substr(0, eq);
      for (char& c : key) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
      out[key] = part.substr(eq + 1);
    }
    if (end == std::string::npos) break;
    at = end + 1;
  }
  return out;
}

class SociContender final : public Contender {
 public:
  SociContender(const std::string& connect, bool native) {
    if (!native) {
      session_.open(soci::odbc, connect);
      return;
    }
    auto k = Keys(connect);
    session_.open(soci::postgresql, "host=" + k["servername"] + " port=" + k["port"] +
                                        " user=" + k["username"] + " dbname=" + k["database"]);
  }

  size_t Add(const std::string& shape, const Values& sample) override {
    auto p = std::make_unique<Prepared>();
    // SOCI names its markers.
    std::string text;
    int n = 0;
    for (char c : shape) {
      if (c == '?')
        text += ":p" + std::to_string(++n);
      else
        text += c;
    }
    p->query = shape.rfind("SELECT", 0) == 0;
    p->integers.resize(sample.size());
    p->numbers.resize(sample.size());
    p->texts.resize(sample.size());
    p->st = std::make_unique<soci::statement>(session_);
    if (p->query) p->st->exchange(soci::into(p->row));
    for (size_t i = 0; i < sample.size(); ++i) {
      if (sample[i].kind == LiftedValue::kInteger)
        p->st->exchange(soci::use(p->integers[i]));
      else if (sample[i].kind == LiftedValue::kDouble)
        p->st->exchange(soci::use(p->numbers[i]));
      else
        p->st->exchange(soci::use(p->texts[i]));
    }
    p->st->alloc();
    p->st->prepare(text);
    p->st->define_and_bind();
    prepared_.push_back(std::move(p));
    return prepared_.size() - 1;
  }

  int64_t Run(size_t which, const Values& values) override {
    Prepared& p = *prepared_[which];
    for (size_t i = 0; i < values.size(); ++i) {
      if (values[i].kind == LiftedValue::kInteger)
        p.integers[i] = values[i].integer;
      else if (values[i].kind == LiftedValue::kDouble)
        p.numbers[i] = values[i].number;
      else
        p.texts[i] = values[i].text;
    }
    if (!p.query) {
      p.st->execute(true);
      return p.st->get_affected_rows();
    }
    int64_t rows = 0;
    for (bool got = p.st->execute(true); got; got = p.st->fetch()) {
      int64_t sum = 0;
      for (size_t i = 0; i < p.row.size(); ++i) {
        if (p.row.get_indicator(i) == soci::i_null) continue;
        switch (p.row.get_properties(i).get_data_type()) {
          case soci::dt_string:
            text_ = p.row.get<std::string>(i);
            sum += static_cast<int64_t>(text_.size());
            break;
          case soci::dt_double: sum += static_cast<int64_t>(p.row.get<double>(i)); break;
          case soci::dt_integer: sum += p.row.get<int>(i); break;
          case soci::dt_long_long: sum += p.row.get<long long>(i); break;
          case soci::dt_date: sum += p.row.get<std::tm>(i).tm_mday; break;
          default: break;
        }
      }
      benchmark::DoNotOptimize(sum);
      ++rows;
    }
    return rows;
  }

 private:
  struct Prepared {
    std::unique_ptr<soci::statement> st;
    soci::row row;
    bool query = false;
    std::vector<long long> integers;
    std::vector<double> numbers;
    std::vector<std::string> texts;
  };
  soci::session session_;
  std::vector<std::unique_ptr<Prepared>> prepared_;
  std::string text_;
};

}  // namespace

std::unique_ptr<Contender> RawOdbc(const std::string& connect, bool literal) {
  return std::make_unique<RawOdbcContender>(connect, literal);
}

std::unique_ptr<Contender> Soci(const std::string& connect, bool native) {
  return std::make_unique<SociContender>(connect, native);
}

}  // namespace bench
