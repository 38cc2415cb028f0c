#pragma once

#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "sql/Statement.h"
#include "ztkdb/Variant.h"

namespace ZTkDb::detail {

class RowSet;

// How many rows a query is expected to give: an engine may read a large
// result in chunks, so that it never holds it twice.
enum class ResultSize { kFew, kMany };

// DAO field types the library creates columns with.
enum DaoFieldType : int {
  dbBoolean = 1,
  dbByte = 2,
  dbInteger = 3,
  dbLong = 4,
  dbCurrency = 5,
  dbSingle = 6,
  dbDouble = 7,
  dbDate = 8,
  dbText = 10,
  dbMemo = 12,
};

struct ColumnInfo {
  std::string name;
  std::string declared_type;  // as the engine reports it
  bool is_date = false;
  // Variable-length text: a bound text compares with it as a literal would.
  bool is_text = false;
  // A number a decimal literal may be assigned to: floating (any digits),
  // or exact with `precision` digits, `scale` of them after the point.
  bool is_float = false;
  int16_t precision = -1, scale = -1;
};

// A column to be added to an existing table.
struct NewColumn {
  std::string name;
  DaoFieldType type = dbText;
  Variant default_value;  // Empty = no default
  bool required = false;
};

// One open database of one engine. Statements arrive in the library's own
// dialect; each engine adapts them to its server before they run. All
// failures raise ZTkDb::Error with the DAO-equivalent number.
class Database {
 public:
  virtual ~Database() = default;

  // Jet for the embedded engine, Odbc for every ODBC data source.
  virtual StorageKind Kind() const = 0;
  // The largest amount (scaled by 10,000) the engine gives back exactly.
  virtual int64_t LargestAmount() const { return std::numeric_limits<int64_t>::max(); }
  virtual const std::string& Path() const = 0;

  // Runs one statement that returns no rows; gives the rows it affected.
  // A text (a host's, a tool's, DDL) runs as text.
  virtual int64_t Execute(const std::string& sql) = 0;
  // A record's or list's statement: an engine may bind its values where
  // that has the effect of their literals, and runs its text otherwise.
  virtual int64_t Execute(const Statement& sql) { return Execute(sql.Render()); }
  // Runs one query and fetches its whole result.
  virtual std::shared_ptr<const RowSet> Query(const std::string& sql,
                                              ResultSize size = ResultSize::kFew) = 0;
  virtual std::shared_ptr<const RowSet> Query(const Statement& sql,
                                              ResultSize size = ResultSize::kFew) {
    return Query(sql.Render(), size);
  }

  // Fills `table` with `rows`, every value bound, none written as text: how
  // whole tables move between engines. `table` and `columns` as a statement
  // names them (quoted where the server needs it); each row holds one value
  // per column, of the kinds a query gives back. Each value is stored as the
  // library's literal for it would be; one the engine cannot store exactly
  // raises 6 before any row is sent. Gives the rows written.
  virtual int64_t InsertRows(const std::string& table, const std::vector<std::string>& columns,
                             const std::vector<std::vector<Variant>>& rows) = 0;

  // The table's name as the engine spells it (found without regard to
  // case); nothing when there is no such table.
  virtual std::optional<std::string> FindTable(const std::string& name) = 0;
  virtual std::vector<ColumnInfo> Columns(const std::string& table) = 0;
  virtual void AddColumn(const std::string& table, const NewColumn& column) = 0;
  virtual std::vector<std::string> TableNames() = 0;
  // A table or column name as the server quotes it, for texts that name
  // tables another program made.
  virtual std::string QuoteName(const std::string& name) const = 0;

  virtual void BeginTrans() = 0;
  virtual void CommitTrans() = 0;
  virtual void Rollback() = 0;
  // A transaction for reading only, every read of which sees the database
  // as one moment left it, whatever other connections commit meanwhile;
  // ended by CommitTrans or Rollback.
  virtual void BeginSnapshot() { BeginTrans(); }

  // After Close every call raises 3420; closing twice is harmless.
  virtual void Close() noexcept = 0;
  virtual bool IsOpen() const noexcept = 0;
};

}  // namespace ZTkDb::detail
