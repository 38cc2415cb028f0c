#pragma once

#include <exception>
#include <string>
#include <utility>

#include "runtime/Raise.h"

namespace ZTkDb::detail {

// Turns a foreign exception into an Error with `source`: out of memory is 7,
// anything else 51 with the exception's text.
[[noreturn]] void RaiseForeign(const std::exception& e, std::string source);

// Runs the body of a public member so that nothing but ZTkDb::Error leaves
// it: errors raised inside pass on unchanged, anything else (out of memory, a
// standard library failure) becomes an Error with the member as its source.
template <typename F>
decltype(auto) Guard(const char* member, F&& body) {
  try {
    return std::forward<F>(body)();
  } catch (const Error&) {
    throw;
  } catch (const std::exception& e) {
    RaiseForeign(e, member);
  }
}

// The same for members shared by several classes: the source is
// "<cls>.<member>", built only when needed.
template <typename F>
decltype(auto) Guard(const char* cls, const char* member, F&& body) {
  try {
    return std::forward<F>(body)();
  } catch (const Error&) {
    throw;
  } catch (const std::exception& e) {
    RaiseForeign(e, std::string(cls) + "." + member);
  }
}

}  // namespace ZTkDb::detail
