#include "engine/StatementAdapter.h"

#include <strings.h>

#include <optional>
#include <set>
#include <vector>

#include "engine/SqlTokenizer.h"
#include "runtime/Raise.h"
#include "sql/Literals.h"
#include "ztkdb/Date.h"

namespace ZTkDb::detail {
namespace {

using Tokens = std::vector<Token>;

const Token& At(const Tokens& t, long i) { return t[static_cast<size_t>(i)]; }

[[noreturn]] void RaiseDoubt(const Doubt& doubt) {
  Raise(errSyntax, "ZTkDb.Engine",
        "Syntax error: the statement cannot be read with certainty: " + doubt.reason +
            " at character " + std::to_string(doubt.offset + 1) + ". It was not sent.");
}

void RefuseSecondStatement(const Tokens& tokens);

// The tokens of a text that reads as one statement, with certainty. A second
// statement is named before a doubt: every ';' found is one the server sees.
Tokens TokenizeCertain(std::string_view sql, const Lexicon& lexicon) {
  Doubt doubt;
  Tokens tokens = Tokenize(sql, lexicon, &doubt);
  RefuseSecondStatement(tokens);
  if (doubt) RaiseDoubt(doubt);
  return tokens;
}

bool IsPlainQuery(const Tokens& tokens) {
  long first = NextSig(tokens, -1);
  if (first < 0 || !IsKeyword(At(tokens, first), "SELECT")) return false;
  for (const Token& tok : tokens) {
    if (IsKeyword(tok, "INTO")) return false;
  }
  return true;
}

void RefuseSecondStatement(const Tokens& tokens) {
  bool ended = false;
  for (const Token& tok : tokens) {
    if (IsTrivia(tok)) continue;
    if (tok.kind == TokenKind::kSemicolon) {
      ended = true;
    } else if (ended) {
      Raise(errInvalidStatement, "ZTkDb.Engine",
            "Characters found after end of SQL statement. Only one statement per call is "
            "allowed.");
    }
  }
}

bool IsGermanDateText(const std::string& value, Date& out) {
  // Only dd.mm.yyyy (with an optional time) is ours to rewrite; any other
  // text in a date position is left to the engine.
  return MayBeGermanDate(value) && Date::TryParse(value, out);
}

class Adapter {
 public:
  Adapter(const Tokens& tokens, const AdaptationRules& rules) : t_(tokens), rules_(rules) {
    replacement_.resize(t_.size());
  }

  // Whether Run replaced any token.
  bool Changed() const { return changed_; }

  std::string Run() {
    if (rules_.rewrite_jet_dates) JetDates();
    if (rules_.rewrite_german_dates) {
      InsertValues();
      Comparisons();
    }
    if (rules_.rewrite_delete) DeleteForm();
    if (rules_.unqualify_update_set) UpdateSetTargets();
    if (rules_.harden_string) HardenStrings();
    for (const auto& r : replacement_) changed_ |= r.has_value();
    if (!changed_) return {};  // the caller keeps the text as it came
    std::string out;
    out.reserve(t_.empty() ? 0
                           : static_cast<size_t>(t_.back().text.data() - t_.front().text.data()) +
                                 t_.back().text.size() + 64);
    for (size_t i = 0; i < t_.size(); ++i) {
      if (replacement_[i])
        out += *replacement_[i];
      else
        out.append(t_[i].text);
    }
    return out;
  }

 private:
  bool IsDateColumn(const Token& tok, const std::string& defaultTable) {
    if (!rules_.is_date_column) return false;
    std::string qualifier;
    const std::string column = ColumnName(tok, &qualifier);
    if (!qualifier.empty()) return rules_.is_date_column(qualifier, column);
    if (!defaultTable.empty()) return rules_.is_date_column(defaultTable, column);
    for (const auto& table : Tables()) {
      if (rules_.is_date_column(table, column)) return true;
    }
    return false;
  }

  // The tables the statement names: what an unqualified column may belong
  // to. Asked only when such a column stands beside a date text.
  const std::set<std::string>& Tables() {
    if (tables_) return *tables_;
    tables_.emplace();
    for (const Token& tok : t_) {
      if (tok.kind != TokenKind::kIdentifier) continue;
      std::string qualifier;
      std::string last = ColumnName(tok, &qualifier);
      const std::string& candidate = qualifier.empty() ? last : qualifier;
      if (rules_.is_table && rules_.is_table(candidate)) tables_->insert(candidate);
    }
    return *tables_;
  }

  static bool LooksLikeGermanDate(const Token& tok) {
    // 'd.m.yyyy' at the shortest, with a time at the longest: most texts are
    // ruled out by their length and second character alone.
    if (tok.kind != TokenKind::kString || tok.text.size() < 10 || tok.text.size() > 24)
      return false;
    if (tok.text[1] < '0' || tok.text[1] > '9') return false;
    Date ignored;
    return IsGermanDateText(StringValue(tok), ignored);
  }

  void RewriteDateString(long i) {
    Date date;
    if (replacement_[static_cast<size_t>(i)]) return;
    if (IsGermanDateText(StringValue(At(t_, i)), date)) {
      replacement_[static_cast<size_t>(i)] = rules_.date_literal(date);
    }
  }

  void JetDates() {
    for (size_t i = 0; i < t_.size(); ++i) {
      if (t_[i].kind != TokenKind::kJetDate) continue;
      std::string inner(t_[i].text.substr(1, t_[i].text.size() - 2));
      Date date;
      int m = 0, d = 0, y = 0;
      if (Date::TryParse(inner, date)) {
        replacement_[i] = rules_.date_literal(date);
      } else if (std::sscanf(inner.c_str(), "%d/%d/%d", &m, &d, &y) == 3) {
        try {
          replacement_[i] = rules_.date_literal(Date::FromYmd(y, m, d));
        } catch (const Error&) {
          // not a real date: the engine gets it as written and rejects it
        }
      }
    }
  }

  // INSERT INTO t (c1, c2, ...) VALUES (v1, v2, ...): values paired by index.
  void InsertValues() {
    long i = NextSig(t_, -1);
    if (i < 0 || !IsKeyword(At(t_, i), "INSERT")) return;
    i = NextSig(t_, i);
    if (i < 0 || !IsKeyword(At(t_, i), "INTO")) return;
    const long tableIndex = NextSig(t_, i);
    if (tableIndex < 0 || At(t_, tableIndex).kind != TokenKind::kIdentifier) return;
    const std::string table = ColumnName(At(t_, tableIndex));
    i = NextSig(t_, tableIndex);
    if (i < 0 || At(t_, i).kind != TokenKind::kLParen) return;
    std::vector<long> columns;
    for (i = NextSig(t_, i); i >= 0 && At(t_, i).kind != TokenKind::kRParen; i = NextSig(t_, i)) {
      if (At(t_, i).kind == TokenKind::kIdentifier)
        columns.push_back(i);
      else if (At(t_, i).kind != TokenKind::kComma)
        return;
    }
    if (i < 0) return;
    i = NextSig(t_, i);
    if (i < 0 || !IsKeyword(At(t_, i), "VALUES")) return;
    i = NextSig(t_, i);
    if (i < 0 || At(t_, i).kind != TokenKind::kLParen) return;
    size_t column = 0;
    int depth = 0;
    long valueStart = -1, valueCount = 0;
    for (i = NextSig(t_, i); i >= 0; i = NextSig(t_, i)) {
      const Token& tok = At(t_, i);
      const bool endOfValue =
          depth == 0 && (tok.kind == TokenKind::kComma || tok.kind == TokenKind::kRParen);
      if (endOfValue) {
        // Only a date text is worth asking the schema about its column.
        if (valueCount == 1 && column < columns.size() && LooksLikeGermanDate(At(t_, valueStart)) &&
            IsDateColumn(At(t_, columns[column]), table)) {
          RewriteDateString(valueStart);
        }
        if (tok.kind == TokenKind::kRParen) return;
        ++column;
        valueStart = -1;
        valueCount = 0;
        continue;
      }
      if (tok.kind == TokenKind::kLParen) ++depth;
      if (tok.kind == TokenKind::kRParen) --depth;
      if (valueStart < 0) valueStart = i;
      ++valueCount;
    }
  }

  // The column at `i` going left (skipping the closing brackets that wrap it).
  long ColumnLeftOf(long op) const {
    long i = PrevSig(t_, op);
    while (i >= 0 && At(t_, i).kind == TokenKind::kRParen) i = PrevSig(t_, i);
    return i >= 0 && At(t_, i).kind == TokenKind::kIdentifier ? i : -1;
  }

  long ColumnRightOf(long op) const {
    long i = NextSig(t_, op);
    while (i >= 0 && At(t_, i).kind == TokenKind::kLParen) i = NextSig(t_, i);
    return i >= 0 && At(t_, i).kind == TokenKind::kIdentifier ? i : -1;
  }

  // "col op 'text'" and "'text' op col"; SET col = 'text' is the same shape.
  void Comparisons() {
    std::string updateTable;
    long first = NextSig(t_, -1);
    if (first >= 0 && IsKeyword(At(t_, first), "UPDATE")) {
      long tableIndex = NextSig(t_, first);
      if (tableIndex >= 0 && At(t_, tableIndex).kind == TokenKind::kIdentifier) {
        updateTable = ColumnName(At(t_, tableIndex));
      }
    }
    for (long i = 0; i < static_cast<long>(t_.size()); ++i) {
      if (!LooksLikeGermanDate(At(t_, i))) continue;
      long op = PrevSig(t_, i);
      if (op >= 0 && IsComparisonOperator(At(t_, op))) {
        long col = ColumnLeftOf(op);
        if (col >= 0 && IsDateColumn(At(t_, col), updateTable)) {
          RewriteDateString(i);
          continue;
        }
      }
      op = NextSig(t_, i);
      if (op >= 0 && IsComparisonOperator(At(t_, op))) {
        long col = ColumnRightOf(op);
        if (col >= 0 && IsDateColumn(At(t_, col), updateTable)) RewriteDateString(i);
      }
    }
  }

  // DELETE t.* FROM t WHERE ... and DELETE t WHERE ... -> DELETE FROM t WHERE ...
  void DeleteForm() {
    long del = NextSig(t_, -1);
    if (del < 0 || !IsKeyword(At(t_, del), "DELETE")) return;
    long target = NextSig(t_, del);
    if (target < 0 || At(t_, target).kind != TokenKind::kIdentifier ||
        IsKeyword(At(t_, target), "FROM")) {
      return;
    }
    long after = NextSig(t_, target);
    const bool starForm = At(t_, target).text.ends_with(".*") || At(t_, target).text == "*";
    if (starForm) {
      if (after < 0 || !IsKeyword(At(t_, after), "FROM")) return;
      // Drop "t.* " so that "DELETE FROM t" remains.
      for (long k = target; k < after; ++k) replacement_[static_cast<size_t>(k)] = "";
      return;
    }
    if (after >= 0 && !IsKeyword(At(t_, after), "WHERE") &&
        At(t_, after).kind != TokenKind::kSemicolon) {
      return;
    }
    replacement_[static_cast<size_t>(target)] = "FROM " + std::string(At(t_, target).text);
  }

  // UPDATE t SET t.a = 1, t.b = 2 WHERE ... -> SET a = 1, b = 2: the target
  // columns of the SET list lose the qualifier naming the updated table.
  void UpdateSetTargets() {
    long i = NextSig(t_, -1);
    if (i < 0 || !IsKeyword(At(t_, i), "UPDATE")) return;
    const long tableIndex = NextSig(t_, i);
    if (tableIndex < 0 || At(t_, tableIndex).kind != TokenKind::kIdentifier) return;
    const std::string table = ColumnName(At(t_, tableIndex));
    i = NextSig(t_, tableIndex);
    if (i < 0 || !IsKeyword(At(t_, i), "SET")) return;
    int depth = 0;
    bool expectTarget = true;
    for (i = NextSig(t_, i); i >= 0; i = NextSig(t_, i)) {
      const Token& tok = At(t_, i);
      if (tok.kind == TokenKind::kLParen)
        ++depth;
      else if (tok.kind == TokenKind::kRParen)
        --depth;
      if (depth != 0) continue;
      if (IsKeyword(tok, "WHERE") || tok.kind == TokenKind::kSemicolon) return;
      if (tok.kind == TokenKind::kComma) {
        expectTarget = true;
        continue;
      }
      if (expectTarget && tok.kind == TokenKind::kIdentifier) {
        // "t.col" with t the updated table; brackets or quotes around the
        // parts leave the target as it is (the engine accepts or refuses it).
        const size_t dot = tok.text.rfind('.');
        const long next = NextSig(t_, i);
        if (dot != std::string_view::npos && dot == table.size() && next >= 0 &&
            At(t_, next).text == "=" && strncasecmp(tok.text.data(), table.data(), dot) == 0) {
          replacement_[static_cast<size_t>(i)] = std::string(tok.text.substr(dot + 1));
        }
      }
      expectTarget = false;
    }
  }

  void HardenStrings() {
    for (size_t i = 0; i < t_.size(); ++i) {
      if (t_[i].kind != TokenKind::kString || replacement_[i]) continue;
      if (auto hardened = rules_.harden_string(t_[i])) replacement_[i] = std::move(*hardened);
    }
  }

  const Tokens& t_;
  const AdaptationRules& rules_;
  bool changed_ = false;
  std::optional<std::set<std::string>> tables_;
  std::vector<std::optional<std::string>> replacement_;
};

}  // namespace

std::string AdaptStatement(const std::string& sql, const AdaptationRules& rules,
                           StatementFacts* facts, const Tokens* read) {
  // An engine would end the text at the NUL and run what stands before it.
  if (sql.find('\0') != std::string::npos) {
    Raise(errSyntax, "ZTkDb.Engine",
          "Syntax error: the statement holds a NUL character, which no text value may carry.");
  }
  const Lexicon& lexicon = rules.lexicon ? *rules.lexicon : LibraryLexicon();
  Tokens own;
  if (read) {
    RefuseSecondStatement(*read);
  } else {
    own = TokenizeCertain(sql, lexicon);
  }
  const Tokens& tokens = read ? *read : own;
  Adapter adapter(tokens, rules);
  std::string out = adapter.Run();
  if (!adapter.Changed()) out = sql;
  const Lexicon* final = rules.final_lexicon ? rules.final_lexicon : &lexicon;
  const auto learn = [&](const Tokens& sent, const char* base) {
    if (!facts) return;
    facts->plain_query = IsPlainQuery(sent);
    facts->statement_end = 0;
    for (const Token& tok : sent) {
      if (IsTrivia(tok) || tok.kind == TokenKind::kSemicolon) continue;
      facts->statement_end = static_cast<size_t>(tok.text.data() + tok.text.size() - base);
    }
    if (rules.lifting) facts->lifted = LiftLiterals(sent, *rules.lifting);
  };
  if (!adapter.Changed() && ReadAlike(lexicon, *final, sql)) {
    learn(tokens, sql.data());
    return out;
  }
  // What is sent is what counts: the adapted text, in the server's reading.
  learn(TokenizeCertain(out, *final), out.data());
  return out;
}

}  // namespace ZTkDb::detail
