#pragma once

#include <exception>
#include <new>
#include <utility>

#include "runtime/Raise.h"

namespace ZTkDb::detail {

// Runs the body of a public member so that nothing but ZTkDb::Error leaves
// it: errors raised inside pass on unchanged, anything else (out of memory, a
// standard library failure) becomes an Error with the member as its source.
template <typename F>
decltype(auto) Guard(const char* member, F&& body) {
  try {
    return std::forward<F>(body)();
  } catch (const Error&) {
    throw;
  } catch (const std::bad_alloc&) {
    Raise(7, member, "Out of memory");
  } catch (const std::exception& e) {
    Raise(51, member, std::string("Internal error: ") + e.what());
  }
}

}  // namespace ZTkDb::detail
