#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace ZTkDb::detail {

enum class TokenKind {
  kSpace,       // blanks, tabs, line breaks
  kComment,     // -- to the end of the line, or /* ... */
  kIdentifier,  // name, [name], "name", dotted, possibly ending in .*
  kString,      // '...' with '' inside; may be unterminated at the end
  kNumber,
  kJetDate,     // #...# whose contents read as a date
  kOperator,    // = <> != < <= > >= and other operator characters
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

// Splits a statement into tokens that, joined, give back the statement byte
// for byte. Never fails: what it does not recognise becomes kOther.
std::vector<Token> Tokenize(std::string_view sql);

// True for the tokens that carry no meaning (space, comments).
inline bool IsTrivia(const Token& t) {
  return t.kind == TokenKind::kSpace || t.kind == TokenKind::kComment;
}

// Case-insensitive comparison of an identifier token with a keyword.
bool IsKeyword(const Token& t, std::string_view keyword);

// The contents of a string token without its quotes and with '' undone.
std::string StringValue(const Token& t);

// The last component of a dotted identifier, brackets and quotes removed
// ("T_Auftrag.[lId]" -> "lId"); `qualifier` receives the part before it.
std::string ColumnName(const Token& t, std::string* qualifier = nullptr);

}  // namespace ZTkDb::detail
