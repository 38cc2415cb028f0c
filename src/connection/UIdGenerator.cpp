#include "connection/UIdGenerator.h"

#include <unistd.h>

#include <chrono>
#include <mutex>
#include <random>

namespace ZTkDb::detail {
namespace {
// `digits` upper-case hex digits of the low bits of `value`, leading zeros kept.
void PutHex(char* out, uint64_t value, int digits) {
  static constexpr char kHex[] = "0123456789ABCDEF";
  for (int i = digits - 1; i >= 0; --i, value >>= 4) out[i] = kHex[value & 15];
}

// Process-wide services are never destroyed: a host's CTkDb, record or list
// in a global or static may still use them while statics are torn down.
std::mutex& Guard() {
  static auto* m = new std::mutex;
  return *m;
}
}  // namespace

UIdGenerator::UIdGenerator() {
  std::random_device device;
  // pid alone repeats across reboots and containers; the random half makes a
  // clash of two processes' tags as unlikely as a 32-bit collision.
  process_tag_ = (static_cast<uint32_t>(::getpid()) << 16) ^ device();
}

UIdGenerator& UIdGenerator::Instance() {
  static auto* instance = new UIdGenerator;
  return *instance;
}

std::string UIdGenerator::NewUId() {
  // The library itself is single-threaded per caller, but two hosts' threads
  // may share this process-wide generator; a lock keeps tokens unique.
  std::lock_guard<std::mutex> lock(Guard());
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  uint64_t micros =
      static_cast<uint64_t>(std::chrono::duration_cast<std::chrono::microseconds>(now).count());
  if (micros < last_micros_) micros = last_micros_;  // the clock was set back
  last_micros_ = micros;
  ++counter_;
  // Written digit by digit: every create and update asks for one, and a
  // formatted print costs more than the rest of this function many times.
  std::string out(31, '-');
  PutHex(out.data(), micros, 13);
  PutHex(out.data() + 14, process_tag_, 8);
  PutHex(out.data() + 23, counter_, 8);
  return out;
}

}  // namespace ZTkDb::detail
