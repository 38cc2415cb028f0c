// Result cells of the SQLite engine: the declared column types say which
// Variant kind a stored value is read back as.
#include "engine/sqlite/SqliteCells.h"

#include <sqlite3.h>

#include <cctype>
#include <cmath>
#include <cstring>
#include <string>
#include <unordered_map>

#include "engine/RowSet.h"
#include "runtime/Numbers.h"
#include "runtime/Raise.h"
#include "ztkdb/Date.h"
#include "ztkdb/Error.h"

namespace ZTkDb::detail {
namespace {

ColumnKind ClassifyDeclared(const std::string& declared) {
  std::string d = declared;
  for (char& c : d) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  auto has = [&](const char* s) { return d.find(s) != std::string::npos; };
  if (has("DATE") || has("TIME")) return ColumnKind::kDate;
  if (has("BIT") || has("BOOL") || has("YESNO")) return ColumnKind::kBool;
  if (has("TINYINT") || has("BYTE")) return ColumnKind::kByte;
  if (has("SMALLINT")) return ColumnKind::kInteger;
  if (has("INT") || has("LONG")) return ColumnKind::kLong;
  if (has("CURRENCY") || has("MONEY")) return ColumnKind::kCurrency;
  if (has("REAL") || has("DOUB") || has("FLOA")) return ColumnKind::kDouble;
  // Without INT (taken above), these are SQLite's own TEXT affinity.
  if (has("CHAR") || has("TEXT") || has("CLOB")) return ColumnKind::kStoredText;
  if (has("MEMO")) return ColumnKind::kText;
  return ColumnKind::kAuto;
}

// The form the library stores, 'YYYY-MM-DD HH:MM:SS', read without the
// general parser: every date of every row comes this way.
bool ParseStoredDate(std::string_view t, double& ole) {
  int v[6];
  if (!SplitIsoTimestamp(t, v)) return false;
  try {
    ole = Date::FromYmd(v[0], v[1], v[2], v[3], v[4], v[5]).Value();
  } catch (const Error&) {
    return false;  // 30 February and the like: the general parser refuses them too
  }
  return true;
}

void AppendInteger64(RowSet& rows, sqlite3_int64 v) {
  if (v >= INT32_MIN && v <= INT32_MAX)
    rows.AppendLong(static_cast<int32_t>(v));
  else
    rows.AppendDouble(static_cast<double>(v));
}

}  // namespace

// Every query asks this for each of its columns; a schema has a handful of
// distinct declared types.
ColumnKind KindFromDeclared(const char* declared) {
  if (!declared) return ColumnKind::kAuto;
  thread_local std::unordered_map<std::string, ColumnKind> known;
  std::string key = declared;
  auto it = known.find(key);
  if (it == known.end()) it = known.emplace(key, ClassifyDeclared(key)).first;
  return it->second;
}

namespace {

std::string_view ValueText(sqlite3_value* v) {
  const auto* p = reinterpret_cast<const char*>(sqlite3_value_text(v));
  return p ? std::string_view(p, static_cast<size_t>(sqlite3_value_bytes(v))) : std::string_view();
}

}  // namespace

std::string_view ColumnText(sqlite3_stmt* s, int i) {
  const auto* p = reinterpret_cast<const char*>(sqlite3_column_text(s, i));
  return p ? std::string_view(p, static_cast<size_t>(sqlite3_column_bytes(s, i)))
           : std::string_view();
}

void AppendCell(RowSet& rows, sqlite3_stmt* s, int i, ColumnKind kind, DateMemo* memo) {
  // The cell is fetched once and read through its value: every column_*
  // call would look the cell up again (some sixty instructions each, three
  // or four of them per cell). The value is the statement's own; this
  // connection is only ever used by one thread at a time.
  sqlite3_value* cell = sqlite3_column_value(s, i);
  if (kind == ColumnKind::kStoredText) {
    // The column stores every number as its text: the text (or a blob's
    // bytes) is the value, without asking for its type first.
    const auto* p = reinterpret_cast<const char*>(sqlite3_value_text(cell));
    if (p)
      return rows.AppendText(std::string_view(p, static_cast<size_t>(sqlite3_value_bytes(cell))));
    if (sqlite3_value_type(cell) == SQLITE_NULL) return rows.AppendNull();
    // A value with bytes but no text: SQLite ran out of memory making one.
    if (sqlite3_value_bytes(cell) > 0) Raise(7, "ZTkDb.Recordset", "Out of memory");
    return rows.AppendText({});
  }
  const int type = sqlite3_value_type(cell);
  if (type == SQLITE_NULL) return rows.AppendNull();
  const bool numeric = type == SQLITE_INTEGER || type == SQLITE_FLOAT;
  switch (kind) {
    case ColumnKind::kBool:
      if (numeric) return rows.AppendBool(sqlite3_value_double(cell) != 0.0);
      break;
    case ColumnKind::kByte:
      if (type == SQLITE_INTEGER) {
        const sqlite3_int64 v = sqlite3_value_int64(cell);
        if (v >= 0 && v <= 255) return rows.AppendByte(static_cast<uint8_t>(v));
        return AppendInteger64(rows, v);
      }
      break;
    case ColumnKind::kInteger:
      if (type == SQLITE_INTEGER) {
        const sqlite3_int64 v = sqlite3_value_int64(cell);
        if (v >= INT16_MIN && v <= INT16_MAX) return rows.AppendInteger(static_cast<int16_t>(v));
        return AppendInteger64(rows, v);
      }
      break;
    case ColumnKind::kCurrency:
      if (type == SQLITE_INTEGER) {
        const sqlite3_int64 v = sqlite3_value_int64(cell);
        if (v > -922337203685477 && v < 922337203685477) return rows.AppendCurrency(v * 10000);
      }
      if (numeric) {
        // REAL storage: the nearest 4-decimal value is the one that was
        // written. The product is taken in extended precision, since in
        // double its own rounding could pick the wrong ten-thousandth above
        // about 1.4e11; this way amounts read back exactly up to 2^39
        // (about 5.5e11), where a double stops resolving 0.0001.
        const long double scaled =
            std::nearbyintl(static_cast<long double>(sqlite3_value_double(cell)) * 10000.0L);
        if (scaled > -9.2e18L && scaled < 9.2e18L) {
          return rows.AppendCurrency(static_cast<int64_t>(scaled));
        }
        // Beyond the currency range: the field that reads it raises 6, not
        // the fetch, so the rest of a list stays readable.
        return rows.AppendDouble(sqlite3_value_double(cell));
      }
      break;
    case ColumnKind::kDate:
      if (type == SQLITE_TEXT) {
        const std::string_view text = ValueText(cell);
        const bool memorable = memo && text.size() == sizeof memo->text;
        if (memorable && memo->valid &&
            std::memcmp(memo->text, text.data(), sizeof memo->text) == 0) {
          return rows.AppendDate(memo->ole);
        }
        double stored = 0;
        if (ParseStoredDate(text, stored)) {
          if (memorable) {
            std::memcpy(memo->text, text.data(), sizeof memo->text);
            memo->ole = stored;
            memo->valid = true;
          }
          return rows.AppendDate(stored);
        }
        Date date;
        if (Date::TryParse(std::string(text), date)) return rows.AppendDate(date.Value());
      } else if (numeric) {
        return rows.AppendDate(sqlite3_value_double(cell));
      }
      break;
    case ColumnKind::kDouble:
      if (numeric) return rows.AppendDouble(sqlite3_value_double(cell));
      break;
    case ColumnKind::kLong:
    case ColumnKind::kText:
    case ColumnKind::kStoredText:
    case ColumnKind::kAuto: break;
  }
  // What the declared type does not explain is delivered as it is stored.
  if (type == SQLITE_INTEGER) return AppendInteger64(rows, sqlite3_value_int64(cell));
  if (type == SQLITE_FLOAT) return rows.AppendDouble(sqlite3_value_double(cell));
  if (type == SQLITE_BLOB) {
    const auto* p = static_cast<const char*>(sqlite3_value_blob(cell));
    return rows.AppendText(std::string_view(p, static_cast<size_t>(sqlite3_value_bytes(cell))));
  }
  rows.AppendText(ValueText(cell));
}

int BindCell(sqlite3_stmt* s, int i, const Variant& value, std::string& keep) {
  switch (value.Type()) {
    case vtEmpty:
    case vtNull: return sqlite3_bind_null(s, i);
    case vtBoolean: return sqlite3_bind_int(s, i, value.ToBool() ? -1 : 0);
    case vtByte:
    case vtInteger:
    case vtLong: return sqlite3_bind_int(s, i, value.ToLong());
    case vtCurrency: {
      const Currency c = value.ToCurrency();
      // The double nearest the amount (both operands are exact); reading
      // rounds it back to the 0.0001.
      return sqlite3_bind_double(s, i, static_cast<double>(c.Scaled()) / 10000.0);
    }
    case vtDate: {
      keep = value.ToDate().IsoText();
      return sqlite3_bind_text(s, i, keep.data(), static_cast<int>(keep.size()), SQLITE_STATIC);
    }
    case vtDouble: return sqlite3_bind_double(s, i, value.ToDouble());
    default: {
      keep = value.ToString();
      return sqlite3_bind_text(s, i, keep.data(), static_cast<int>(keep.size()), SQLITE_STATIC);
    }
  }
}

}  // namespace ZTkDb::detail
