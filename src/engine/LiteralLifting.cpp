#include "engine/LiteralLifting.h"

#include <map>
#include <set>

#include "runtime/Numbers.h"

namespace ZTkDb::detail {
namespace {

using Tokens = std::vector<Token>;

// A LIKE pattern stands beside its column as a compared value does, and is
// bound as one. (Only the date rewrite leaves LIKE out: a pattern is no
// date.)
bool IsComparison(const Token& tok) { return IsComparisonOperator(tok) || IsKeyword(tok, "LIKE"); }

// Keywords after which an expression's value stands.
bool IsValueKeyword(const Token& tok) {
  if (tok.kind != TokenKind::kIdentifier || tok.text.size() < 2 || tok.text.size() > 7)
    return false;
  static constexpr std::string_view kWords[] = {"WHERE", "AND",     "OR",     "NOT",  "LIKE",
                                                "GLOB",  "BETWEEN", "THEN",   "ELSE", "WHEN",
                                                "IS",    "ON",      "HAVING", "CASE"};
  for (std::string_view k : kWords) {
    if (IsKeyword(tok, k)) return true;
  }
  return false;
}

// A token that ends the value a literal is alone in: what may follow a
// literal whose meaning comes from the column beside it.
bool EndsValue(const Tokens& t, long i) {
  if (i < 0) return true;
  const Token& tok = t[static_cast<size_t>(i)];
  return tok.kind == TokenKind::kRParen || tok.kind == TokenKind::kComma ||
         tok.kind == TokenKind::kSemicolon ||
         (tok.kind == TokenKind::kIdentifier && IsValueKeyword(tok)) || IsKeyword(tok, "ORDER") ||
         IsKeyword(tok, "GROUP") || IsKeyword(tok, "LIMIT");
}

bool StartsValue(const Tokens& t, long i) {
  if (i < 0) return true;
  const Token& tok = t[static_cast<size_t>(i)];
  return tok.kind == TokenKind::kLParen || tok.kind == TokenKind::kComma ||
         (tok.kind == TokenKind::kIdentifier && IsValueKeyword(tok)) || IsKeyword(tok, "SET");
}

// ?, ?NNN, $1 (PostgreSQL) and SQLite's :name, @name, $name, #name. A lone
// ':', '@' or '$' is an operator or a name's part, never a parameter.
bool IsParameter(std::string_view text) {
  if (text.empty()) return false;
  if (text[0] == '?') return true;
  return text.size() > 1 && (text[0] == '$' || text[0] == ':' || text[0] == '@' || text[0] == '#');
}

}  // namespace

bool ParseBindableInteger(std::string_view text, int64_t& out) {
  // Ten digits at most, and no more than a 32-bit integer holds: a server
  // types a larger literal as a wider number, but a parameter compared with
  // an integer column as that column's type, and then fails on it.
  if (text.empty() || text.size() > 10) return false;
  int64_t v = 0;
  for (char c : text) {
    if (c < '0' || c > '9') return false;
    v = v * 10 + (c - '0');
  }
  if (v > INT32_MAX) return false;
  out = v;
  return true;
}

bool IsPlainDecimal(std::string_view text) {
  const size_t dot = text.find('.');
  if (dot == 0 || dot == std::string_view::npos || dot + 1 == text.size()) return false;
  for (size_t i = 0; i < text.size(); ++i) {
    if (i != dot && (text[i] < '0' || text[i] > '9')) return false;
  }
  return true;
}

bool DecimalRoom::Holds(std::string_view decimal) const {
  if (floating) return true;
  const size_t dot = decimal.find('.');
  if (dot == std::string_view::npos) return false;
  const size_t lead = decimal.find_first_not_of('0');
  const size_t whole = lead == std::string_view::npos || lead >= dot ? 0 : dot - lead;
  const size_t fraction = decimal.size() - dot - 1;
  return fraction <= static_cast<size_t>(scale) &&
         whole + static_cast<size_t>(scale) <= static_cast<size_t>(precision);
}

bool ParseTimestamp(const std::string& t, LiftedValue& v) {
  int parts[6];
  if (!SplitIsoTimestamp(t, parts)) return false;
  v.kind = LiftedValue::kTimestamp;
  v.year = static_cast<int16_t>(parts[0]);
  v.month = static_cast<uint16_t>(parts[1]);
  v.day = static_cast<uint16_t>(parts[2]);
  v.hour = static_cast<uint16_t>(parts[3]);
  v.minute = static_cast<uint16_t>(parts[4]);
  v.second = static_cast<uint16_t>(parts[5]);
  return true;
}

namespace {

class Lifter {
 public:
  Lifter(const Tokens& t, const LiftingRules& rules) : t_(t), rules_(rules) {}

  std::optional<LiftedStatement> Run() {
    const long first = NextSig(t_, -1);
    if (first < 0) return std::nullopt;
    const Token& verb = At(first);
    insert_ = IsKeyword(verb, "INSERT");
    if (!insert_ && !IsKeyword(verb, "SELECT") && !IsKeyword(verb, "UPDATE") &&
        !IsKeyword(verb, "DELETE")) {
      return std::nullopt;
    }
    if (rules_.refuse_question_marks) {
      for (const Token& tok : t_) {
        if (tok.text.find('?') != std::string_view::npos) return std::nullopt;
      }
    }
    if (rules_.refuse_star_results && IsKeyword(verb, "SELECT") && SelectsStar(first)) {
      return std::nullopt;
    }
    // A parameter the text already holds (a host's '?' or ':a' in a slot
    // filled unescaped) would take a place among the bound values and shift
    // every one after it; as text it stays unbound, as it always was.
    for (const Token& tok : t_) {
      if (tok.kind == TokenKind::kOther && IsParameter(tok.text)) return std::nullopt;
    }
    if (!rules_.any_string && (IsKeyword(verb, "UPDATE") || insert_)) DefaultTable(first);
    if (insert_ && !rules_.any_string) PairInsertValues(first);

    LiftedStatement out;
    out.shape.reserve(Length() + 16);
    std::vector<Frame> frames(1);
    std::vector<size_t> starts(t_.size());
    for (long i = 0; i < static_cast<long>(t_.size()); ++i) {
      const Token& tok = At(i);
      starts[static_cast<size_t>(i)] = out.shape.size();
      Frame& frame = frames.back();
      switch (tok.kind) {
        case TokenKind::kLParen: {
          Frame inner;
          inner.no_lift = frame.no_lift || frame.select_list || frame.ordering ||
                          OpensNameList(i, frames.size() == 1) || OpensTypeSize(i);
          frames.push_back(inner);
          break;
        }
        case TokenKind::kRParen:
          if (frames.size() > 1) frames.pop_back();
          break;
        case TokenKind::kIdentifier:
          Clause(i, frame);
          if (frames.size() == 1) {
            if (IsKeyword(tok, "SET"))
              assigning_ = true;
            else if (IsKeyword(tok, "WHERE") || IsKeyword(tok, "FROM"))
              assigning_ = false;
          }
          break;
        case TokenKind::kString:
        case TokenKind::kNumber:
          if (!frame.no_lift && !frame.select_list && !frame.ordering && InValuePosition(i)) {
            if (auto value = Value(i)) {
              // A sign goes with its number: "- ?" leaves a server to guess
              // which minus applies to an untyped parameter.
              const long sign = PrevSig(t_, i);
              if (value->kind == LiftedValue::kInteger && At(sign).text == "-" && IsUnary(sign)) {
                value->integer = -value->integer;
                out.shape.resize(starts[static_cast<size_t>(sign)]);
              }
              const bool decimal =
                  value->kind != LiftedValue::kInteger && tok.kind == TokenKind::kNumber;
              out.values.push_back(std::move(*value));
              if (decimal)
                out.shape += rules_.decimal_marker;
              else
                out.shape += '?';
              continue;
            }
          }
          break;
        default: break;
      }
      out.shape.append(tok.text);
    }
    return out;
  }

 private:
  struct Frame {
    bool no_lift = false;      // inside a bracket where no literal is lifted
    bool select_list = false;  // between SELECT and FROM
    bool ordering = false;     // after ORDER BY, GROUP BY, LIMIT, OFFSET
  };

  const Token& At(long i) const { return t_[static_cast<size_t>(i)]; }

  size_t Length() const {
    size_t n = 0;
    for (const Token& tok : t_) n += tok.text.size();
    return n;
  }

  void Clause(long i, Frame& frame) {
    const Token& tok = At(i);
    // Most identifiers are names; the clause words are short and start with
    // one of a few letters.
    if (tok.text.size() > 9) return;
    switch (tok.text[0] | 0x20) {
      case 's':
      case 'f':
      case 'i':
      case 'o':
      case 'g':
      case 'l':
      case 'u':
      case 'e': break;
      default: return;
    }
    if (IsKeyword(tok, "SELECT")) {
      frame.select_list = true;
      frame.ordering = false;
    } else if (IsKeyword(tok, "FROM") || IsKeyword(tok, "INTO")) {
      frame.select_list = false;
    } else if (IsKeyword(tok, "ORDER") || IsKeyword(tok, "GROUP")) {
      const long next = NextSig(t_, i);
      if (next >= 0 && IsKeyword(At(next), "BY")) frame.ordering = true;
    } else if (IsKeyword(tok, "LIMIT") || IsKeyword(tok, "OFFSET")) {
      frame.ordering = true;
    } else if (IsKeyword(tok, "UNION") || IsKeyword(tok, "EXCEPT") || IsKeyword(tok, "INTERSECT")) {
      frame.ordering = false;
    }
  }

  // INSERT INTO t (a, b): names, not values.
  bool OpensNameList(long i, bool outermost) const {
    if (!insert_ || !outermost) return false;
    const long name = PrevSig(t_, i);
    if (name < 0 || At(name).kind != TokenKind::kIdentifier) return false;
    const long into = PrevSig(t_, name);
    return into >= 0 && IsKeyword(At(into), "INTO");
  }

  // CAST(x AS DECIMAL(19, 4)), x::numeric(19, 4): sizes, not values.
  bool OpensTypeSize(long i) const {
    const long type = PrevSig(t_, i);
    if (type < 0 || At(type).kind != TokenKind::kIdentifier) return false;
    const long before = PrevSig(t_, type);
    return before >= 0 && (IsKeyword(At(before), "AS") || At(before).text == "::");
  }

  // A minus that stands where a value starts.
  bool IsUnary(long minus) const {
    const long prev = PrevSig(t_, minus);
    if (prev < 0) return true;
    const Token& p = At(prev);
    return p.kind == TokenKind::kOperator || p.kind == TokenKind::kComma ||
           p.kind == TokenKind::kLParen || (p.kind == TokenKind::kIdentifier && IsValueKeyword(p));
  }

  bool InValuePosition(long i) const {
    const long prev = PrevSig(t_, i);
    if (prev < 0) return false;
    const Token& p = At(prev);
    const bool after = (p.kind == TokenKind::kOperator && p.text != "::" && p.text != ".") ||
                       p.kind == TokenKind::kComma || p.kind == TokenKind::kLParen ||
                       (p.kind == TokenKind::kIdentifier && IsValueKeyword(p));
    if (!after) return false;
    // A literal that runs on into the next token (0x10 read as 0 and x10 by
    // a lexer that has no hex numbers) is not one value.
    if (static_cast<size_t>(i) + 1 < t_.size()) {
      const TokenKind joined = At(i + 1).kind;
      if (joined == TokenKind::kIdentifier || joined == TokenKind::kNumber ||
          joined == TokenKind::kString || joined == TokenKind::kOther) {
        return false;
      }
    }
    // 'x'::type takes its type from the cast.
    const long next = NextSig(t_, i);
    return next < 0 || !At(next).text.starts_with(":");
  }

  std::optional<LiftedValue> Value(long i) {
    const Token& tok = At(i);
    LiftedValue v;
    if (tok.kind == TokenKind::kNumber) {
      if (ParseBindableInteger(tok.text, v.integer)) {
        v.kind = LiftedValue::kInteger;
        return v;
      }
      if (!rules_.decimal_marker || !IsPlainDecimal(tok.text)) return std::nullopt;
      if (rules_.any_string) {
        v.kind = LiftedValue::kText;
      } else if (auto room = AssignedColumnRoom(i); room && room->Holds(tok.text)) {
        v.kind = LiftedValue::kDecimal;
        v.room = *room;
      } else {
        return std::nullopt;
      }
      v.text = tok.text;
      return v;
      return std::nullopt;
    }
    if (tok.text.empty() || tok.text.front() != '\'') return std::nullopt;  // prefixed, dollar, "…"
    v.text = StringValue(tok);
    if (rules_.any_string) return v;
    switch (ClassBeside(i)) {
      case ColumnClass::kText: return v;
      case ColumnClass::kDate:
        if (ParseTimestamp(v.text, v)) return v;
        return std::nullopt;
      default: return std::nullopt;
    }
  }

  // The room of the column the decimal at `i` is assigned to (an INSERT's
  // value, or UPDATE … SET c = 1.5), if it is a number column.
  std::optional<DecimalRoom> AssignedColumnRoom(long i) {
    if (!rules_.decimal_room) return std::nullopt;
    long column = -1;
    if (auto paired = insert_values_.find(i); paired != insert_values_.end()) {
      column = paired->second;
    } else if (long op = -1; assigning_) {
      const long col = ColumnBefore(i, op);
      if (col >= 0 && At(op).text == "=") column = col;
    }
    if (column < 0) return std::nullopt;
    std::string qualifier;
    const std::string name = ColumnName(At(column), &qualifier);
    const std::string& table = qualifier.empty() ? default_table_ : qualifier;
    if (table.empty()) return std::nullopt;
    return rules_.decimal_room(table, name);
  }

  // The column of `column <comparison> literal` around the literal at `i`,
  // alone in its value; -1 if there is none. `op` receives the comparison.
  long ColumnBefore(long i, long& op) const {
    op = PrevSig(t_, i);
    if (op < 0 || !IsComparison(At(op)) || !EndsValue(t_, NextSig(t_, i))) return -1;
    const long col = PrevSig(t_, op);
    if (col < 0 || At(col).kind != TokenKind::kIdentifier || !StartsValue(t_, PrevSig(t_, col))) {
      return -1;
    }
    return col;
  }

  // The class of the column a string is compared with or assigned to.
  ColumnClass ClassBeside(long i) {
    if (!rules_.column_class) return ColumnClass::kUnknown;
    auto paired = insert_values_.find(i);
    if (paired != insert_values_.end()) return ClassOf(paired->second);
    long op = -1;
    if (const long col = ColumnBefore(i, op); col >= 0) return ClassOf(col);
    op = NextSig(t_, i);
    if (op >= 0 && IsComparison(At(op)) && StartsValue(t_, PrevSig(t_, i))) {
      const long col = NextSig(t_, op);
      if (col >= 0 && At(col).kind == TokenKind::kIdentifier && EndsValue(t_, NextSig(t_, col))) {
        return ClassOf(col);
      }
    }
    return ColumnClass::kUnknown;
  }

  ColumnClass ClassOf(long columnToken) {
    std::string qualifier;
    const std::string column = ColumnName(At(columnToken), &qualifier);
    if (!qualifier.empty()) return rules_.column_class(qualifier, column);
    if (!default_table_.empty()) return rules_.column_class(default_table_, column);
    // An unqualified column of a query: the tables it names must agree.
    ColumnClass found = ColumnClass::kUnknown;
    for (const std::string& table : Tables()) {
      const ColumnClass c = rules_.column_class(table, column);
      if (c == ColumnClass::kUnknown) continue;
      if (found != ColumnClass::kUnknown && found != c) return ColumnClass::kUnknown;
      found = c;
    }
    return found;
  }

  const std::set<std::string>& Tables() {
    if (tables_) return *tables_;
    tables_.emplace();
    for (const Token& tok : t_) {
      if (tok.kind != TokenKind::kIdentifier || !rules_.is_table) continue;
      std::string qualifier;
      std::string last = ColumnName(tok, &qualifier);
      const std::string& candidate = qualifier.empty() ? last : qualifier;
      if (rules_.is_table(candidate)) tables_->insert(candidate);
    }
    return *tables_;
  }

  void DefaultTable(long verb) {
    long i = NextSig(t_, verb);
    if (insert_ && i >= 0 && IsKeyword(At(i), "INTO")) i = NextSig(t_, i);
    if (i >= 0 && At(i).kind == TokenKind::kIdentifier) default_table_ = ColumnName(At(i));
  }

  // INSERT INTO t (c1, c2) VALUES (v1, v2): each single-token value with
  // its column.
  void PairInsertValues(long verb) {
    long i = NextSig(t_, verb);
    if (i < 0 || !IsKeyword(At(i), "INTO")) return;
    i = NextSig(t_, NextSig(t_, i));
    if (i < 0 || At(i).kind != TokenKind::kLParen) return;
    std::vector<long> columns;
    for (i = NextSig(t_, i); i >= 0 && At(i).kind != TokenKind::kRParen; i = NextSig(t_, i)) {
      if (At(i).kind == TokenKind::kIdentifier)
        columns.push_back(i);
      else if (At(i).kind != TokenKind::kComma)
        return;
    }
    i = i < 0 ? -1 : NextSig(t_, i);
    if (i < 0 || !IsKeyword(At(i), "VALUES")) return;
    i = NextSig(t_, i);
    if (i < 0 || At(i).kind != TokenKind::kLParen) return;
    size_t column = 0;
    long start = -1;
    int count = 0;
    for (i = NextSig(t_, i); i >= 0; i = NextSig(t_, i)) {
      const Token& tok = At(i);
      if (tok.kind == TokenKind::kComma || tok.kind == TokenKind::kRParen) {
        if (count == 1 && column < columns.size()) insert_values_[start] = columns[column];
        if (tok.kind == TokenKind::kRParen) return;
        ++column;
        start = -1;
        count = 0;
        continue;
      }
      // A value of more than one token (a call, an expression) is not paired.
      if (tok.kind == TokenKind::kLParen) return;
      if (start < 0) start = i;
      ++count;
    }
  }

  // Whether the select list of the SELECT at `select` (outside brackets, up
  // to its FROM) holds '*' or 'name.*'.
  bool SelectsStar(long select) const {
    int depth = 0;
    for (long i = NextSig(t_, select); i >= 0; i = NextSig(t_, i)) {
      const Token& tok = At(i);
      if (tok.kind == TokenKind::kLParen) ++depth;
      if (tok.kind == TokenKind::kRParen) --depth;
      if (depth > 0) continue;
      if (depth < 0 || IsKeyword(tok, "FROM")) return false;
      if (tok.text == "*" || (tok.kind == TokenKind::kIdentifier && tok.text.ends_with(".*"))) {
        return true;
      }
    }
    return false;
  }

  const Tokens& t_;
  const LiftingRules& rules_;
  bool insert_ = false;
  bool assigning_ = false;  // between UPDATE's SET and its WHERE
  std::string default_table_;
  std::optional<std::set<std::string>> tables_;
  std::map<long, long> insert_values_;
};

}  // namespace

std::optional<LiftedStatement> LiftLiterals(const std::vector<Token>& tokens,
                                            const LiftingRules& rules) {
  auto lifted = Lifter(tokens, rules).Run();
  if (lifted && lifted->values.size() > rules.max_values) return std::nullopt;
  return lifted;
}

}  // namespace ZTkDb::detail
