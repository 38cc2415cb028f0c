#include "engine/SqlTokenizer.h"

#include <strings.h>

#include <cctype>
#include <cstdio>
#include <cstring>

#include "ztkdb/Date.h"

namespace ZTkDb::detail {
namespace {

bool IsAsciiLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsHigh(char c) { return static_cast<unsigned char>(c) >= 0x80; }
// What each byte is, by a table: every byte of every statement asks.
// Words run on through letters, digits, '_', '$' and every byte of a
// multi-byte character; blanks are the six of C's isspace.
struct ByteClasses {
  bool word[256] = {};
  bool blank[256] = {};
  constexpr ByteClasses() {
    for (int c = 0; c < 256; ++c) {
      word[c] = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
                c == '_' || c == '$' || c >= 0x80;
      blank[c] = c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\f' || c == '\v';
    }
  }
};
constexpr ByteClasses kBytes;

bool IsBlank(char c) { return kBytes.blank[static_cast<unsigned char>(c)]; }

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

// One pass over a statement in one server's reading. Each Scan* function
// starts at the first character of its construct and returns the index just
// past it.
class Scanner {
 public:
  Scanner(std::string_view s, const Lexicon& lx, Doubt* doubt) : s_(s), lx_(lx), doubt_(doubt) {}

  void Run(std::vector<Token>& tokens) {
    tokens.clear();
    tokens.reserve(s_.size() / 4 + 8);
    size_t i = 0;
    while (i < s_.size()) {
      TokenKind kind = TokenKind::kOther;
      const size_t j = ScanToken(i, kind);
      tokens.push_back({kind, s_.substr(i, j - i)});
      i = j;
    }
  }

 private:
  void Suspect(const char* reason, size_t at) {
    if (doubt_ && !*doubt_) {
      doubt_->reason = std::string(reason) + " (" + lx_.server + " reading)";
      doubt_->offset = at;
    }
  }

  char At(size_t i) const { return i < s_.size() ? s_[i] : '\0'; }

  static bool WordChar(char c) { return kBytes.word[static_cast<unsigned char>(c)]; }
  bool StartsWord(char c) const {
    // '$' opens a dollar quote or a parameter where those exist.
    if (c == '$') return !lx_.dollar_quotes && !lx_.sqlite_variables;
    return IsAsciiLetter(c) || c == '_' || IsHigh(c);
  }
  bool QuotesName(char c) const {
    return (c == '[' && lx_.bracket_names) || (c == '"' && !lx_.double_quote_strings) ||
           (c == '`' && lx_.backtick_names);
  }

  size_t ScanToken(size_t i, TokenKind& kind) {
    const char c = s_[i];
    const char next = At(i + 1);
    if (IsBlank(c)) {
      size_t j = i + 1;
      while (j < s_.size() && IsBlank(s_[j])) ++j;
      kind = TokenKind::kSpace;
      return j;
    }
    if (*lx_.refuse_outside_strings != '\0' && c != '\0' &&
        std::strchr(lx_.refuse_outside_strings, c) != nullptr) {
      Suspect("a character whose meaning depends on the server", i);
    }
    // Most tokens are names and punctuation. A letter opens nothing but a
    // name unless a quote or '&' follows it (a prefixed string), and these
    // five characters open nothing at all in any lexicon: both are settled
    // before the chain of constructs below is asked.
    if ((IsAsciiLetter(c) || c == '_' || IsHigh(c)) && next != '\'' && next != '&') {
      kind = TokenKind::kIdentifier;
      return ScanIdentifier(i);
    }
    switch (c) {
      case ',': kind = TokenKind::kComma; return i + 1;
      case '(': kind = TokenKind::kLParen; return i + 1;
      case ')': kind = TokenKind::kRParen; return i + 1;
      case ';': kind = TokenKind::kSemicolon; return i + 1;
      case '=': kind = TokenKind::kOperator; return i + (next == '=' ? 2 : 1);
      default: break;
    }
    if (c == '-' && next == '-' && LineCommentAfterDashes(i)) {
      kind = TokenKind::kComment;
      return LineCommentEnd(i);
    }
    if (c == '/' && next == '*') {
      kind = TokenKind::kComment;
      return ScanBlockComment(i);
    }
    if (c == '#' && lx_.jet_dates) {
      const size_t j = ScanJetDate(s_, i);
      if (j != i) {
        kind = TokenKind::kJetDate;
        return j;
      }
    }
    if (c == '#' && lx_.hash_comments) {
      kind = TokenKind::kComment;
      return LineCommentEnd(i);
    }
    if (c == '\'') {
      kind = TokenKind::kString;
      return ScanQuotedString(i, i, lx_.backslash_strings);
    }
    if (c == '"' && lx_.double_quote_strings) {
      kind = TokenKind::kString;
      return ScanDelimited(i, '"', true, lx_.backslash_strings, "a string that is never closed");
    }
    if (size_t j = ScanPrefixedString(i); j != i) {
      kind = TokenKind::kString;
      return j;
    }
    if (c == '$' && lx_.dollar_quotes) return ScanDollar(i, kind);
    if (lx_.sqlite_variables && (c == '$' || c == '@' || c == ':' || c == '#')) {
      return ScanSqliteVariable(i);
    }
    if (IsDigit(c) || (c == '.' && IsDigit(next))) {
      kind = TokenKind::kNumber;
      return ScanNumber(i);
    }
    if (StartsWord(c) || QuotesName(c)) {
      kind = TokenKind::kIdentifier;
      return ScanIdentifier(i);
    }
    if ((c == '{' || c == '}') && lx_.refuse_braces) {
      Suspect("an ODBC escape the driver would rewrite", i);
    }
    // Punctuation that opens nothing was settled above.
    switch (c) {
      case '<':
      case '>':
      case '!':
        kind = TokenKind::kOperator;
        return i + ((next == '=' || (c == '<' && next == '>')) ? 2 : 1);
      case '+':
      case '-':
      case '*':
      case '/':
      case '%':
      case '|':
      case '&': kind = TokenKind::kOperator; return i + 1;
      default: return i + 1;
    }
  }

  bool LineCommentAfterDashes(size_t i) const {
    if (!lx_.dash_comment_needs_blank) return true;
    // MySQL: "--" followed by a blank or a control character, or at the end.
    const auto after = static_cast<unsigned char>(At(i + 2));
    return i + 2 >= s_.size() || after <= 0x20 || after == 0x7f;
  }

  size_t LineCommentEnd(size_t i) const {
    size_t j = i;
    while (j < s_.size() && s_[j] != '\n' && !(lx_.comment_ends_at_cr && s_[j] == '\r')) ++j;
    return j;
  }

  size_t ScanBlockComment(size_t i) {
    if (lx_.executable_comments &&
        (At(i + 2) == '!' || ((At(i + 2) == 'M' || At(i + 2) == 'm') && At(i + 3) == '!'))) {
      // Code or comment depending on the server's version: no certain reading.
      Suspect("an executable comment /*! ... */", i);
    }
    int depth = 1;
    size_t j = i + 2;
    while (j < s_.size()) {
      if (s_[j] == '*' && At(j + 1) == '/') {
        j += 2;
        if (--depth == 0) return j;
        continue;
      }
      if (s_[j] == '/' && At(j + 1) == '*') {
        if (lx_.nested_comments) {
          ++depth;
          j += 2;
          continue;
        }
        // Some servers nest comments, some do not; the library writes none.
        Suspect("a comment opened inside a comment", j);
      }
      ++j;
    }
    Suspect("a comment that is never closed", i);
    return s_.size();
  }

  // A quoted run from `open` (the opening delimiter) with the delimiter
  // doubled inside where `doubling`, and backslash escapes where `backslash`.
  size_t ScanDelimited(size_t open, char close, bool doubling, bool backslash,
                       const char* unclosed) {
    size_t j = open + 1;
    while (j < s_.size()) {
      if (!backslash) {
        // Only the delimiter matters: the library's values run long.
        const void* at = std::memchr(s_.data() + j, close, s_.size() - j);
        if (at == nullptr) break;
        j = static_cast<size_t>(static_cast<const char*>(at) - s_.data());
      }
      const char c = s_[j];
      if (backslash && c == '\\') {
        j += 2;
        continue;
      }
      if (c == close) {
        if (doubling && At(j + 1) == close) {
          j += 2;
          continue;
        }
        return j + 1;
      }
      ++j;
    }
    Suspect(unclosed, open);
    return s_.size();
  }

  // '...' at `quote`, the token starting at `start` (before any prefix).
  size_t ScanQuotedString(size_t start, size_t quote, bool backslash, bool doubling = true) {
    const size_t end =
        ScanDelimited(quote, '\'', doubling, backslash, "a string that is never closed");
    if (lx_.string_continuation && end < s_.size()) CheckContinuation(start, end);
    if (lx_.ambiguous_backslashes && !backslash &&
        s_.substr(quote, end - quote).find('\\') != std::string_view::npos) {
      Doubt ignored;
      if (Scanner(s_, lx_, &ignored).ScanDelimited(quote, '\'', doubling, true, "") != end) {
        Suspect("a string whose end depends on whether a backslash escapes", start);
      }
    }
    return end;
  }

  // PostgreSQL joins 'a' <blanks with a line break> 'b' into one string, read
  // in the first one's mode; the library never writes that, and reading it
  // right would mean following the mode across lines, so it is refused.
  void CheckContinuation(size_t start, size_t end) {
    size_t j = end;
    bool lineBreak = false;
    while (j < s_.size()) {
      if (IsBlank(s_[j])) {
        lineBreak |= s_[j] == '\n' || s_[j] == '\r';
        ++j;
      } else if (s_[j] == '-' && At(j + 1) == '-') {
        j = LineCommentEnd(j);
      } else {
        break;
      }
    }
    if (lineBreak && At(j) == '\'') Suspect("a string continued on the next line", start);
  }

  // Whether a prefixed string (below) starts at i.
  bool StartsPrefixedString(size_t i) const {
    if (At(i + 1) != '\'' && At(i + 1) != '&') return false;
    const char up = static_cast<char>(std::toupper(static_cast<unsigned char>(At(i))));
    if (At(i + 1) == '\'') {
      return (up == 'E' && lx_.e_strings) || (up == 'X' && lx_.hex_strings) ||
             (up == 'B' && lx_.bit_strings) || (up == 'N' && lx_.national_strings);
    }
    return up == 'U' && lx_.unicode_strings && At(i + 1) == '&' && At(i + 2) == '\'';
  }

  // E'...', X'...', B'...', N'...', U&'...' where the lexicon knows them.
  size_t ScanPrefixedString(size_t i) {
    if (At(i + 1) != '\'' && At(i + 1) != '&') return i;  // the usual word
    const char c = s_[i];
    const char up = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    if (At(i + 1) == '\'') {
      if (up == 'E' && lx_.e_strings) return ScanQuotedString(i, i + 1, true);
      if ((up == 'X' && lx_.hex_strings) || (up == 'B' && lx_.bit_strings)) {
        return ScanQuotedString(i, i + 1, false, false);
      }
      if (up == 'N' && lx_.national_strings) {
        return ScanQuotedString(i, i + 1, lx_.backslash_strings);
      }
    }
    if (up == 'U' && lx_.unicode_strings && At(i + 1) == '&' && At(i + 2) == '\'') {
      return ScanQuotedString(i, i + 2, false);
    }
    return i;
  }

  // PostgreSQL: $tag$...$tag$, $1 (a parameter), or a lone '$'.
  size_t ScanDollar(size_t i, TokenKind& kind) {
    size_t j = i + 1;
    if (IsDigit(At(j))) {
      while (IsDigit(At(j))) ++j;
      return j;
    }
    if (IsAsciiLetter(At(j)) || At(j) == '_' || IsHigh(At(j))) {
      while (IsAsciiLetter(At(j)) || IsDigit(At(j)) || At(j) == '_' || IsHigh(At(j))) ++j;
    }
    if (At(j) != '$') return i + 1;
    const std::string_view delimiter = s_.substr(i, j + 1 - i);
    kind = TokenKind::kString;
    const size_t close = s_.find(delimiter, j + 1);
    if (close == std::string_view::npos) {
      Suspect("a dollar-quoted text that is never closed", i);
      return s_.size();
    }
    return close + delimiter.size();
  }

  // SQLite: $name, @name, :name, #name, with "::" inside and the Tcl form
  // name(...) running to the next blank or ')'.
  size_t ScanSqliteVariable(size_t i) {
    size_t j = i + 1;
    size_t n = 0;
    while (j < s_.size()) {
      const char c = s_[j];
      if (WordChar(c)) {
        ++n;
        ++j;
      } else if (c == '(' && n > 0) {
        do {
          ++j;
        } while (j < s_.size() && !IsBlank(s_[j]) && s_[j] != ')');
        if (At(j) == ')') return j + 1;
        Suspect("a parameter name that is never closed", i);
        return j;
      } else if (c == ':' && At(j + 1) == ':') {
        j += 2;
      } else {
        break;
      }
    }
    return j;
  }

  size_t ScanNumber(size_t i) const {
    size_t j = i;
    auto digits = [&] {
      while (j < s_.size() && IsDigit(s_[j])) ++j;
    };
    digits();
    if (At(j) == '.') {
      ++j;
      digits();
    }
    if (At(j) == 'e' || At(j) == 'E') {
      size_t k = j + 1;
      if (At(k) == '+' || At(k) == '-') ++k;
      if (IsDigit(At(k))) {
        j = k;
        digits();
      }
    }
    return j;
  }

  // One component of an identifier: a word, or a quoted name.
  size_t ScanNamePart(size_t i) {
    const char c = s_[i];
    if (WordChar(c)) {
      size_t j = i + 1;
      while (j < s_.size() && WordChar(s_[j])) ++j;
      return j;
    }
    if (c == '[' && lx_.bracket_names) {
      const size_t end = s_.find(']', i + 1);
      if (end != std::string_view::npos) return end + 1;
      Suspect("a quoted name that is never closed", i);
      return s_.size();
    }
    if (c == '"' && !lx_.double_quote_strings) {
      return ScanDelimited(i, '"', true, false, "a quoted name that is never closed");
    }
    if (c == '`' && lx_.backtick_names)
      return ScanDelimited(i, '`', true, false, "a quoted name that is never closed");
    size_t j = i;
    while (j < s_.size() && WordChar(s_[j])) ++j;
    return j;
  }

  size_t ScanIdentifier(size_t i) {
    size_t j = ScanNamePart(i);
    while (j + 1 < s_.size() && s_[j] == '.') {
      if (s_[j + 1] == '*') return j + 2;
      const char c = s_[j + 1];
      // "t.E'x'" is a name, a dot and a string.
      if ((!StartsWord(c) && !QuotesName(c)) || StartsPrefixedString(j + 1)) break;
      j = ScanNamePart(j + 1);
    }
    return j;
  }

  std::string_view s_;
  const Lexicon& lx_;
  Doubt* doubt_;
};

// The library's own reading of plain names, for ColumnName: words, [..], "..", `..`.
size_t ScanPlainNamePart(std::string_view text, size_t i) {
  const char c = text[i];
  if (c == '[' || c == '"' || c == '`') {
    const char close = c == '[' ? ']' : c;
    size_t j = i + 1;
    while (j < text.size()) {
      if (text[j] == close) {
        if (close != ']' && j + 1 < text.size() && text[j + 1] == close) {
          j += 2;
          continue;
        }
        return j + 1;
      }
      ++j;
    }
    return text.size();
  }
  size_t j = i;
  while (j < text.size() && text[j] != '.' && text[j] != '[' && text[j] != '"' && text[j] != '`')
    ++j;
  return j;
}

}  // namespace

std::vector<Token> Tokenize(std::string_view sql, const Lexicon& lexicon, Doubt* doubt) {
  std::vector<Token> tokens;
  Scanner(sql, lexicon, doubt).Run(tokens);
  return tokens;
}

void Tokenize(std::string_view sql, const Lexicon& lexicon, std::vector<Token>& tokens,
              Doubt* doubt) {
  Scanner(sql, lexicon, doubt).Run(tokens);
}

std::string StringValue(const Token& t) {
  std::string out;
  StringValueInto(t, out);
  return out;
}

void StringValueInto(const Token& t, std::string& out) {
  std::string_view body = t.text.substr(t.text.find('\'') + 1);
  if (!body.empty() && body.back() == '\'') body.remove_suffix(1);
  // Runs between quotes copied whole: an update's values come this way.
  out.clear();
  out.reserve(body.size());
  size_t from = 0;
  for (size_t q = body.find('\''); q != std::string_view::npos; q = body.find('\'', from)) {
    out.append(body.substr(from, q + 1 - from));
    from = q + 1;
    if (from < body.size() && body[from] == '\'') ++from;
  }
  out.append(body.substr(from));
}

std::string ColumnName(const Token& t, std::string* qualifier) {
  std::string_view text = t.text;
  // The usual name has no quotes: split at its last dot.
  bool plain = true;
  for (char c : text) plain &= c != '[' && c != '"' && c != '`';
  if (plain) {
    const size_t dot = text.rfind('.');
    if (qualifier)
      qualifier->assign(dot == std::string_view::npos ? std::string_view() : text.substr(0, dot));
    return std::string(dot == std::string_view::npos ? text : text.substr(dot + 1));
  }
  std::vector<std::string> parts;
  size_t i = 0;
  while (i < text.size()) {
    size_t j = ScanPlainNamePart(text, i);
    if (j == i) j = i + 1;
    std::string_view part = text.substr(i, j - i);
    if (part.size() >= 2 && (part.front() == '[' || part.front() == '"' || part.front() == '`')) {
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
