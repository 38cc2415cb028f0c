#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <exception>
#include <string>

#include "sql/Statement.h"
#include "ztkdb/Trace.h"

namespace ZTkDb::detail {

// Whether anything traces statements: a host's sink or ZTKDB_TRACE.
bool TraceOn();
void EmitTrace(StatementTrace&& trace) noexcept;

// Traces one statement when it ends, ran or failed. The text is made only
// when someone listens.
class TraceScope {
 public:
  TraceScope(const char* engine, const std::string* text, const Statement* statement, bool bound)
      : on_(TraceOn()), engine_(engine), text_(text), statement_(statement), bound_(bound) {
    if (on_) start_ = std::chrono::steady_clock::now();
  }
  TraceScope(const TraceScope&) = delete;
  TraceScope& operator=(const TraceScope&) = delete;
  ~TraceScope() {
    if (on_) Emit();
  }
  // Called with the statement's row count once it ran.
  void Rows(int64_t rows) noexcept { rows_ = rows; }

 private:
  void Emit() noexcept;

  bool on_;
  const char* engine_;
  const std::string* text_;
  const Statement* statement_;
  bool bound_;
  int64_t rows_ = -1;
  std::chrono::steady_clock::time_point start_;
};

}  // namespace ZTkDb::detail
