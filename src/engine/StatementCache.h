#pragma once

#include <cstdlib>
#include <cstring>
#include <list>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace ZTkDb::detail {

// Prepared statements of one connection, by shape, the least recently used
// dropped first. A host that sends many distinct shapes (statements whose
// literals could not be lifted) only ever costs what an uncached statement
// costs.
template <typename Entry>
class StatementCache {
 public:
  static constexpr size_t kCapacity = 64;

  // ZTKDB_STATEMENT_CACHE=0 runs every statement as text, for diagnosis.
  static bool Enabled() {
    const char* setting = std::getenv("ZTKDB_STATEMENT_CACHE");
    return setting == nullptr || std::strcmp(setting, "0") != 0;
  }

  // The entry for `shape`, now the most recently used; nullptr if none.
  Entry* Find(const std::string& shape) {
    auto it = index_.find(std::string_view(shape));
    if (it == index_.end()) return nullptr;
    entries_.splice(entries_.begin(), entries_, it->second);
    return &it->second->second;
  }

  Entry& Insert(std::string shape, Entry entry) {
    if (entries_.size() >= kCapacity) {
      index_.erase(std::string_view(entries_.back().first));
      entries_.pop_back();
    }
    entries_.emplace_front(std::move(shape), std::move(entry));
    index_.emplace(std::string_view(entries_.front().first), entries_.begin());
    return entries_.front().second;
  }

  void Erase(const std::string& shape) {
    auto it = index_.find(std::string_view(shape));
    if (it == index_.end()) return;
    auto entry = it->second;
    index_.erase(it);
    entries_.erase(entry);
  }

  void Clear() {
    index_.clear();
    entries_.clear();
  }

  size_t Size() const { return entries_.size(); }

  template <typename Visit>
  void ForEach(Visit visit) {
    for (auto& entry : entries_) visit(entry.second);
  }

 private:
  // Keys view into the shapes the list holds; list nodes never move.
  std::list<std::pair<std::string, Entry>> entries_;
  std::unordered_map<std::string_view, typename std::list<std::pair<std::string, Entry>>::iterator>
      index_;
};

}  // namespace ZTkDb::detail
