#include "Interrupt.h"

#include <csignal>

#include "Text.h"

namespace ztk {
namespace {

volatile std::sig_atomic_t signalled = 0;

extern "C" void OnSignal(int signal) {
  signalled = signal;
  // The next one is the default's: a user who presses Ctrl-C twice means it.
  std::signal(signal, SIG_DFL);
}

}  // namespace

void CatchInterrupts() {
  std::signal(SIGINT, OnSignal);
  std::signal(SIGTERM, OnSignal);
}

void ThrowIfInterrupted() {
  if (signalled == 0) return;
  throw Interrupted(signalled == SIGINT ? _("interrupted (Ctrl-C)") : _("stopped (TERM)"));
}

}  // namespace ztk
