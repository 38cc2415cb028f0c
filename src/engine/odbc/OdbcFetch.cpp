// Reading result cells from ODBC into a RowSet.
#include "engine/odbc/OdbcFetch.h"

#include <cctype>

#include "engine/RowSet.h"
#include "engine/odbc/OdbcError.h"
#include "engine/odbc/Utf16.h"
#include "runtime/Numbers.h"
#include "runtime/Raise.h"
#include "ztkdb/Currency.h"
#include "ztkdb/Date.h"

namespace ZTkDb::detail {
namespace {

bool TypeNameSays(const std::string& typeName, const char* word) {
  return LowerAscii(typeName).find(word) != std::string::npos;
}

// Exact decimal text ("-12.5000", "3") to a currency scaled by 10,000.
bool ParseScaled(const std::string& text, int64_t& out) {
  size_t i = 0;
  while (i < text.size() && std::isspace(static_cast<unsigned char>(text[i]))) ++i;
  bool negative = false;
  if (i < text.size() && (text[i] == '-' || text[i] == '+')) negative = text[i++] == '-';
  int64_t whole = 0;
  int64_t fraction = 0;
  int fractionDigits = 0;
  bool any = false;
  for (; i < text.size() && std::isdigit(static_cast<unsigned char>(text[i])); ++i, any = true) {
    if (whole > 922337203685477) return false;
    whole = whole * 10 + (text[i] - '0');
  }
  if (i < text.size() && text[i] == '.') {
    for (++i; i < text.size() && std::isdigit(static_cast<unsigned char>(text[i]));
         ++i, any = true) {
      if (fractionDigits < 4) {
        fraction = fraction * 10 + (text[i] - '0');
        ++fractionDigits;
      } else if (text[i] != '0') {
        return false;  // more than four decimals: not a currency value
      }
    }
  }
  if (!any || i != text.size()) return false;
  while (fractionDigits++ < 4) fraction *= 10;
  // Beyond the currency range the caller's general path raises overflow.
  constexpr int64_t kMaxWhole = INT64_MAX / 10000;
  if (whole > kMaxWhole ||
      (whole == kMaxWhole && fraction > INT64_MAX % 10000 + (negative ? 1 : 0))) {
    return false;
  }
  // The most negative amount has no positive counterpart: built downwards.
  out = negative ? -(whole * 10000) - fraction : whole * 10000 + fraction;
  return true;
}

}  // namespace

Fetch FetchFor(SQLSMALLINT type, SQLSMALLINT digits, const std::string& typeName) {
  // Drivers of file databases report declared type names the SQL type does
  // not tell apart (SQLite's CURRENCY, DATETIME).
  if (TypeNameSays(typeName, "currency") || TypeNameSays(typeName, "money"))
    return Fetch::kCurrency;
  switch (type) {
    case SQL_BIT: return Fetch::kBool;
    case SQL_TINYINT: return Fetch::kByte;
    case SQL_SMALLINT: return Fetch::kShort;
    case SQL_INTEGER: return Fetch::kLong;
    case SQL_BIGINT: return Fetch::kBigint;
    case SQL_REAL:
    case SQL_FLOAT:
    case SQL_DOUBLE: return Fetch::kDouble;
    case SQL_NUMERIC:
    case SQL_DECIMAL: return digits <= 4 ? Fetch::kCurrency : Fetch::kDouble;
    case SQL_TYPE_DATE:
    case SQL_TYPE_TIMESTAMP:
    case SQL_DATE:
    case SQL_TIMESTAMP: return Fetch::kDate;
    default: break;
  }
  if (TypeNameSays(typeName, "date") || TypeNameSays(typeName, "time")) return Fetch::kDate;
  if (TypeNameSays(typeName, "bit") || TypeNameSays(typeName, "bool")) return Fetch::kBool;
  return Fetch::kText;
}

// The whole of a text column, fetched in pieces into `out`: UTF-16 from a
// Unicode driver, UTF-8 bytes from an ANSI driver (`narrow`). False for Null.
// The buffers live on: a result fetches thousands of texts.
bool FetchText(SQLHSTMT stmt, SQLUSMALLINT column, bool narrow, std::string& out) {
  thread_local std::vector<SQLWCHAR> wideBuffer(2048);
  thread_local std::vector<SQLWCHAR> pieces;
  out.clear();
  pieces.clear();
  const SQLSMALLINT cType = narrow ? SQL_C_CHAR : SQL_C_WCHAR;
  const size_t unit = narrow ? 1 : sizeof(SQLWCHAR);
  const size_t bytes = wideBuffer.size() * sizeof(SQLWCHAR);
  const size_t capacity = bytes / unit - 1;
  for (;;) {
    SQLLEN indicator = 0;
    const SQLRETURN rc =
        SQLGetData(stmt, column, cType, wideBuffer.data(), static_cast<SQLLEN>(bytes), &indicator);
    if (rc == SQL_NO_DATA) break;
    if (!Succeeded(rc)) RaiseOdbc(SQL_HANDLE_STMT, stmt, "SQLGetData");
    if (indicator == SQL_NULL_DATA) return false;
    const size_t available = indicator == SQL_NO_TOTAL || indicator < 0
                                 ? capacity
                                 : static_cast<size_t>(indicator) / unit;
    const size_t take = std::min(available, capacity);
    if (narrow) {
      out.append(reinterpret_cast<const char*>(wideBuffer.data()), take);
    } else if (rc == SQL_SUCCESS && pieces.empty()) {
      AppendUtf8(out, wideBuffer.data(), take);  // the usual single piece
    } else {
      // Pieces are joined first, so that no surrogate pair is cut.
      pieces.insert(pieces.end(), wideBuffer.begin(), wideBuffer.begin() + static_cast<long>(take));
    }
    if (rc == SQL_SUCCESS) break;  // the last piece
  }
  if (!pieces.empty()) AppendUtf8(out, pieces.data(), pieces.size());
  return true;
}

void AppendInteger(RowSet& rows, Fetch fetch, int64_t v) {
  switch (fetch) {
    case Fetch::kBool: return rows.AppendBool(v != 0);
    case Fetch::kByte:
      if (v >= 0 && v <= 255) return rows.AppendByte(static_cast<uint8_t>(v));
      [[fallthrough]];
    case Fetch::kShort:
      if (v >= INT16_MIN && v <= INT16_MAX) return rows.AppendInteger(static_cast<int16_t>(v));
      [[fallthrough]];
    default:
      if (v >= INT32_MIN && v <= INT32_MAX) return rows.AppendLong(static_cast<int32_t>(v));
      return rows.AppendDouble(static_cast<double>(v));
  }
}

void AppendCurrencyText(RowSet& rows, const std::string& text) {
  int64_t scaled = 0;
  if (ParseScaled(text, scaled)) return rows.AppendCurrency(scaled);
  double d = 0;
  // Beyond the currency range the field that reads it raises 6.
  if (TryParseNumber(text, d)) return rows.AppendDouble(d);
  rows.AppendText(text);
}

void AppendTimestamp(RowSet& rows, const SQL_TIMESTAMP_STRUCT& ts) {
  try {
    rows.AppendDate(
        Date::FromYmd(ts.year, ts.month, ts.day, ts.hour, ts.minute, ts.second).Value());
  } catch (const Error&) {
    // No calendar date (a server's zero date): the field that reads it raises.
    rows.AppendText(std::to_string(ts.year) + "-" + std::to_string(ts.month) + "-" +
                    std::to_string(ts.day));
  }
}

void AppendCell(RowSet& rows, SQLHSTMT stmt, SQLUSMALLINT column, Fetch fetch, bool narrow) {
  switch (fetch) {
    case Fetch::kBool:
    case Fetch::kByte:
    case Fetch::kShort:
    case Fetch::kLong: {
      SQLINTEGER v = 0;
      if (!FetchFixed(stmt, column, SQL_C_SLONG, v)) return rows.AppendNull();
      return AppendInteger(rows, fetch, v);
    }
    case Fetch::kBigint: {
      SQLBIGINT v = 0;
      if (!FetchFixed(stmt, column, SQL_C_SBIGINT, v)) return rows.AppendNull();
      return AppendInteger(rows, fetch, v);
    }
    case Fetch::kDouble: {
      SQLDOUBLE v = 0;
      if (!FetchFixed(stmt, column, SQL_C_DOUBLE, v)) return rows.AppendNull();
      return rows.AppendDouble(v);
    }
    case Fetch::kCurrency: {
      // As text, so that no binary floating point stands between the
      // server's exact value and ours.
      thread_local std::string text;
      if (!FetchText(stmt, column, narrow, text)) return rows.AppendNull();
      return AppendCurrencyText(rows, text);
    }
    case Fetch::kDate: {
      SQL_TIMESTAMP_STRUCT ts{};
      SQLLEN indicator = 0;
      const SQLRETURN rc =
          SQLGetData(stmt, column, SQL_C_TYPE_TIMESTAMP, &ts, sizeof ts, &indicator);
      if (Succeeded(rc)) {
        if (indicator == SQL_NULL_DATA) return rows.AppendNull();
        return AppendTimestamp(rows, ts);
      }
      // A driver that cannot convert its stored text: read the text instead.
      std::string text;
      if (!FetchText(stmt, column, narrow, text)) return rows.AppendNull();
      Date d;
      if (Date::TryParse(text, d)) return rows.AppendDate(d.Value());
      return rows.AppendText(text);
    }
    case Fetch::kText: {
      thread_local std::string text;
      if (!FetchText(stmt, column, narrow, text)) return rows.AppendNull();
      return rows.AppendText(text);
    }
  }
}

namespace {

std::string TextAttribute(SQLHSTMT stmt, SQLUSMALLINT column, SQLUSMALLINT field, bool narrow,
                          SQLRETURN& rc) {
  SQLSMALLINT length = 0;
  if (narrow) {
    SQLCHAR text[512] = {};
    rc = SQLColAttribute(stmt, column, field, text, sizeof text, &length, nullptr);
    return std::string(
        reinterpret_cast<const char*>(text),
        std::min<size_t>(static_cast<size_t>(std::max<SQLSMALLINT>(length, 0)), 511));
  }
  SQLWCHAR text[256] = {};
  rc = SQLColAttributeW(stmt, column, field, text, sizeof text, &length, nullptr);
  return ToUtf8(text,
                std::min<size_t>(
                    static_cast<size_t>(std::max<SQLSMALLINT>(length, 0)) / sizeof(SQLWCHAR), 255));
}

SQLLEN NumberAttribute(SQLHSTMT stmt, SQLUSMALLINT column, SQLUSMALLINT field) {
  SQLLEN value = 0;
  SQLColAttribute(stmt, column, field, nullptr, 0, nullptr, &value);
  return value;
}

}  // namespace

ColumnDescription Describe(SQLHSTMT stmt, SQLUSMALLINT column, bool narrow, bool typeName) {
  ColumnDescription d;
  SQLRETURN rc = SQL_SUCCESS;
  d.name = TextAttribute(stmt, column, SQL_DESC_NAME, narrow, rc);
  if (!Succeeded(rc)) RaiseOdbc(SQL_HANDLE_STMT, stmt, "SQLColAttribute");
  // The verbose type, whose date and time kinds the interval code tells.
  const SQLLEN type = NumberAttribute(stmt, column, SQL_DESC_TYPE);
  d.type = static_cast<SQLSMALLINT>(type);
  if (type == SQL_DATETIME) {
    switch (NumberAttribute(stmt, column, SQL_DESC_DATETIME_INTERVAL_CODE)) {
      case SQL_CODE_DATE: d.type = SQL_TYPE_DATE; break;
      case SQL_CODE_TIME: d.type = SQL_TYPE_TIME; break;
      default: d.type = SQL_TYPE_TIMESTAMP; break;
    }
  }
  d.digits = static_cast<SQLSMALLINT>(NumberAttribute(stmt, column, SQL_DESC_SCALE));
  if (typeName) d.type_name = TextAttribute(stmt, column, SQL_DESC_TYPE_NAME, narrow, rc);
  return d;
}

}  // namespace ZTkDb::detail
