#pragma once

#include <sql.h>
#include <sqlext.h>

#include <cstdint>
#include <functional>
#include <vector>

#include "engine/odbc/OdbcFetch.h"

namespace ZTkDb::detail {

class RowSet;

// Reads a result a block of rows at a time into bound column arrays, rather
// than one SQLGetData call per cell. A text longer than its bound width is
// read apart, in full. The arrays are kept for the connection's next result.
class BlockFetcher {
 public:
  static constexpr SQLULEN kRows = 256;
  // UTF-16 units (or bytes from a narrow driver) a text cell holds in place.
  static constexpr size_t kTextUnits = 255;

  // Every row of the executed `stmt` appended to `rows`; `fail` raises the
  // error of a failed call on `stmt`. `keep`: a number that names `stmt`
  // for as long as it lives, never reused (0: none). A statement so named
  // stays bound to the arrays after the read, and its next read skips the
  // binding (some forty driver calls) unless another statement was bound
  // in between. One statement with its own number is a prepared statement
  // read again and again; any other is left unbound.
  void Read(SQLHSTMT stmt, const std::vector<Fetch>& fetches, bool narrow, RowSet& rows,
            const std::function<void(const char* what)>& fail, uint64_t keep = 0);

 private:
  struct Column {
    SQLSMALLINT c_type = SQL_C_CHAR;
    SQLLEN width = 0;
    std::vector<char> data;
    std::vector<SQLLEN> indicators;
  };
  void Bind(SQLHSTMT stmt, const std::vector<Fetch>& fetches, bool narrow,
            const std::function<void(const char*)>& fail);
  void AppendCell(SQLHSTMT stmt, SQLUSMALLINT column, size_t row, Fetch fetch, bool narrow,
                  RowSet& rows, const std::function<void(const char*)>& fail);

  std::vector<Column> columns_;
  // The statement that stayed bound, and what it was bound for.
  uint64_t bound_ = 0;
  std::vector<Fetch> bound_fetches_;
  std::vector<SQLUSMALLINT> status_ = std::vector<SQLUSMALLINT>(kRows);
  SQLULEN fetched_ = 0;
  std::string text_;
};

}  // namespace ZTkDb::detail
