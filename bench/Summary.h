#pragma once

#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>
#include <vector>

namespace bench {

// Keeps each benchmark's median (or its single run) per contender.
class Collector : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override;
};

// The memory a 100k-order list takes while it is built and once built, on
// SQLite and (when `postgres` is not empty) PostgreSQL, each measured in a
// process of its own.
void RegisterMemory(const std::string& sqlite, const std::string& postgres);

// Prints the ratios against the targets; true when every one was met.
bool Summary(const std::vector<int32_t>& sizes);

}  // namespace bench
