#include "engine/AdaptationMemo.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <optional>
#include <unordered_map>

#include "engine/StatementCache.h"
#include "ztkdb/Error.h"

namespace ZTkDb::detail {
namespace {

enum class Plain { kNone, kInteger, kString, kDecimal };

// `decimals`: whether the engine lifts plain decimals (see LiftingRules).
Plain PlainKind(const Token& t, bool decimals) {
  const std::string_view text = t.text;
  if (t.kind == TokenKind::kNumber) {
    if (decimals && IsPlainDecimal(text)) return Plain::kDecimal;
    int64_t ignored = 0;
    return ParseBindableInteger(text, ignored) ? Plain::kInteger : Plain::kNone;
  }
  if (t.kind != TokenKind::kString) return Plain::kNone;
  if (text.size() < 2 || text.front() != '\'' || text.back() != '\'') return Plain::kNone;
  if (text.find('\\') != std::string_view::npos || text.find('?') != std::string_view::npos) {
    return Plain::kNone;
  }
  // A digit and a dot after one or two characters might be a date the
  // adapter rewrites ('d.m.yyyy…'): part of the form.
  if (text.size() > 3 && text[1] >= '0' && text[1] <= '9' && (text[2] == '.' || text[3] == '.')) {
    return Plain::kNone;
  }
  return Plain::kString;
}

int64_t IntegerOf(std::string_view digits) {
  int64_t n = 0;
  for (char c : digits) n = n * 10 + (c - '0');
  return n;
}

// Stand-ins no statement holds, each of its literal's kind and class.
// Integers are bound only while they fit 32 bits, and so must their
// stand-ins.
constexpr int64_t kProbeBase = 2070000000;
std::string ProbeString(size_t k) { return "ZtkMemoProbe" + std::to_string(k) + "x"; }
// A decimal's stand-in has to fit the columns an amount goes to (a server
// binds a decimal only where its digits do): a small one.
std::string ProbeDecimal(size_t k) { return std::to_string(k) + ".5"; }

bool SameValue(const LiftedValue& a, const LiftedValue& b) {
  return a.kind == b.kind && a.text == b.text && a.integer == b.integer && a.number == b.number &&
         a.null_as == b.null_as && a.year == b.year && a.month == b.month && a.day == b.day &&
         a.hour == b.hour && a.minute == b.minute && a.second == b.second && a.room == b.room;
}

// The statement's form (see the header) and its plain literals, in order;
// false when the text cannot be read with certainty.
bool FormOf(const std::string& sql, const Lexicon& lexicon, bool decimals,
            std::vector<Token>& tokens, std::string& key, std::vector<size_t>& literals) {
  Doubt doubt;
  Tokenize(sql, lexicon, tokens, &doubt);
  key.clear();
  literals.clear();
  if (doubt) return false;
  // Written through a pointer into room for the longest key (per token a
  // kind, up to ten length bytes and the text): an update has some three
  // hundred tokens, and appending each piece checks the room each time.
  key.resize(sql.size() + tokens.size() * 11);
  char* out = key.data();
  for (size_t i = 0; i < tokens.size(); ++i) {
    const Token& t = tokens[i];
    const Plain plain = PlainKind(t, decimals);
    *out++ = static_cast<char>('A' + static_cast<int>(t.kind));
    if (plain != Plain::kNone) {
      *out++ = plain == Plain::kInteger ? '#' : plain == Plain::kDecimal ? '%' : '$';
      literals.push_back(i);
      continue;
    }
    // Length first (base-128): no text can pass for another token's.
    size_t n = t.text.size();
    do {
      const auto byte = static_cast<unsigned char>(n & 0x7f);
      n >>= 7;
      *out++ = static_cast<char>(n ? byte | 0x80 : byte);
    } while (n);
    std::memcpy(out, t.text.data(), t.text.size());
    out += t.text.size();
  }
  key.resize(static_cast<size_t>(out - key.data()));
  return true;
}

}  // namespace

// What a learnt form gives back: the lifted statement, which of its values
// each plain literal fills, and the form as text where it can be matched
// without reading the statement again.
struct AdaptationMemo::Recall {
  bool plain_query = false;
  LiftedStatement lifted;
  // Which value each literal fills, and whether a sign before it went
  // with it (an integer's value is then its negation).
  struct Slot {
    size_t value = 0;
    bool negate = false;
    Plain kind = Plain::kNone;
  };
  std::vector<Slot> slots;  // by literal
  std::vector<int32_t> literal_of;  // by value: the literal that fills it, or -1
  // The bytes between the literals, one piece before each literal and one
  // after the last (`ends` marks where each piece ends in `fixed`), and
  // each literal's kind. Empty `ends`: the form is only found by its key.
  std::string fixed;
  std::vector<uint32_t> ends;
  std::vector<Plain> kinds;
};

struct AdaptationMemo::Form {
  // A form is learnt when it comes a second time: one seen once may never
  // come again, and learning costs a second adaptation.
  bool learnt = false;
  std::shared_ptr<const Recall> recall;  // null: the form takes the full path
};

class AdaptationMemo::Forms : public StatementCache<Form> {
 public:
  // Kept for their capacity. A call takes them and gives them back, so a
  // call made while another runs (adaptation asking the schema) works on
  // fresh ones.
  std::string key;
  std::vector<Token> tokens;
  std::vector<size_t> literals;
  std::vector<std::string_view> texts;
  // Learnt forms matched as text, by the statement's head (Head below);
  // bounded like the forms, the most recently learnt first.
  struct HeadHash {
    using is_transparent = void;
    size_t operator()(std::string_view s) const { return std::hash<std::string_view>()(s); }
  };
  std::unordered_map<std::string, std::vector<std::shared_ptr<const Recall>>, HeadHash,
                     std::equal_to<>>
      by_head;
};

namespace {

// Takes a buffer from the memo for one call and gives it back, emptied by
// the next user, when the call ends.
template <typename T>
class Borrowed {
 public:
  explicit Borrowed(T& home) : home_(home), value_(std::move(home)) {}
  ~Borrowed() { home_ = std::move(value_); }
  Borrowed(const Borrowed&) = delete;
  Borrowed& operator=(const Borrowed&) = delete;
  T& operator*() { return value_; }

 private:
  T& home_;
  T value_;
};

}  // namespace

namespace {

constexpr size_t kHeadLimit = 64;
constexpr size_t kHeads = 64;
constexpr size_t kRecallsPerHead = 16;

// The statement up to its first quote or digit: where no literal can have
// started yet. A text that matches a learnt form has the form's head.
struct HeadStops {
  bool is[256] = {};
  constexpr HeadStops() {
    is[static_cast<unsigned char>('\'')] = true;
    for (int c = '0'; c <= '9'; ++c) is[c] = true;
  }
};
constexpr HeadStops kHeadStops;

std::string_view Head(std::string_view sql) {
  const size_t n = std::min(sql.size(), kHeadLimit);
  size_t i = 0;
  while (i < n && !kHeadStops.is[static_cast<unsigned char>(sql[i])]) ++i;
  return sql.substr(0, i);
}

}  // namespace

namespace {

// Most pieces between a form's literals are a column's name and an operator
// (", T_Auftrag.lNr = "): compared in place rather than by a call each.
inline bool SamePiece(const char* a, const char* b, size_t n) {
  if (n > 32) return std::memcmp(a, b, n) == 0;
  if (n < 8) {
    if (n >= 4) {
      uint32_t p, q, r, t;
      std::memcpy(&p, a, 4);
      std::memcpy(&q, b, 4);
      std::memcpy(&r, a + n - 4, 4);
      std::memcpy(&t, b + n - 4, 4);
      return ((p ^ q) | (r ^ t)) == 0;
    }
    for (size_t i = 0; i < n; ++i) {
      if (a[i] != b[i]) return false;
    }
    return true;
  }
  uint64_t x[4], y[4];
  std::memcpy(&x[0], a, 8);
  std::memcpy(&y[0], b, 8);
  std::memcpy(&x[1], a + n - 8, 8);
  std::memcpy(&y[1], b + n - 8, 8);
  if (n <= 16) return ((x[0] ^ y[0]) | (x[1] ^ y[1])) == 0;
  std::memcpy(&x[2], a + 8, 8);
  std::memcpy(&y[2], b + 8, 8);
  std::memcpy(&x[3], a + n - 16, 8);
  std::memcpy(&y[3], b + n - 16, 8);
  return ((x[0] ^ y[0]) | (x[1] ^ y[1]) | (x[2] ^ y[2]) | (x[3] ^ y[3])) == 0;
}

// What ends a plain string's run of bytes: its quote, and what makes a
// string other than plain (see PlainKind) or, for NUL, refused by the full
// path.
struct StringStops {
  bool is[256] = {};
  constexpr StringStops() {
    for (const char c : {'\'', '\\', '?', '\0'}) is[static_cast<unsigned char>(c)] = true;
  }
};
constexpr StringStops kStringStops;

}  // namespace

// Whether `sql` is the form's fixed bytes with a plain literal of the right
// kind in each gap; `texts` receives the literals. Such a text is read as
// the form was: the server's reading of the fixed bytes cannot depend on
// which digits or which quoted text fill a gap (Learn keeps no skeleton
// where it could), so the statement's tokens are the form's with these
// literals in place, and its key is the form's key.
bool AdaptationMemo::Matches(const Recall& r, std::string_view sql,
                             std::vector<std::string_view>& texts) {
  texts.clear();
  size_t at = 0;
  uint32_t from = 0;
  const size_t n = sql.size();
  for (size_t k = 0;; ++k) {
    const uint32_t to = r.ends[k];
    const size_t piece = to - from;
    if (n - at < piece || !SamePiece(sql.data() + at, r.fixed.data() + from, piece)) {
      return false;
    }
    at += piece;
    from = to;
    if (k == r.kinds.size()) return at == n;
    const size_t start = at;
    if (r.kinds[k] == Plain::kInteger) {
      while (at < n && sql[at] >= '0' && sql[at] <= '9') ++at;
      int64_t ignored = 0;
      if (!ParseBindableInteger(std::string_view(sql.data() + start, at - start), ignored)) {
        return false;
      }
    } else if (r.kinds[k] == Plain::kDecimal) {
      while (at < n && sql[at] >= '0' && sql[at] <= '9') ++at;
      if (at == start || at == n || sql[at] != '.') return false;
      const size_t fraction = ++at;
      while (at < n && sql[at] >= '0' && sql[at] <= '9') ++at;
      if (at == fraction) return false;
    } else {
      if (at == n || sql[at] != '\'') return false;
      ++at;
      for (;;) {
        while (at < n && !kStringStops.is[static_cast<unsigned char>(sql[at])]) ++at;
        if (at == n) return false;
        if (sql[at] != '\'') return false;  // a backslash, '?' or NUL: not plain
        if (at + 1 < n && sql[at + 1] == '\'') {
          at += 2;
          continue;
        }
        ++at;
        break;
      }
      const std::string_view text = sql.substr(start, at - start);
      if (text.size() > 3 && text[1] >= '0' && text[1] <= '9' && (text[2] == '.' || text[3] == '.')) {
        return false;
      }
    }
    texts.push_back(sql.substr(start, at - start));
  }
}

AdaptationMemo::AdaptationMemo(const AdaptationRules& rules)
    : rules_(rules), forms_(std::make_unique<Forms>()) {}

AdaptationMemo::~AdaptationMemo() = default;

void AdaptationMemo::Clear() {
  forms_->Clear();
  forms_->by_head.clear();
}

namespace {
// A few sets, so that statements of different sizes taking turns (an
// insert of forty values, the read of its row by one) each find theirs: a
// set cut down to one value and grown again frees and makes forty strings.
thread_local std::array<std::vector<LiftedValue>, 4> spareValues;

// The set of at least `n` values with the fewest, else the largest there is.
std::vector<LiftedValue> TakeValues(size_t n) {
  std::vector<LiftedValue>* fit = nullptr;
  std::vector<LiftedValue>* largest = nullptr;
  for (auto& v : spareValues) {
    if (v.size() >= n && (!fit || v.size() < fit->size())) fit = &v;
    if (!largest || v.size() > largest->size()) largest = &v;
  }
  return std::move(fit ? *fit : *largest);
}
}  // namespace

void AdaptationMemo::GiveBack(std::vector<LiftedValue>&& values) {
  std::vector<LiftedValue>* smallest = nullptr;
  for (auto& v : spareValues) {
    if (!smallest || v.size() < smallest->size()) smallest = &v;
  }
  if (values.size() > smallest->size()) *smallest = std::move(values);
}

bool AdaptationMemo::Fits(const Recall& r, const std::vector<std::string_view>& texts) {
  for (size_t k = 0; k < r.slots.size(); ++k) {
    const Recall::Slot& slot = r.slots[k];
    if (slot.kind == Plain::kDecimal && !r.lifted.values[slot.value].room.Holds(texts[k])) {
      return false;
    }
  }
  return true;
}

void AdaptationMemo::Fill(const Recall& r, const std::vector<std::string_view>& texts,
                          StatementFacts& facts) {
  // The learnt values are copied but for the texts the literals replace.
  LiftedStatement& lifted = facts.lifted.emplace();
  lifted.shared_shape = r.lifted.shared_shape;
  lifted.values = TakeValues(r.lifted.values.size());
  lifted.values.resize(r.lifted.values.size());
  for (size_t i = 0; i < r.lifted.values.size(); ++i) {
    const LiftedValue& learnt = r.lifted.values[i];
    LiftedValue& v = lifted.values[i];
    if (r.literal_of[i] < 0) {
      v = learnt;
      continue;
    }
    const size_t k = static_cast<size_t>(r.literal_of[i]);
    // Everything but the text, which the literal gives.
    static_cast<LiftedScalars&>(v) = learnt;
    if (v.kind == LiftedValue::kInteger) {
      const int64_t n = IntegerOf(texts[k]);
      v.integer = r.slots[k].negate ? -n : n;
      v.text.assign(learnt.text);
    } else if (r.slots[k].kind == Plain::kDecimal) {
      v.text.assign(texts[k]);
    } else {
      StringValueInto(Token{TokenKind::kString, texts[k]}, v.text);
    }
  }
  facts.plain_query = r.plain_query;
}

std::string AdaptationMemo::Adapt(const std::string& sql, StatementFacts& facts) {
  // A NUL is refused by the full path, whatever it stands in.
  if (sql.find('\0') != std::string::npos) return AdaptStatement(sql, rules_, &facts);
  Borrowed<std::vector<std::string_view>> borrowedTexts(forms_->texts);
  std::vector<std::string_view>& texts = *borrowedTexts;
  if (!forms_->by_head.empty()) {
    auto it = forms_->by_head.find(Head(sql));
    if (it != forms_->by_head.end()) {
      for (const auto& r : it->second) {
        if (Matches(*r, sql, texts)) {
          // Digits that do not fit the column stay in the text: another
          // shape, which the full path gives.
          if (!Fits(*r, texts)) return AdaptStatement(sql, rules_, &facts);
          Fill(*r, texts, facts);
          return {};
        }
      }
    }
  }
  Borrowed<std::vector<Token>> borrowedTokens(forms_->tokens);
  Borrowed<std::vector<size_t>> borrowedLiterals(forms_->literals);
  Borrowed<std::string> borrowedKey(forms_->key);
  std::vector<Token>& tokens = *borrowedTokens;
  std::vector<size_t>& literals = *borrowedLiterals;
  std::string& key = *borrowedKey;
  const Lexicon& lexicon = rules_.lexicon ? *rules_.lexicon : LibraryLexicon();
  if (!FormOf(sql, lexicon, Decimals(), tokens, key, literals)) {
    return AdaptStatement(sql, rules_, &facts);
  }
  if (literals.empty()) return AdaptStatement(sql, rules_, &facts, &tokens);
  Form* form = forms_->Find(key);
  if (form && form->recall) {
    texts.clear();
    for (size_t k : literals) texts.push_back(tokens[k].text);
    if (!Fits(*form->recall, texts)) return AdaptStatement(sql, rules_, &facts, &tokens);
    Fill(*form->recall, texts, facts);
    return {};
  }
  std::string text = AdaptStatement(sql, rules_, &facts, &tokens);
  if (!form) {
    forms_->Insert(key, Form{});
  } else if (!form->learnt) {
    form->learnt = true;
    form->recall = Learn(sql, tokens, literals, facts);
    if (form->recall && !form->recall->ends.empty()) {
      auto& recalls = forms_->by_head[std::string(Head(sql))];
      if (forms_->by_head.size() > kHeads) {
        forms_->by_head.clear();
        forms_->by_head[std::string(Head(sql))].push_back(form->recall);
      } else {
        if (recalls.size() == kRecallsPerHead) recalls.pop_back();
        recalls.insert(recalls.begin(), form->recall);
      }
    }
  }
  return text;
}

std::shared_ptr<const AdaptationMemo::Recall> AdaptationMemo::Learn(
    const std::string& sql, const std::vector<Token>& tokens, const std::vector<size_t>& literals,
    const StatementFacts& facts) {
  if (!facts.lifted) return nullptr;
  std::optional<StatementFacts> probed;
  {
    std::string probe;
    probe.reserve(sql.size() + 32 * literals.size());
    size_t next = 0;
    for (size_t i = 0; i < tokens.size(); ++i) {
      if (next < literals.size() && literals[next] == i) {
        const Plain plain = PlainKind(tokens[i], Decimals());
        probe += plain == Plain::kInteger   ? std::to_string(kProbeBase + next)
                 : plain == Plain::kDecimal ? ProbeDecimal(next)
                                            : "'" + ProbeString(next) + "'";
        ++next;
      } else {
        probe.append(tokens[i].text);
      }
    }
    try {
      StatementFacts p;
      AdaptStatement(probe, rules_, &p);
      probed = std::move(p);
    } catch (const Error&) {
      // A stand-in the full path refuses: the form is not learnt.
    }
  }
  if (!probed || !probed->lifted || probed->plain_query != facts.plain_query ||
      probed->lifted->Shape() != facts.lifted->Shape() ||
      probed->lifted->values.size() != facts.lifted->values.size()) {
    return nullptr;
  }
  auto r = std::make_shared<Recall>();
  const auto& actual = facts.lifted->values;
  const auto& stand = probed->lifted->values;
  std::vector<int> filled(literals.size(), 0);
  r->slots.assign(literals.size(), {});
  for (size_t v = 0; v < actual.size(); ++v) {
    if (SameValue(actual[v], stand[v])) continue;
    // A value that differs must be one literal, passed through.
    size_t k = 0;
    bool negate = false;
    bool ok = false;
    if (stand[v].kind == LiftedValue::kInteger && actual[v].kind == LiftedValue::kInteger) {
      negate = stand[v].integer < 0;
      const int64_t magnitude = negate ? -stand[v].integer : stand[v].integer;
      k = static_cast<size_t>(magnitude - kProbeBase);
      ok = magnitude >= kProbeBase && k < literals.size() &&
           PlainKind(tokens[literals[k]], Decimals()) == Plain::kInteger &&
           actual[v].integer == (negate ? -1 : 1) * IntegerOf(tokens[literals[k]].text);
    } else if ((stand[v].kind == LiftedValue::kText || stand[v].kind == LiftedValue::kDecimal) &&
               actual[v].kind == stand[v].kind) {
      const std::string& s = stand[v].text;
      if (s.size() > 13 && s.starts_with("ZtkMemoProbe") && s.back() == 'x') {
        k = static_cast<size_t>(std::strtoull(s.c_str() + 12, nullptr, 10));
        ok = k < literals.size() && s == ProbeString(k) &&
             PlainKind(tokens[literals[k]], Decimals()) == Plain::kString &&
             actual[v].text == StringValue(tokens[literals[k]]);
      } else if (IsPlainDecimal(s) && s.size() < 12) {
        k = static_cast<size_t>(std::strtoull(s.c_str(), nullptr, 10));
        ok = k < literals.size() && s == ProbeDecimal(k) &&
             PlainKind(tokens[literals[k]], Decimals()) == Plain::kDecimal &&
             actual[v].text == tokens[literals[k]].text;
      }
    }
    if (!ok) return nullptr;
    r->slots[k] = {v, negate, PlainKind(tokens[literals[k]], Decimals())};
    ++filled[k];
  }
  for (int n : filled) {
    if (n != 1) return nullptr;
  }
  r->literal_of.assign(actual.size(), -1);
  for (size_t k = 0; k < r->slots.size(); ++k) r->literal_of[r->slots[k].value] = static_cast<int32_t>(k);
  r->plain_query = facts.plain_query;
  r->lifted.values = facts.lifted->values;
  r->lifted.shared_shape = std::make_shared<const std::string>(facts.lifted->Shape());
  // The form as text, unless some token's end could depend on bytes past
  // a literal: a '#' that did not open a date looked for its closing '#'
  // up to forty bytes on, across whatever literal follows.
  const Lexicon& lexicon = rules_.lexicon ? *rules_.lexicon : LibraryLexicon();
  for (const Token& t : tokens) {
    if (lexicon.jet_dates && t.text.front() == '#' && t.kind != TokenKind::kJetDate) return r;
  }
  size_t next = 0;
  for (size_t i = 0; i < tokens.size(); ++i) {
    if (next < literals.size() && literals[next] == i) {
      r->ends.push_back(static_cast<uint32_t>(r->fixed.size()));
      r->kinds.push_back(PlainKind(tokens[i], Decimals()));
      ++next;
    } else {
      r->fixed.append(tokens[i].text);
    }
  }
  r->ends.push_back(static_cast<uint32_t>(r->fixed.size()));
  return r;
}

}  // namespace ZTkDb::detail
