#pragma once

#include <sql.h>
#include <sqlext.h>

#include <string>
#include <string_view>

namespace ZTkDb::detail {

// unixODBC's SQLWCHAR is UTF-16. The library speaks UTF-8; the wide entry
// points are used so that no driver manager or driver guesses a charset
// from the process locale.
// Raises 3146 ("[22021]", with the byte's position) for bytes that are not
// well-formed UTF-8, overlong forms and encoded surrogates included: a driver
// would otherwise store other characters than the text given, or read a
// quote the lexer never saw.
std::basic_string<SQLWCHAR> ToUtf16(std::string_view utf8);
std::string ToUtf8(const SQLWCHAR* text, size_t units);
// Appends the UTF-8 form of `units` UTF-16 units to `out`.
void AppendUtf8(std::string& out, const SQLWCHAR* text, size_t units);
inline std::string ToUtf8(const std::basic_string<SQLWCHAR>& text) {
  return ToUtf8(text.data(), text.size());
}

}  // namespace ZTkDb::detail
