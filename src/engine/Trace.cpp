#include "engine/Trace.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <mutex>

namespace ZTkDb {
namespace {

// Statements run in several threads while the host swaps the sink: each
// goes to the sink that was set when it ended, called outside the lock.
struct TraceSlot {
  std::mutex mutex;
  std::shared_ptr<const TraceSink> sink;
  std::atomic<bool> on{false};
  std::FILE* file = nullptr;  // ZTKDB_TRACE's, while no host sink is set
};

// Never destroyed: a host object in a static may run a statement while
// statics are torn down.
TraceSlot& Slot() {
  static auto* slot = [] {
    auto* s = new TraceSlot;
    const char* where = std::getenv("ZTKDB_TRACE");
    if (where && *where) {
      s->file = std::strcmp(where, "stderr") == 0 ? stderr : std::fopen(where, "a");
      if (!s->file) std::fprintf(stderr, "ZTkDb: cannot open the trace file '%s'\n", where);
      s->on = s->file != nullptr;
    }
    return s;
  }();
  return *slot;
}

void WriteLine(std::FILE* file, const StatementTrace& t) {
  // One line per statement: breaks in the text are shown as blanks.
  std::string text = t.text;
  for (char& c : text) {
    if (c == '\n' || c == '\r') c = ' ';
  }
  std::fprintf(file, "ztkdb %s %s %.3f ms %lld rows: %s\n", t.engine.c_str(),
               t.bound ? "bound" : "text", t.milliseconds, static_cast<long long>(t.rows),
               text.c_str());
  std::fflush(file);
}

}  // namespace

void SetStatementTrace(TraceSink sink) {
  std::shared_ptr<const TraceSink> next;
  if (sink) next = std::make_shared<const TraceSink>(std::move(sink));
  TraceSlot& slot = Slot();
  const std::lock_guard lock(slot.mutex);
  slot.sink.swap(next);
  slot.on = slot.sink != nullptr || slot.file != nullptr;
}

namespace detail {

bool TraceOn() { return Slot().on.load(std::memory_order_relaxed); }

void EmitTrace(StatementTrace&& trace) noexcept {
  // Neither a host's sink that throws nor a trace that finds no memory may
  // turn a statement that ran into one that failed.
  try {
    TraceSlot& slot = Slot();
    std::shared_ptr<const TraceSink> sink;
    {
      const std::lock_guard lock(slot.mutex);
      sink = slot.sink;
      if (!sink && slot.file) WriteLine(slot.file, trace);
    }
    if (sink) (*sink)(trace);
  } catch (...) {
  }
}

void TraceScope::Emit() noexcept {
  try {
    StatementTrace t;
    t.text = text_ ? *text_ : statement_ ? statement_->Render() : std::string();
    t.engine = engine_;
    t.bound = bound_;
    t.rows = rows_;
    t.milliseconds =
        std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start_)
            .count();
    EmitTrace(std::move(t));
  } catch (...) {
    // Tracing never fails a statement.
  }
}

}  // namespace detail
}  // namespace ZTkDb
