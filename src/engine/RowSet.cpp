#include "engine/RowSet.h"

#include <algorithm>
#include <atomic>
#include <cassert>
#include <cstring>

namespace ZTkDb::detail {
namespace {

constexpr size_t kChunkSize = size_t{1} << 20;
constexpr size_t kFirstChunkSize = size_t{1} << 12;
constexpr size_t kLargestSparePending = size_t{1} << 16;

// The first chunk and the row buffer of the last result dropped on this
// thread, for the next result built here: a read by key builds and drops a
// one-row result every call, and two fresh blocks of kilobytes cost the
// allocator more than reading the row does (a block that size makes it
// sweep its small free lists first).
struct Spares {
  std::unique_ptr<char[]> chunk;  // kFirstChunkSize bytes
  std::unique_ptr<char[]> pending;
  size_t pending_capacity = 0;
  // The bookkeeping of a small result, empty, for the next one.
  std::vector<std::unique_ptr<char[]>> chunks;
  std::vector<size_t> chunk_capacities;
  std::vector<uint64_t> row_start;
};
constexpr size_t kLargestSpareRows = 512;
thread_local Spares spares;

template <typename T>
T Get(const char*& p) {
  T value;
  std::memcpy(&value, p, sizeof(T));
  p += sizeof(T);
  return value;
}

}  // namespace

std::string LowerAscii(std::string_view s) {
  std::string out(s);
  for (char& c : out) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return out;
}

RowSet::Columns::Columns(std::vector<std::string> names) : names_(std::move(names)) {
  static std::atomic<uint64_t> next{1};
  serial_ = next++;
  index_.reserve(names_.size());
  for (size_t i = 0; i < names_.size(); ++i) {
    index_.emplace(std::string_view(names_[i]), static_cast<int32_t>(i));
  }
}

RowSet::RowSet(std::vector<std::string> names)
    : RowSet(std::make_shared<const Columns>(std::move(names))) {}

RowSet::RowSet(std::shared_ptr<const Columns> columns) : columns_(std::move(columns)) {}

namespace {
char Folded(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }
}  // namespace

size_t RowSet::Columns::FoldedHash::operator()(std::string_view s) const noexcept {
  size_t h = 1469598103934665603ull;  // FNV-1a over the folded bytes
  for (char c : s) h = (h ^ static_cast<unsigned char>(Folded(c))) * 1099511628211ull;
  return h;
}

bool RowSet::Columns::FoldedEqual::operator()(std::string_view a,
                                              std::string_view b) const noexcept {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i) {
    if (Folded(a[i]) != Folded(b[i])) return false;
  }
  return true;
}

int32_t RowSet::Columns::IndexOf(const std::string& name) const {
  auto it = index_.find(std::string_view(name));
  return it == index_.end() ? -1 : it->second;
}

RowSet::~RowSet() {
  Spares& s = spares;
  if (!s.chunk && !chunks_.empty() && chunk_capacities_.front() == kFirstChunkSize) {
    s.chunk = std::move(chunks_.front());
  }
  if (pending_.data && pending_.capacity <= kLargestSparePending &&
      pending_.capacity > s.pending_capacity) {
    s.pending = std::move(pending_.data);
    s.pending_capacity = pending_.capacity;
  }
  if (row_start_.capacity() <= kLargestSpareRows && s.row_start.capacity() == 0) {
    chunks_.clear();
    chunk_capacities_.clear();
    row_start_.clear();
    s.chunks = std::move(chunks_);
    s.chunk_capacities = std::move(chunk_capacities_);
    s.row_start = std::move(row_start_);
  }
}

void RowSet::Pending::Grow(size_t n) {
  Spares& s = spares;
  if (!data && s.pending && s.pending_capacity >= n) {
    data = std::move(s.pending);
    capacity = s.pending_capacity;
    s.pending_capacity = 0;
    return;
  }
  const size_t wanted = std::max(size + n, std::max<size_t>(capacity * 2, 256));
  auto bigger = std::make_unique<char[]>(wanted);
  if (size) std::memcpy(bigger.get(), data.get(), size);
  data = std::move(bigger);
  capacity = wanted;
}

char* RowSet::Reserve(size_t bytes) {
  if (chunks_.empty() || chunk_capacity_ - chunk_used_ < bytes) {
    // Chunks grow from small to kChunkSize, so that the one-row result of a
    // read by key costs a few kilobytes, and are not zeroed: every byte is
    // written before it is read.
    const size_t grown =
        chunks_.empty() ? kFirstChunkSize : std::min(kChunkSize, 2 * chunk_capacity_);
    const size_t capacity = std::max(bytes, grown);
    if (chunks_.capacity() == 0 && spares.row_start.capacity() != 0) {
      chunks_ = std::move(spares.chunks);
      chunk_capacities_ = std::move(spares.chunk_capacities);
      row_start_ = std::move(spares.row_start);
    }
    if (capacity == kFirstChunkSize && spares.chunk) {
      chunks_.push_back(std::move(spares.chunk));
    } else {
      chunks_.push_back(std::make_unique_for_overwrite<char[]>(capacity));
    }
    chunk_capacities_.push_back(capacity);
    chunk_capacity_ = capacity;
    chunk_used_ = 0;
  }
  char* p = chunks_.back().get() + chunk_used_;
  row_start_.push_back((uint64_t{chunks_.size() - 1} << 32) | chunk_used_);
  chunk_used_ += bytes;
  return p;
}

void RowSet::EndRow() {
  char* p = Reserve(pending_.size);
  if (pending_.size) std::memcpy(p, pending_.data.get(), pending_.size);
  pending_.size = 0;
}

namespace {

// Reads the cell at `p` and moves `p` past it.
RowSet::Cell NextCell(const char*& p) {
  RowSet::Cell cell;
  cell.type = static_cast<VariantType>(static_cast<uint8_t>(*p++));
  size_t n = 0;
  switch (cell.type) {
    case vtNull: break;
    case vtBoolean:
    case vtByte: n = 1; break;
    case vtInteger: n = 2; break;
    case vtLong: n = 4; break;
    case vtDouble:
    case vtCurrency:
    case vtDate: n = 8; break;
    case vtString: {
      int shift = 0;
      uint8_t byte;
      do {
        byte = static_cast<uint8_t>(*p++);
        n |= size_t{byte & 0x7fu} << shift;
        shift += 7;
      } while (byte & 0x80);
      break;
    }
    default: cell.type = vtEmpty; break;
  }
  cell.data = p;
  cell.size = n;
  p += n;
  return cell;
}

}  // namespace

void RowSet::ViewRow(int64_t row, std::vector<Cell>& out) const {
  assert(row >= 0 && row < RowCount());
  const uint64_t start = row_start_[static_cast<size_t>(row)];
  const char* p = chunks_[start >> 32].get() + (start & 0xffffffffu);
  out.resize(columns_->Names().size());
  for (Cell& cell : out) cell = NextCell(p);
}

RowSet::Cell RowSet::CellAt(int64_t row, int32_t column) const {
  assert(row >= 0 && row < RowCount() && column >= 0 && column < ColumnCount());
  const uint64_t start = row_start_[static_cast<size_t>(row)];
  const char* p = chunks_[start >> 32].get() + (start & 0xffffffffu);
  Cell cell = NextCell(p);
  for (int32_t i = 0; i < column; ++i) cell = NextCell(p);
  return cell;
}

Variant RowSet::ToVariant(const Cell& cell) {
  const char* p = cell.data;
  switch (cell.type) {
    case vtNull: return Variant::Null();
    case vtBoolean: return Variant(Get<uint8_t>(p) != 0);
    case vtByte: return Variant(Get<uint8_t>(p));
    case vtInteger: return Variant(Get<int16_t>(p));
    case vtLong: return Variant(Get<int32_t>(p));
    case vtDouble: return Variant(Get<double>(p));
    case vtCurrency: return Variant(Currency::FromScaled(Get<int64_t>(p)));
    case vtDate: return Variant(Date(Get<double>(p)));
    case vtString: return Variant(std::string(cell.data, cell.size));
    default: return Variant();
  }
}

void RowSet::DecodeRow(int64_t row, std::vector<Variant>& out) const {
  thread_local std::vector<Cell> cells;
  ViewRow(row, cells);
  out.resize(cells.size());
  for (size_t i = 0; i < cells.size(); ++i) out[i] = ToVariant(cells[i]);
}

size_t RowSet::AllocatedBytes() const {
  size_t total = row_start_.capacity() * sizeof(uint64_t);
  for (size_t capacity : chunk_capacities_) total += capacity;
  return total;
}

}  // namespace ZTkDb::detail
