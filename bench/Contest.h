#pragma once

// Every contender of a comparison runs in the same iteration, one after the
// other, the order turning from one iteration to the next, so that their
// times are taken under the same conditions: on two cores shared with a
// database server, runs taken one after the other meet different loads and
// their ratios wander.
#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace bench {

struct Side {
  std::string name;              // the counter is "<name>_ns_row"
  std::function<int64_t()> run;  // gives the rows it read or wrote
};

inline void Contest(benchmark::State& state, std::vector<Side> sides) {
  using Clock = std::chrono::steady_clock;
  std::vector<Clock::duration> times(sides.size());
  int64_t rows = 1;
  size_t first = 0;
  // One untimed round first: the contenders prepare their statements when
  // they are added, ZTkDb on its first call (reading the schema, learning
  // the statement's form, sizing its fetch buffers). Google Benchmark calls
  // this function afresh for every repetition and every estimate of the
  // iteration count, so a first call inside the timing would be charged
  // again and again.
  for (Side& side : sides) side.run();
  for (auto _ : state) {
    for (size_t k = 0; k < sides.size(); ++k) {
      const size_t i = (first + k) % sides.size();
      const auto start = Clock::now();
      const int64_t n = sides[i].run();
      times[i] += Clock::now() - start;
      if (i == 0)
        rows = n;
      else if (n != rows) {
        state.SkipWithError((sides[i].name + " saw other rows than " + sides[0].name).c_str());
        return;
      }
    }
    first = (first + 1) % sides.size();
  }
  const double per =
      static_cast<double>(state.iterations()) * static_cast<double>(std::max<int64_t>(rows, 1));
  for (size_t i = 0; i < sides.size(); ++i) {
    const auto ns = std::chrono::duration_cast<std::chrono::nanoseconds>(times[i]).count();
    state.counters[sides[i].name + "_ns_row"] = static_cast<double>(ns) / per;
  }
  state.counters["rows"] = static_cast<double>(rows);
}

}  // namespace bench
