#include "runtime/Messages.h"

#include <iostream>
#include <memory>
#include <mutex>

namespace ZTkDb {
namespace {

// Clients in several threads may show boxes while the host swaps the sink:
// a box goes to the sink that was set when it was shown, and the sink is
// called outside the lock (it may itself show a box or set a sink).
struct SinkSlot {
  std::mutex mutex;
  std::shared_ptr<const MessageSink> sink;
};

// Never destroyed: a host object in a static may show a box while statics
// are torn down.
SinkSlot& Slot() {
  static auto* slot = new SinkSlot;
  return *slot;
}

void WriteToStderr(const MessageBoxCall& box) {
  // One line per box, so a log stays greppable even when the text has breaks.
  std::string line = box.title + (box.critical ? " [critical]: " : ": ");
  for (char c : box.text) line += (c == '\n' || c == '\r') ? ' ' : c;
  std::cerr << line << '\n';
}

}  // namespace

void SetMessageSink(MessageSink sink) {
  // Declared before the lock, so the replaced sink is destroyed after it.
  std::shared_ptr<const MessageSink> next;
  if (sink) next = std::make_shared<const MessageSink>(std::move(sink));
  const std::lock_guard lock(Slot().mutex);
  Slot().sink.swap(next);
}

namespace detail {

void ShowMessageBox(const std::string& text, const std::string& title, bool critical,
                    const std::string& member, long number) {
  MessageBoxCall box{text, title.empty() ? kDefaultTitle : title, critical, member, number};
  std::shared_ptr<const MessageSink> sink;
  {
    const std::lock_guard lock(Slot().mutex);
    sink = Slot().sink;
  }
  if (sink) {
    (*sink)(box);
  } else {
    WriteToStderr(box);
  }
}

}  // namespace detail
}  // namespace ZTkDb
