#include "engine/SqlTokenizer.h"

#include <cctype>
#include <cstdio>
#include <strings.h>

#include "ztkdb/Date.h"

namespace ZTkDb::detail {
namespace {

// ASCII classes without the locale: names are scanned a byte at a time.
bool IsWordChar(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
         c == '$' || static_cast<unsigned char>(c) >= 0x80;
}

// One component of an identifier: a word, [bracketed] or "quoted".
size_t ScanNamePart(std::string_view s, size_t i) {
  if (i >= s.size()) return i;
  if (s[i] == '[') {
    size_t end = s.find(']', i + 1);
    return end == std::string_view::npos ? s.size() : end + 1;
  }
  if (s[i] == '"') {
    size_t j = i + 1;
    while (j < s.size()) {
      if (s[j] == '"') {
        if (j + 1 < s.size() && s[j + 1] == '"') {
          j += 2;
          continue;
        }
        return j + 1;
      }
      ++j;
    }
    return s.size();
  }
  size_t j = i;
  while (j < s.size() && IsWordChar(s[j])) ++j;
  return j;
}

bool StartsName(char c) {
  return c == '[' || c == '"' || (IsWordChar(c) && !std::isdigit(static_cast<unsigned char>(c)));
}

size_t ScanIdentifier(std::string_view s, size_t i) {
  size_t j = ScanNamePart(s, i);
  while (j + 1 < s.size() && s[j] == '.') {
    if (s[j + 1] == '*') return j + 2;
    if (!StartsName(s[j + 1])) break;
    j = ScanNamePart(s, j + 1);
  }
  return j;
}

size_t ScanString(std::string_view s, size_t i) {
  size_t j = i + 1;
  while (j < s.size()) {
    if (s[j] == '\'') {
      if (j + 1 < s.size() && s[j + 1] == '\'') {
        j += 2;
        continue;
      }
      return j + 1;
    }
    ++j;
  }
  return s.size();
}

size_t ScanNumber(std::string_view s, size_t i) {
  size_t j = i;
  auto digits = [&] {
    while (j < s.size() && std::isdigit(static_cast<unsigned char>(s[j]))) ++j;
  };
  digits();
  if (j < s.size() && s[j] == '.') {
    ++j;
    digits();
  }
  if (j < s.size() && (s[j] == 'e' || s[j] == 'E')) {
    size_t k = j + 1;
    if (k < s.size() && (s[k] == '+' || s[k] == '-')) ++k;
    if (k < s.size() && std::isdigit(static_cast<unsigned char>(s[k]))) {
      j = k;
      digits();
    }
  }
  return j;
}

// A Jet date literal: '#', a date text without line breaks, '#'.
size_t ScanJetDate(std::string_view s, size_t i) {
  size_t end = s.find('#', i + 1);
  if (end == std::string_view::npos || end - i > 40) return i;
  std::string inner(s.substr(i + 1, end - i - 1));
  Date parsed;
  if (!Date::TryParse(inner, parsed)) {
    // Jet's own US form m/d/yyyy is accepted as well.
    int m = 0, d = 0, y = 0;
    char tail = 0;
    if (std::sscanf(inner.c_str(), "%d/%d/%d%c", &m, &d, &y, &tail) != 3) return i;
  }
  return end + 1;
}

}  // namespace

std::vector<Token> Tokenize(std::string_view s) {
  std::vector<Token> tokens;
  tokens.reserve(s.size() / 4 + 8);
  size_t i = 0;
  while (i < s.size()) {
    const char c = s[i];
    size_t j = i + 1;
    TokenKind kind = TokenKind::kOther;
    if (c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\f' || c == '\v') {
      while (j < s.size() && std::isspace(static_cast<unsigned char>(s[j]))) ++j;
      kind = TokenKind::kSpace;
    } else if (c == '-' && j < s.size() && s[j] == '-') {
      size_t end = s.find('\n', i);
      j = end == std::string_view::npos ? s.size() : end;
      kind = TokenKind::kComment;
    } else if (c == '/' && j < s.size() && s[j] == '*') {
      size_t end = s.find("*/", i + 2);
      j = end == std::string_view::npos ? s.size() : end + 2;
      kind = TokenKind::kComment;
    } else if (c == '\'') {
      j = ScanString(s, i);
      kind = TokenKind::kString;
    } else if (c == '#') {
      j = ScanJetDate(s, i);
      if (j == i) j = i + 1;
      else kind = TokenKind::kJetDate;
    } else if (std::isdigit(static_cast<unsigned char>(c)) ||
               (c == '.' && j < s.size() && std::isdigit(static_cast<unsigned char>(s[j])))) {
      j = ScanNumber(s, i);
      kind = TokenKind::kNumber;
    } else if (StartsName(c)) {
      j = ScanIdentifier(s, i);
      kind = TokenKind::kIdentifier;
    } else if (c == '(') {
      kind = TokenKind::kLParen;
    } else if (c == ')') {
      kind = TokenKind::kRParen;
    } else if (c == ',') {
      kind = TokenKind::kComma;
    } else if (c == ';') {
      kind = TokenKind::kSemicolon;
    } else if (c == '<' || c == '>' || c == '=' || c == '!') {
      if (j < s.size() && (s[j] == '=' || (c == '<' && s[j] == '>'))) ++j;
      kind = TokenKind::kOperator;
    } else if (c == '+' || c == '-' || c == '*' || c == '/' || c == '%' || c == '|' || c == '&') {
      kind = TokenKind::kOperator;
    }
    tokens.push_back({kind, s.substr(i, j - i)});
    i = j;
  }
  return tokens;
}

bool IsKeyword(const Token& t, std::string_view keyword) {
  return t.kind == TokenKind::kIdentifier && t.text.size() == keyword.size() &&
         strncasecmp(t.text.data(), keyword.data(), keyword.size()) == 0;
}

std::string StringValue(const Token& t) {
  std::string out;
  std::string_view body = t.text.substr(1);
  if (!body.empty() && body.back() == '\'') body.remove_suffix(1);
  for (size_t i = 0; i < body.size(); ++i) {
    out += body[i];
    if (body[i] == '\'' && i + 1 < body.size() && body[i + 1] == '\'') ++i;
  }
  return out;
}

std::string ColumnName(const Token& t, std::string* qualifier) {
  std::string_view text = t.text;
  // The usual name has no brackets or quotes: split at its last dot.
  bool plain = true;
  for (char c : text) plain &= c != '[' && c != '"';
  if (plain) {
    const size_t dot = text.rfind('.');
    if (qualifier) qualifier->assign(dot == std::string_view::npos ? std::string_view() : text.substr(0, dot));
    return std::string(dot == std::string_view::npos ? text : text.substr(dot + 1));
  }
  std::vector<std::string> parts;
  size_t i = 0;
  while (i < text.size()) {
    size_t j = ScanNamePart(text, i);
    if (j == i) j = i + 1;
    std::string_view part = text.substr(i, j - i);
    if (part.size() >= 2 && (part.front() == '[' || part.front() == '"')) {
      part = part.substr(1, part.size() - 2);
    }
    parts.emplace_back(part);
    i = j;
    if (i < text.size() && text[i] == '.') ++i;
  }
  if (parts.empty()) return {};
  if (qualifier) {
    qualifier->clear();
    for (size_t k = 0; k + 1 < parts.size(); ++k) {
      if (k) *qualifier += '.';
      *qualifier += parts[k];
    }
  }
  return parts.back();
}

}  // namespace ZTkDb::detail
