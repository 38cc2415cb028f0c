// One server's lexer (ZTKDB_FUZZ_SERVER: 0 SQLite, 1 PostgreSQL, 2 MariaDB)
// against a plain reference reading of the same server, written separately
// as a character-by-character state machine, with these invariants:
//  - the tokens joined give back the input byte for byte;
//  - where the lexer is certain, it finds a ';' exactly where the reference
//    finds one outside strings, quoted names and comments;
//  - where the reference finds the text ambiguous or unterminated, the lexer
//    is never certain;
//  - any text written through the library's text literal ('...' with ''
//    doubled) reads as exactly one string in this server's reading, also
//    after the engine's rewrite of strings for the server.
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "engine/SqlTokenizer.h"
#include "engine/dialect/ServerDialect.h"
#include "sql/Literals.h"

using namespace ZTkDb::detail;

namespace {

enum Server { kSqlite = 0, kPostgres = 1, kMariaDb = 2 };
constexpr Server kServer = static_cast<Server>(ZTKDB_FUZZ_SERVER);

const ServerDialect& Dialect() {
  switch (kServer) {
    case kSqlite: return SqliteDialect();
    case kPostgres: return PostgresDialect();
    case kMariaDb: return MariaDbDialect();
  }
  return GenericDialect();
}

bool Letter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || (c & 0x80);
}
bool Digit(char c) { return c >= '0' && c <= '9'; }
bool Ident(char c) { return Letter(c) || Digit(c) || c == '$'; }
bool Blank(char c) {
  return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f' || c == '\v';
}

struct Reading {
  std::vector<size_t> semicolons;
  bool unsure = false;
};

// The reference: positions of the ';' the server runs as statement ends.
Reading Reference(std::string_view s) {
  Reading r;
  const size_t n = s.size();
  auto at = [&](size_t i) { return i < n ? s[i] : '\0'; };
  size_t i = 0;
  bool afterWord = false;  // the previous character belongs to a name
  while (i < n) {
    const char c = s[i];
    // Line comments.
    bool dashes = c == '-' && at(i + 1) == '-';
    if (dashes && kServer == kMariaDb) {
      const auto next = static_cast<unsigned char>(at(i + 2));
      dashes = i + 2 >= n || next <= 0x20 || next == 0x7f;
    }
    if (dashes || (c == '#' && kServer == kMariaDb)) {
      while (i < n && s[i] != '\n' && !(kServer == kPostgres && s[i] == '\r')) ++i;
      afterWord = false;
      continue;
    }
    // Block comments.
    if (c == '/' && at(i + 1) == '*') {
      if (kServer == kMariaDb &&
          (at(i + 2) == '!' || ((at(i + 2) | 0x20) == 'm' && at(i + 3) == '!'))) {
        r.unsure = true;
      }
      int depth = 1;
      i += 2;
      while (i < n && depth > 0) {
        if (s[i] == '*' && at(i + 1) == '/') {
          --depth;
          i += 2;
        } else if (s[i] == '/' && at(i + 1) == '*') {
          if (kServer == kPostgres)
            ++depth;
          else
            r.unsure = true;
          i += 2;
        } else {
          ++i;
        }
      }
      if (depth > 0) r.unsure = true;
      afterWord = false;
      continue;
    }
    // Strings, with their prefixes where a token starts.
    const char up = static_cast<char>(c & ~0x20);
    size_t quote = std::string_view::npos;
    bool backslash = false, doubling = true;
    if (c == '\'') {
      quote = i;
    } else if (!afterWord && at(i + 1) == '\'' &&
               ((up == 'E' && kServer == kPostgres) || (up == 'X') ||
                (up == 'B' && kServer != kSqlite) || (up == 'N' && kServer != kSqlite))) {
      quote = i + 1;
      backslash = up == 'E';
      doubling = up != 'X' && up != 'B';
    } else if (!afterWord && kServer == kPostgres && up == 'U' && at(i + 1) == '&' &&
               at(i + 2) == '\'') {
      quote = i + 2;
    }
    if (quote != std::string_view::npos) {
      size_t j = quote + 1;
      for (;;) {
        if (j >= n) {
          r.unsure = true;
          break;
        }
        if (backslash && s[j] == '\\') {
          j += 2;
          continue;
        }
        if (s[j] == '\'') {
          if (doubling && at(j + 1) == '\'') {
            j += 2;
            continue;
          }
          ++j;
          break;
        }
        ++j;
      }
      if (kServer == kPostgres && j < n) {
        // A string continued after a line break is refused, not followed.
        size_t k = j;
        bool lineBreak = false;
        while (k < n && (Blank(s[k]) || (s[k] == '-' && at(k + 1) == '-'))) {
          if (s[k] == '-') {
            while (k < n && s[k] != '\n' && s[k] != '\r') ++k;
            continue;
          }
          lineBreak |= s[k] == '\n' || s[k] == '\r';
          ++k;
        }
        if (lineBreak && at(k) == '\'') r.unsure = true;
      }
      i = j;
      afterWord = false;
      continue;
    }
    // Quoted names.
    char close = 0;
    if (c == '"') close = '"';
    if (c == '`' && kServer != kPostgres) close = '`';
    if (c == '[' && kServer == kSqlite) close = ']';
    if (close) {
      size_t j = i + 1;
      for (;;) {
        if (j >= n) {
          r.unsure = true;
          break;
        }
        if (s[j] == close) {
          if (close != ']' && at(j + 1) == close) {
            j += 2;
            continue;
          }
          ++j;
          break;
        }
        ++j;
      }
      i = j;
      afterWord = false;
      continue;
    }
    // Dollar quotes (PostgreSQL) where a token starts.
    if (kServer == kPostgres && c == '$' && !afterWord) {
      size_t j = i + 1;
      if (Digit(at(j))) {  // a parameter, $1
        while (Digit(at(j))) ++j;
        i = j;
        continue;
      }
      if (Letter(at(j))) {
        while (Letter(at(j)) || Digit(at(j))) ++j;
      }
      if (at(j) == '$' && !Digit(at(i + 1))) {
        const std::string tag(s.substr(i, j + 1 - i));
        const size_t end = s.find(tag, j + 1);
        if (end == std::string_view::npos) {
          r.unsure = true;
          i = n;
        } else {
          i = end + tag.size();
        }
        afterWord = false;
        continue;
      }
    }
    // SQLite's parameters: $ @ : # and a name, the Tcl form name(...).
    // ('$' inside a name continues the name.)
    if (kServer == kSqlite && (c == '@' || c == ':' || c == '#' || (c == '$' && !afterWord))) {
      size_t j = i + 1, len = 0;
      while (j < n) {
        if (Ident(s[j])) {
          ++len;
          ++j;
        } else if (s[j] == '(' && len > 0) {
          while (j < n && !Blank(s[j]) && s[j] != ')') ++j;
          if (j < n && s[j] == ')')
            ++j;
          else
            r.unsure = true;
          break;
        } else if (s[j] == ':' && at(j + 1) == ':') {
          j += 2;
        } else {
          break;
        }
      }
      i = j;
      afterWord = false;
      continue;
    }
    // Numbers where a token starts: digits, a fraction, an exponent.
    if (!afterWord && (Digit(c) || (c == '.' && Digit(at(i + 1))))) {
      while (Digit(at(i))) ++i;
      if (at(i) == '.') {
        ++i;
        while (Digit(at(i))) ++i;
      }
      if (at(i) == 'e' || at(i) == 'E') {
        size_t k = i + 1;
        if (at(k) == '+' || at(k) == '-') ++k;
        if (Digit(at(k))) {
          i = k;
          while (Digit(at(i))) ++i;
        }
      }
      continue;
    }
    if ((c == '{' || c == '}')) r.unsure = true;
    if (c == ';') r.semicolons.push_back(i);
    // A name starts with a letter ('$' too on MariaDB) and goes on with
    // letters, digits and '$'; a number is no name.
    afterWord =
        Letter(c) || ((Digit(c) || c == '$') && afterWord) || (c == '$' && kServer == kMariaDb);
    ++i;
  }
  return r;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  const Lexicon& lexicon = Dialect().Lexical();
  Doubt doubt;
  const std::vector<Token> tokens = Tokenize(input, lexicon, &doubt);
  std::string joined;
  std::vector<size_t> semicolons;
  for (const Token& t : tokens) {
    if (t.kind == TokenKind::kSemicolon) semicolons.push_back(joined.size());
    joined.append(t.text);
  }
  if (joined != input) std::abort();
  const Reading reference = Reference(input);
  if (reference.unsure && !doubt) std::abort();
  if (!doubt && semicolons != reference.semicolons) std::abort();

  // Text through the library's literal: one string, in every reading.
  if (input.find('\0') != std::string_view::npos) return 0;
  const std::string quoted = "'" + TextValue(std::string(input)) + "'";
  Doubt none;
  const auto one = Tokenize(quoted, lexicon, &none);
  if (none || one.size() != 1 || one.front().kind != TokenKind::kString) std::abort();
  if (auto hardened = Dialect().HardenString(one.front())) {
    const auto again = Tokenize(*hardened, lexicon, &none);
    if (none || again.size() != 1 || again.front().kind != TokenKind::kString) std::abort();
  }
  return 0;
}
