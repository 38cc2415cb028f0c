#include "engine/odbc/Utf16.h"

#include "runtime/Raise.h"

namespace ZTkDb::detail {

namespace {

[[noreturn]] void NotUtf8(size_t at) {
  detail::Raise(errOdbcCallFailed, "ZTkDb.ODBC",
                "ODBC--call failed. [22021] The text is not valid UTF-8 (byte " +
                    std::to_string(at + 1) + ").");
}

// The length of the well-formed UTF-8 sequence at `i`, or 0. Only the
// shortest form of a scalar value is accepted: an overlong form (C0 A7 for a
// quote, C0 80 for a NUL), an encoded surrogate or a value past U+10FFFF
// would read as one character to the lexer, which sees bytes, and as another
// to a driver that decodes them leniently.
size_t SequenceAt(std::string_view s, size_t i) {
  const auto at = [&](size_t k) { return static_cast<unsigned char>(s[i + k]); };
  const auto c = at(0);
  if (c < 0x80) return 1;
  size_t need = 0;
  unsigned char low = 0x80, high = 0xBF;  // the second byte's range
  if (c >= 0xC2 && c <= 0xDF) {
    need = 2;
  } else if (c >= 0xE0 && c <= 0xEF) {
    need = 3;
    if (c == 0xE0) low = 0xA0;
    if (c == 0xED) high = 0x9F;
  } else if (c >= 0xF0 && c <= 0xF4) {
    need = 4;
    if (c == 0xF0) low = 0x90;
    if (c == 0xF4) high = 0x8F;
  } else {
    return 0;
  }
  if (i + need > s.size() || at(1) < low || at(1) > high) return 0;
  for (size_t k = 2; k < need; ++k) {
    if ((at(k) & 0xC0) != 0x80) return 0;
  }
  return need;
}

}  // namespace

std::basic_string<SQLWCHAR> ToUtf16(std::string_view utf8) {
  std::basic_string<SQLWCHAR> out;
  out.reserve(utf8.size());
  for (size_t i = 0; i < utf8.size();) {
    const size_t len = SequenceAt(utf8, i);
    if (len == 0) NotUtf8(i);
    const auto b = [&](size_t k) {
      return static_cast<char32_t>(static_cast<unsigned char>(utf8[i + k]));
    };
    char32_t cp = 0;
    switch (len) {
      case 1: cp = b(0); break;
      case 2: cp = ((b(0) & 0x1F) << 6) | (b(1) & 0x3F); break;
      case 3: cp = ((b(0) & 0x0F) << 12) | ((b(1) & 0x3F) << 6) | (b(2) & 0x3F); break;
      default:
        cp = ((b(0) & 0x07) << 18) | ((b(1) & 0x3F) << 12) | ((b(2) & 0x3F) << 6) | (b(3) & 0x3F);
    }
    i += len;
    if (cp >= 0x10000) {
      cp -= 0x10000;
      out.push_back(static_cast<SQLWCHAR>(0xD800 + (cp >> 10)));
      out.push_back(static_cast<SQLWCHAR>(0xDC00 + (cp & 0x3FF)));
    } else {
      out.push_back(static_cast<SQLWCHAR>(cp));
    }
  }
  return out;
}

std::string ToUtf8(const SQLWCHAR* text, size_t units) {
  std::string out;
  AppendUtf8(out, text, units);
  return out;
}

void AppendUtf8(std::string& out, const SQLWCHAR* text, size_t units) {
  out.reserve(out.size() + units);
  for (size_t i = 0; i < units; ++i) {
    char32_t cp = text[i];
    if (cp >= 0xD800 && cp < 0xDC00 && i + 1 < units && text[i + 1] >= 0xDC00 &&
        text[i + 1] < 0xE000) {
      cp = 0x10000 + ((cp - 0xD800) << 10) + (text[i + 1] - 0xDC00);
      ++i;
    }
    if (cp < 0x80) {
      out.push_back(static_cast<char>(cp));
    } else if (cp < 0x800) {
      out.push_back(static_cast<char>(0xC0 | (cp >> 6)));
      out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
    } else if (cp < 0x10000) {
      out.push_back(static_cast<char>(0xE0 | (cp >> 12)));
      out.push_back(static_cast<char>(0x80 | ((cp >> 6) & 0x3F)));
      out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
    } else {
      out.push_back(static_cast<char>(0xF0 | (cp >> 18)));
      out.push_back(static_cast<char>(0x80 | ((cp >> 12) & 0x3F)));
      out.push_back(static_cast<char>(0x80 | ((cp >> 6) & 0x3F)));
      out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
    }
  }
}

}  // namespace ZTkDb::detail
