// The memo of statement forms against the full reading: a text is read
// twice (so that its form is learnt), then in variants with its integers
// and strings replaced by others; every reading the memo gives must equal
// the full path's, refusals included.
#include <cstdlib>
#include <string>
#include <vector>

#include "../tests/EngineRules.h"
#include "engine/AdaptationMemo.h"
#include "engine/dialect/ServerDialect.h"
#include "ztkdb/Error.h"

using namespace ZTkDb;
using namespace ZTkDb::detail;

namespace {

// Besides plain literals, fillings that are not one plain literal: a learnt
// form is matched as text, and these must not pass for one of its gaps.
const char* const kNumbers[] = {"0",    "1",    "42",   "123456789012345678", "9070000000000001",
                                "1e5",  "1.5",  "7x",   "1234567890123456789", "2 #",
                                "0.25", "00.5", "1.",   ".5", "9070000000000001.25",
                                "12345678901234567.0001", "1.5e3", "1.5.5"};
const char* const kStrings[] = {"'x'", "''", "'O''B'", "'1.2.2024'", "'?'", "'\\'", "'12.05.2024 10:00'",
                                "'ZtkMemoProbe1x'", "'a'' OR ''1'", "'2024-05-12 10:00:00'",
                                "'a' 'b'", "'x'\n'y'", "'#'", "'a'--"};

std::string Describe(const StatementFacts& f) {
  std::string out = f.plain_query ? "q|" : "o|";
  if (!f.lifted) return out + "-";
  out += f.lifted->Shape();
  for (const LiftedValue& v : f.lifted->values) {
    out += "|" + std::to_string(v.kind) + ":" + std::to_string(v.integer) + ":" + v.text + ":" +
           std::to_string(v.year) + "-" + std::to_string(v.month) + "-" + std::to_string(v.day) +
           " " + std::to_string(v.hour) + ":" + std::to_string(v.minute) + ":" +
           std::to_string(v.second);
  }
  return out;
}

// "text" for a reading, or the error it raised.
std::string Read(const std::string& sql, const AdaptationRules& rules, AdaptationMemo* memo) {
  try {
    StatementFacts facts;
    const std::string text = memo ? memo->Adapt(sql, facts) : AdaptStatement(sql, rules, &facts);
    (void)text;
    std::string described = Describe(facts);
    // As the engine does: the values go back and serve the next recall.
    if (memo && facts.lifted) AdaptationMemo::GiveBack(std::move(facts.lifted->values));
    return described;
  } catch (const Error& e) {
    return "error " + std::to_string(e.Number());
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  // The first byte picks the engine.
  if (size == 0) return 0;
  static ztktest::EngineRules engines[] = {ztktest::EngineRules(SqliteDialect()),
                                           ztktest::EngineRules(PostgresDialect()),
                                           ztktest::EngineRules(MariaDbDialect())};
  ztktest::EngineRules& r = engines[data[0] % 3];
  const std::string sql(reinterpret_cast<const char*>(data) + 1, size - 1);
  AdaptationMemo memo(r.rules);
  std::vector<std::string> texts = {sql, sql};
  Doubt doubt;
  const auto tokens = Tokenize(sql, r.rules.lexicon ? *r.rules.lexicon : LibraryLexicon(), &doubt);
  for (size_t variant = 0; variant < 4; ++variant) {
    std::string v;
    size_t k = variant;
    for (const Token& t : tokens) {
      if (t.kind == TokenKind::kNumber) {
        v += kNumbers[k++ % (sizeof kNumbers / sizeof *kNumbers)];
      } else if (t.kind == TokenKind::kString && t.text.size() >= 2 && t.text.front() == '\'') {
        v += kStrings[k++ % (sizeof kStrings / sizeof *kStrings)];
      } else {
        v.append(t.text);
      }
    }
    texts.push_back(v);
  }
  for (const std::string& text : texts) {
    if (Read(text, r.rules, &memo) != Read(text, r.rules, nullptr)) std::abort();
  }
  return 0;
}
