#include "engine/odbc/Utf16.h"

#include "runtime/Raise.h"

namespace ZTkDb::detail {

namespace {

[[noreturn]] void NotUtf8(size_t at) {
  detail::Raise(errOdbcCallFailed, "ZTkDb.ODBC",
                "ODBC--call failed. [22021] The text is not valid UTF-8 (byte " +
                    std::to_string(at + 1) + ").");
}

bool Continuation(std::string_view s, size_t i) {
  return i < s.size() && (static_cast<unsigned char>(s[i]) & 0xC0) == 0x80;
}

}  // namespace

std::basic_string<SQLWCHAR> ToUtf16(std::string_view utf8) {
  std::basic_string<SQLWCHAR> out;
  out.reserve(utf8.size());
  for (size_t i = 0; i < utf8.size();) {
    const auto c = static_cast<unsigned char>(utf8[i]);
    char32_t cp = 0xFFFD;
    size_t len = 1;
    if (c >= 0x80) {
      const size_t need = (c >> 5) == 0x6 ? 2 : (c >> 4) == 0xE ? 3 : (c >> 3) == 0x1E ? 4 : 0;
      if (need == 0) NotUtf8(i);
      for (size_t k = 1; k < need; ++k) {
        if (!Continuation(utf8, i + k)) NotUtf8(i);
      }
    }
    if (c < 0x80) {
      cp = c;
    } else if ((c >> 5) == 0x6 && i + 1 < utf8.size()) {
      cp = ((c & 0x1Fu) << 6) | (static_cast<unsigned char>(utf8[i + 1]) & 0x3Fu);
      len = 2;
    } else if ((c >> 4) == 0xE && i + 2 < utf8.size()) {
      cp = ((c & 0x0Fu) << 12) | ((static_cast<unsigned char>(utf8[i + 1]) & 0x3Fu) << 6) |
           (static_cast<unsigned char>(utf8[i + 2]) & 0x3Fu);
      len = 3;
    } else if ((c >> 3) == 0x1E && i + 3 < utf8.size()) {
      cp = ((c & 0x07u) << 18) | ((static_cast<unsigned char>(utf8[i + 1]) & 0x3Fu) << 12) |
           ((static_cast<unsigned char>(utf8[i + 2]) & 0x3Fu) << 6) |
           (static_cast<unsigned char>(utf8[i + 3]) & 0x3Fu);
      len = 4;
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
