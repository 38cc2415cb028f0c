#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace ZTkDb::detail {

enum class TokenKind {
  kSpace,       // blanks, tabs, line breaks
  kComment,     // a line comment, or a block comment
  kIdentifier,  // name, [name], "name", `name`, dotted, possibly ending in .*
  kString,      // '...' (possibly with a prefix such as E, X, U&) or a dollar-quoted text
  kNumber,
  kJetDate,   // #...# whose contents read as a date (the library's own form)
  kOperator,  // = <> != < <= > >= and other operator characters
  kLParen,
  kRParen,
  kComma,
  kSemicolon,
  kOther,
};

struct Token {
  TokenKind kind;
  std::string_view text;  // a view into the tokenized statement
};

// How one server reads the text of a statement: what opens and closes its
// strings, quoted names and comments. These alone decide where a statement
// ends, so they must be the server's own rules exactly; names, numbers and
// operators read alike everywhere as far as that is concerned.
struct Lexicon {
  const char* server = "SQL";
  // #...# date literals of the library's own statements, rewritten by the
  // engine before anything reaches a server.
  bool jet_dates = false;
  // [name] is a quoted name (SQLite, Jet). Elsewhere '[' is a bracket.
  bool bracket_names = false;
  // `name` is a quoted name with `` inside (MySQL, MariaDB, SQLite).
  bool backtick_names = false;
  // "..." is a string rather than a name (MySQL, MariaDB); it ends where a
  // quoted name would, so only the token's kind differs.
  bool double_quote_strings = false;
  // Backslash escapes inside every '...' (MySQL without NO_BACKSLASH_ESCAPES,
  // PostgreSQL with standard_conforming_strings off). The library sets up its
  // sessions so that no server it knows reads strings this way; the flag
  // exists for the reference readings the lexers are checked against.
  bool backslash_strings = false;
  // E'...' with backslash escapes (PostgreSQL).
  bool e_strings = false;
  // $tag$...$tag$ (PostgreSQL); elsewhere '$' is a name character.
  bool dollar_quotes = false;
  // X'...' (and B'... where bit_strings) end at the next quote: no ''
  // inside (PostgreSQL, MySQL, SQLite).
  bool hex_strings = false;
  bool bit_strings = false;
  // N'...' and U&'...' are strings with a prefix (PostgreSQL, MySQL N'').
  bool national_strings = false;
  bool unicode_strings = false;
  // PostgreSQL: 'a' followed by blanks holding a line break and 'b' is one
  // string continued, in the first one's mode.
  bool string_continuation = false;
  // A line comment ends at a carriage return too, not only at a line feed
  // (PostgreSQL).
  bool comment_ends_at_cr = false;
  // /* /* */ */ nests (PostgreSQL).
  bool nested_comments = false;
  // # to the end of the line is a comment (MySQL, MariaDB).
  bool hash_comments = false;
  // "--" starts a comment only before a blank or control character (MySQL).
  bool dash_comment_needs_blank = false;
  // /*! ... */ and /*M! ... */ are code, conditionally on a version (MySQL,
  // MariaDB): refused, since what they hold depends on the server's version.
  bool executable_comments = false;
  // $name, @name, :name, #name are parameters, with SQLite's Tcl form
  // $name(...) running to the next blank or ')'.
  bool sqlite_variables = false;
  // ODBC escapes { ... } are rewritten by the driver before the server reads
  // the text; where the library never sends them they are refused.
  bool refuse_braces = false;
  // Characters that mean different things on different servers, refused
  // outside strings where the server is not known (a generic ODBC source).
  const char* refuse_outside_strings = "";
  // A string whose end depends on whether a backslash escapes is refused
  // (a server whose string rules are not known).
  bool ambiguous_backslashes = false;

  bool operator==(const Lexicon&) const = default;
};

// Whether `text` reads the same in both lexicons without being read twice:
// they are the same, or differ only in Jet dates and refused braces and the
// text has no '#', '{' or '}'.
inline bool ReadAlike(const Lexicon& a, const Lexicon& b, std::string_view text) {
  if (&a == &b) return true;
  Lexicon other = b;
  other.jet_dates = a.jet_dates;
  other.refuse_braces = a.refuse_braces;
  other.server = a.server;  // a name for messages only
  if (!(other == a)) return false;
  for (char c : text) {
    if (c == '#' || c == '{' || c == '}') return false;
  }
  return true;
}

// The library's own reading (Jet forms on top of SQLite's rules), used where
// no server is involved.
const Lexicon& LibraryLexicon();

// Why a text cannot be read with certainty; empty when it can.
struct Doubt {
  std::string reason;
  size_t offset = 0;
  explicit operator bool() const { return !reason.empty(); }
};

// Splits a statement into tokens that, joined, give back the statement byte
// for byte. Never fails: what it does not recognise becomes kOther. A string,
// quoted name or comment left open, or a construct the lexicon refuses, is
// reported in `doubt` (the first one), when given.
std::vector<Token> Tokenize(std::string_view sql, const Lexicon& lexicon, Doubt* doubt = nullptr);
inline std::vector<Token> Tokenize(std::string_view sql) { return Tokenize(sql, LibraryLexicon()); }
// The same into `tokens`, whose memory is reused: a statement of a few
// kilobytes has hundreds of tokens, and a fresh block that size costs the
// allocator more than the reading does.
void Tokenize(std::string_view sql, const Lexicon& lexicon, std::vector<Token>& tokens,
              Doubt* doubt);

// True for the tokens that carry no meaning (space, comments).
inline bool IsTrivia(const Token& t) {
  return t.kind == TokenKind::kSpace || t.kind == TokenKind::kComment;
}

// Index of the next (or previous) meaningful token after (before) `i`, or -1.
inline long NextSig(const std::vector<Token>& t, long i) {
  for (++i; i < static_cast<long>(t.size()); ++i) {
    if (!IsTrivia(t[static_cast<size_t>(i)])) return i;
  }
  return -1;
}
inline long PrevSig(const std::vector<Token>& t, long i) {
  for (--i; i >= 0; --i) {
    if (!IsTrivia(t[static_cast<size_t>(i)])) return i;
  }
  return -1;
}

// Case-insensitive comparison of an identifier token with a keyword (given
// in upper case). Inline: every pass over a statement asks it of each word.
// The operators that set a value against a column: "=", "<>", "!=", "<",
// "<=", ">", ">=".
inline bool IsComparisonOperator(const Token& t) {
  if (t.kind != TokenKind::kOperator) return false;
  return t.text == "=" || t.text == "<>" || t.text == "<" || t.text == "<=" || t.text == ">" ||
         t.text == ">=" || t.text == "!=";
}

inline bool IsKeyword(const Token& t, std::string_view keyword) {
  if (t.kind != TokenKind::kIdentifier || t.text.size() != keyword.size()) return false;
  for (size_t i = 0; i < keyword.size(); ++i) {
    const char c = t.text[i];
    if ((c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c) != keyword[i]) return false;
  }
  return true;
}

// The contents of a plain '...' string token without its quotes and with ''
// undone (a prefixed string's text is given as it stands after its prefix).
std::string StringValue(const Token& t);
// The same into `out`, whose memory is reused.
void StringValueInto(const Token& t, std::string& out);

// The last component of a dotted identifier, brackets and quotes removed
// ("T_Auftrag.[lId]" -> "lId"); `qualifier` receives the part before it.
std::string ColumnName(const Token& t, std::string* qualifier = nullptr);

}  // namespace ZTkDb::detail
