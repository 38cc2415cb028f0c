#include "runtime/SpareText.h"

#include <array>
#include <utility>

namespace ZTkDb::detail {
namespace {

// Small blocks come back fast from the allocator's own caches; blocks past
// this would hold memory a host may want back.
constexpr size_t kSmallest = 512;
constexpr size_t kLargest = size_t{64} << 10;

struct Spares {
  std::array<std::string, 4> texts;
  ~Spares() { gone = true; }
  static thread_local bool gone;  // trivially destroyed: readable to the end
};
thread_local bool Spares::gone = false;
thread_local Spares spares;

}  // namespace

std::string TakeSpareText() {
  if (Spares::gone) return {};
  for (std::string& t : spares.texts) {
    if (t.capacity() >= kSmallest) return std::exchange(t, std::string());
  }
  return {};
}

void GiveBackText(std::string&& text) noexcept {
  const size_t capacity = text.capacity();
  if (Spares::gone || capacity < kSmallest || capacity > kLargest) return;
  std::string* smallest = nullptr;
  for (std::string& t : spares.texts) {
    if (!smallest || t.capacity() < smallest->capacity()) smallest = &t;
  }
  if (smallest->capacity() < capacity) {
    text.clear();
    std::swap(*smallest, text);
  }
}

}  // namespace ZTkDb::detail
