#include "runtime/Messages.h"

#include <iostream>

namespace ZTkDb {
namespace {

MessageSink& Sink() {
  static MessageSink sink;
  return sink;
}

void WriteToStderr(const MessageBoxCall& box) {
  // One line per box, so a log stays greppable even when the text has breaks.
  std::string line = box.title + (box.critical ? " [critical]: " : ": ");
  for (char c : box.text) line += (c == '\n' || c == '\r') ? ' ' : c;
  std::cerr << line << '\n';
}

}  // namespace

void SetMessageSink(MessageSink sink) { Sink() = std::move(sink); }

namespace detail {

void ShowMessageBox(const std::string& text, const std::string& title, bool critical) {
  MessageBoxCall box{text, title.empty() ? kDefaultTitle : title, critical};
  if (Sink()) {
    Sink()(box);
  } else {
    WriteToStderr(box);
  }
}

}  // namespace detail
}  // namespace ZTkDb
