#pragma once

#include <cstdint>
#include <string>

namespace ZTkDb::detail {

// Issues the row tokens of column stUId. Each token is unique across calls,
// threads and processes, and tokens of one process sort in issue order, so
// the unique index on stUId grows at its end.
//
// Form: 13 hex digits of microseconds since 1970 (never going back within
// the process), '-', 8 hex digits of process identity (pid mixed with a
// random value drawn once), '-', 8 hex digits of a per-process counter.
class UIdGenerator {
 public:
  static UIdGenerator& Instance();
  std::string NewUId();

 private:
  UIdGenerator();
  uint32_t process_tag_;
  uint64_t last_micros_ = 0;
  uint32_t counter_ = 0;
};

}  // namespace ZTkDb::detail
