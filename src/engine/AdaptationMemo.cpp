#include "engine/AdaptationMemo.h"

#include <cstdlib>
#include <cstring>
#include <optional>

#include "engine/StatementCache.h"
#include "ztkdb/Error.h"

namespace ZTkDb::detail {
namespace {

enum class Plain { kNone, kInteger, kString };

Plain PlainKind(const Token& t) {
  const std::string_view text = t.text;
  if (t.kind == TokenKind::kNumber) {
    if (text.empty() || text.size() > 18) return Plain::kNone;
    for (char c : text) {
      if (c < '0' || c > '9') return Plain::kNone;
    }
    return Plain::kInteger;
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
constexpr int64_t kProbeBase = 9070000000000000;
std::string ProbeString(size_t k) { return "ZtkMemoProbe" + std::to_string(k) + "x"; }

bool SameValue(const LiftedValue& a, const LiftedValue& b) {
  return a.kind == b.kind && a.text == b.text && a.integer == b.integer && a.number == b.number &&
         a.null_as == b.null_as && a.year == b.year && a.month == b.month && a.day == b.day &&
         a.hour == b.hour && a.minute == b.minute && a.second == b.second;
}

// The statement's form (see the header) and its plain literals, in order;
// false when the text cannot be read with certainty.
bool FormOf(const std::string& sql, const Lexicon& lexicon, std::vector<Token>& tokens,
            std::string& key, std::vector<size_t>& literals) {
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
    const Plain plain = PlainKind(t);
    *out++ = static_cast<char>('A' + static_cast<int>(t.kind));
    if (plain != Plain::kNone) {
      *out++ = plain == Plain::kInteger ? '#' : '$';
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

struct AdaptationMemo::Form {
  // A form is learnt when it comes a second time: one seen once may never
  // come again, and learning costs a second adaptation.
  bool learnt = false;
  bool usable = false;
  bool plain_query = false;
  LiftedStatement lifted;
  // Which value each literal fills, and whether a sign before it went
  // with it (an integer's value is then its negation).
  struct Slot {
    size_t value = 0;
    bool negate = false;
  };
  std::vector<Slot> slots;  // by literal
};

class AdaptationMemo::Forms : public StatementCache<Form> {
 public:
  // Kept for their capacity. A call takes them and gives them back, so a
  // call made while another runs (adaptation asking the schema) works on
  // fresh ones.
  std::string key;
  std::vector<Token> tokens;
  std::vector<size_t> literals;
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

AdaptationMemo::AdaptationMemo(const AdaptationRules& rules)
    : rules_(rules), forms_(std::make_unique<Forms>()) {}

AdaptationMemo::~AdaptationMemo() = default;

void AdaptationMemo::Clear() { forms_->Clear(); }

std::string AdaptationMemo::Adapt(const std::string& sql, StatementFacts& facts) {
  // A NUL is refused by the full path, whatever it stands in.
  if (sql.find('\0') != std::string::npos) return AdaptStatement(sql, rules_, &facts);
  Borrowed<std::vector<Token>> borrowedTokens(forms_->tokens);
  Borrowed<std::vector<size_t>> borrowedLiterals(forms_->literals);
  Borrowed<std::string> borrowedKey(forms_->key);
  std::vector<Token>& tokens = *borrowedTokens;
  std::vector<size_t>& literals = *borrowedLiterals;
  std::string& key = *borrowedKey;
  if (!FormOf(sql, rules_.lexicon ? *rules_.lexicon : LibraryLexicon(), tokens, key, literals)) {
    return AdaptStatement(sql, rules_, &facts);
  }
  if (literals.empty()) return AdaptStatement(sql, rules_, &facts, &tokens);
  Form* form = forms_->Find(key);
  if (form && form->usable) {
    LiftedStatement lifted = form->lifted;
    for (size_t k = 0; k < literals.size(); ++k) {
      const Token& t = tokens[literals[k]];
      LiftedValue& v = lifted.values[form->slots[k].value];
      if (v.kind == LiftedValue::kInteger) {
        const int64_t n = IntegerOf(t.text);
        v.integer = form->slots[k].negate ? -n : n;
      } else {
        v.text = StringValue(t);
      }
    }
    facts.plain_query = form->plain_query;
    facts.lifted = std::move(lifted);
    return {};
  }
  std::string text = AdaptStatement(sql, rules_, &facts, &tokens);
  if (!form) {
    forms_->Insert(key, Form{});
  } else if (!form->learnt) {
    Learn(*form, sql, tokens, literals, facts);
  }
  return text;
}

void AdaptationMemo::Learn(Form& form, const std::string& sql, const std::vector<Token>& tokens,
                           const std::vector<size_t>& literals, const StatementFacts& facts) {
  form.learnt = true;
  form.plain_query = facts.plain_query;
  std::optional<StatementFacts> probed;
  if (facts.lifted) {
    std::string probe;
    probe.reserve(sql.size() + 32 * literals.size());
    size_t next = 0;
    for (size_t i = 0; i < tokens.size(); ++i) {
      if (next < literals.size() && literals[next] == i) {
        probe += PlainKind(tokens[i]) == Plain::kInteger ? std::to_string(kProbeBase + next)
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
  if (probed && probed->lifted && probed->plain_query == facts.plain_query &&
      probed->lifted->shape == facts.lifted->shape &&
      probed->lifted->values.size() == facts.lifted->values.size()) {
    const auto& actual = facts.lifted->values;
    const auto& stand = probed->lifted->values;
    std::vector<int> filled(literals.size(), 0);
    form.slots.assign(literals.size(), {});
    bool ok = true;
    for (size_t v = 0; v < actual.size() && ok; ++v) {
      if (SameValue(actual[v], stand[v])) continue;
      // A value that differs must be one literal, passed through.
      size_t k = 0;
      bool negate = false;
      if (stand[v].kind == LiftedValue::kInteger && actual[v].kind == LiftedValue::kInteger) {
        negate = stand[v].integer < 0;
        const int64_t magnitude = negate ? -stand[v].integer : stand[v].integer;
        k = static_cast<size_t>(magnitude - kProbeBase);
        ok = magnitude >= kProbeBase && k < literals.size() &&
             PlainKind(tokens[literals[k]]) == Plain::kInteger &&
             actual[v].integer == (negate ? -1 : 1) * IntegerOf(tokens[literals[k]].text);
      } else if (stand[v].kind == LiftedValue::kText && actual[v].kind == LiftedValue::kText) {
        const std::string& s = stand[v].text;
        ok = s.size() > 13 && s.starts_with("ZtkMemoProbe") && s.back() == 'x';
        if (ok) {
          k = static_cast<size_t>(std::strtoull(s.c_str() + 12, nullptr, 10));
          ok = k < literals.size() && s == ProbeString(k) &&
               PlainKind(tokens[literals[k]]) == Plain::kString &&
               actual[v].text == StringValue(tokens[literals[k]]);
        }
      } else {
        ok = false;
      }
      if (ok) {
        form.slots[k] = {v, negate};
        ++filled[k];
      }
    }
    for (int n : filled) ok = ok && n == 1;
    if (ok) {
      form.usable = true;
      form.lifted = *facts.lifted;
    }
  }
  if (!form.usable) form.slots.clear();
}

}  // namespace ZTkDb::detail
