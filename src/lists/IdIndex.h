#pragma once

#include <cstdint>
#include <vector>

namespace ZTkDb::detail {

// Row id to 0-based position: an open-addressing table in one array, so a
// lookup reads one or two cache lines whatever the size of the result.
class IdIndex {
 public:
  explicit IdIndex(size_t expected) {
    size_t capacity = 16;
    while (capacity < expected * 2) capacity *= 2;
    slots_.assign(capacity, Slot{});
    mask_ = capacity - 1;
  }

  // False when the id is there already (the table is left unchanged).
  bool Insert(int32_t id, int32_t position) {
    for (size_t i = Home(id);; i = (i + 1) & mask_) {
      Slot& s = slots_[i];
      if (s.position < 0) {
        s = {id, position};
        return true;
      }
      if (s.id == id) return false;
    }
  }

  // The position of `id`, or -1.
  int32_t Find(int32_t id) const {
    for (size_t i = Home(id);; i = (i + 1) & mask_) {
      const Slot& s = slots_[i];
      if (s.position < 0) return -1;
      if (s.id == id) return s.position;
    }
  }

 private:
  struct Slot {
    int32_t id = 0;
    int32_t position = -1;  // -1: empty
  };
  size_t Home(int32_t id) const {
    // Fibonacci hashing spreads the consecutive ids of a table evenly.
    return static_cast<size_t>(
               (static_cast<uint64_t>(static_cast<uint32_t>(id)) * 11400714819323198485ull) >> 32) &
           mask_;
  }

  std::vector<Slot> slots_;
  size_t mask_ = 0;
};

}  // namespace ZTkDb::detail
