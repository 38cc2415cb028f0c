#pragma once

#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "runtime/ToolExport.h"
#include "ztkdb/Variant.h"

namespace ZTkDb::detail {

// The rows of one query result, kept compactly: each row is a run of tagged
// cells (one tag byte, then the value's bytes) in large fixed-size chunks, so
// a 100k-row result costs little more than its values and never needs one
// huge contiguous block. Immutable once built; shared by a recordset and its
// clones.
class RowSet {
 public:
  // A result's column names with their index, built once and shared by
  // every result of the same prepared statement.
  class Columns {
   public:
    explicit Columns(std::vector<std::string> names);
    Columns(const Columns&) = delete;
    Columns& operator=(const Columns&) = delete;
    const std::vector<std::string>& Names() const { return names_; }
    int32_t IndexOf(const std::string& name) const;
    uint64_t Serial() const { return serial_; }

   private:
    uint64_t serial_;
    // Column names hashed and compared without regard to ASCII case, so
    // that a lookup needs no folded copy of the name.
    struct FoldedHash {
      size_t operator()(std::string_view s) const noexcept;
    };
    struct FoldedEqual {
      bool operator()(std::string_view a, std::string_view b) const noexcept;
    };
    std::vector<std::string> names_;
    // Keys view into names_, which never changes after construction.
    std::unordered_map<std::string_view, int32_t, FoldedHash, FoldedEqual> index_;
  };

  explicit RowSet(std::vector<std::string> names);
  explicit RowSet(std::shared_ptr<const Columns> columns);
  ~RowSet();
  // The name index views into the names: a RowSet stays where it was built.
  RowSet(const RowSet&) = delete;
  RowSet& operator=(const RowSet&) = delete;

  // Building: BeginRow, one Append per column, EndRow. Inline: a large
  // result appends millions of cells.
  void BeginRow() { pending_.size = 0; }
  void AppendNull() { *pending_.Add(1) = static_cast<char>(vtNull); }
  void AppendBool(bool v) { Put<uint8_t>(vtBoolean, v ? 1 : 0); }
  void AppendByte(uint8_t v) { Put(vtByte, v); }
  void AppendInteger(int16_t v) { Put(vtInteger, v); }
  void AppendLong(int32_t v) { Put(vtLong, v); }
  void AppendDouble(double v) { Put(vtDouble, v); }
  void AppendCurrency(int64_t scaled) { Put(vtCurrency, scaled); }
  void AppendDate(double ole) { Put(vtDate, ole); }
  void AppendText(std::string_view v) {
    char* p = pending_.Room(1 + 10 + v.size());
    char* const start = p;
    *p++ = static_cast<char>(vtString);
    // Length as a base-128 varint: short texts, the usual case, cost one byte.
    size_t n = v.size();
    do {
      const auto byte = static_cast<uint8_t>(n & 0x7f);
      n >>= 7;
      *p++ = static_cast<char>(n ? byte | 0x80 : byte);
    } while (n);
    if (!v.empty()) std::memcpy(p, v.data(), v.size());
    pending_.size += static_cast<size_t>(p - start) + v.size();
  }
  void EndRow();

  int64_t RowCount() const { return static_cast<int64_t>(row_start_.size()); }
  int32_t ColumnCount() const { return static_cast<int32_t>(columns_->Names().size()); }
  const std::string& Name(int32_t i) const { return columns_->Names()[static_cast<size_t>(i)]; }
  // Case-insensitive; the first column of a repeated name wins. -1 if none.
  int32_t IndexOf(const std::string& name) const { return columns_->IndexOf(name); }

  // One stored value, viewed in place: its type and its bytes (a text's
  // UTF-8 bytes; a number's native bytes). Valid while the RowSet lives.
  struct Cell {
    VariantType type = vtNull;
    const char* data = nullptr;
    size_t size = 0;
  };
  // The cells of `row`, in column order, without copying a value.
  void ViewRow(int64_t row, std::vector<Cell>& out) const;
  // One cell, reached by skipping the cells before it.
  Cell CellAt(int64_t row, int32_t column) const;
  static Variant ToVariant(const Cell& cell);
  ZTKDB_TOOL void DecodeRow(int64_t row, std::vector<Variant>& out) const;

  // Distinct for every set of columns of the process, and the same for the
  // results of one prepared statement: a key for what readers cache about a
  // result's columns.
  uint64_t Serial() const { return columns_->Serial(); }

  // Bytes held for the rows (chunks and row index), for memory accounting.
  size_t AllocatedBytes() const;

 private:
  char* Reserve(size_t bytes);

  std::shared_ptr<const Columns> columns_;
  std::vector<std::unique_ptr<char[]>> chunks_;
  std::vector<size_t> chunk_capacities_;
  size_t chunk_used_ = 0;
  size_t chunk_capacity_ = 0;
  // Row start as (chunk << 32 | offset).
  std::vector<uint64_t> row_start_;
  template <typename T>
  void Put(uint8_t tag, T value) {
    char* p = pending_.Add(1 + sizeof(T));
    p[0] = static_cast<char>(tag);
    std::memcpy(p + 1, &value, sizeof(T));
  }

  // A row being built is kept apart until EndRow so that it never straddles
  // two chunks.
  struct Pending {
    std::unique_ptr<char[]> data;
    size_t size = 0;
    size_t capacity = 0;
    // Room for `n` more bytes, not yet counted.
    char* Room(size_t n) {
      if (capacity - size < n) Grow(n);
      return data.get() + size;
    }
    // `n` more bytes, counted.
    char* Add(size_t n) {
      char* p = Room(n);
      size += n;
      return p;
    }
    void Grow(size_t n);
  };
  Pending pending_;
};

ZTKDB_TOOL std::string LowerAscii(std::string_view s);

}  // namespace ZTkDb::detail
