#pragma once

#include <string>
#include <string_view>

namespace ZTkDb::detail {

// `text` with each `quote` in it doubled: how every server reads a quote
// inside a string ('…') or a quoted name ("…", `…`). The one place quotes
// are doubled. Runs between quotes are copied whole: most texts hold none.
inline void AppendDoubled(std::string& out, std::string_view text, char quote) {
  size_t from = 0;
  for (size_t q = text.find(quote); q != std::string_view::npos; q = text.find(quote, from)) {
    out.append(text.substr(from, q + 1 - from));
    out += quote;
    from = q + 1;
  }
  out.append(text.substr(from));
}

// The same between two `quote`s.
inline std::string Quoted(std::string_view text, char quote) {
  std::string out(1, quote);
  out.reserve(text.size() + 2);
  AppendDoubled(out, text, quote);
  return out += quote;
}

}  // namespace ZTkDb::detail
