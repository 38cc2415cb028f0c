#pragma once

#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>
#include <vector>

namespace bench {

struct CopyFigure {
  int64_t rows = 0;
  double rows_per_second = 0;  // the median of the runs
  std::vector<double> runs;
};

// `ztk copy` of the data set `source` into a new SQLite file under `dir`
// and, when `pgAdmin` reaches a server, into a new PostgreSQL database.
void RegisterCopyRates(const std::string& source, const std::string& dir, const char* pgAdmin);
const CopyFigure& CopyRate(bool server);

}  // namespace bench
