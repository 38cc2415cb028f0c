// Template filling and the text literal form, against references.
//  - Filling by SqlTemplate equals replacing step by step over the whole text.
//  - A text through TextLiteral, between quotes, is one string token whose
//    value is the text again: no value can end its literal.
#include <fuzzer/FuzzedDataProvider.h>

#include <cstdlib>
#include <string>

#include "engine/SqlTokenizer.h"
#include "sql/Literals.h"
#include "sql/SqlTemplate.h"

using namespace ZTkDb::detail;

namespace {

constexpr size_t kMaxText = 1 << 16;

std::string StepByStep(std::string text, const std::string& name, const std::string& value) {
  if (name.empty()) return text;
  std::string out;
  size_t from = 0;
  for (size_t at = text.find(name); at != std::string::npos; at = text.find(name, from)) {
    out += text.substr(from, at - from) + value;
    from = at + name.size();
  }
  return out + text.substr(from);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  FuzzedDataProvider in(data, size);
  std::string expected = in.ConsumeRandomLengthString(4000);
  SqlTemplate sql(expected);
  const int steps = in.ConsumeIntegralInRange(0, 12);
  for (int i = 0; i < steps && in.remaining_bytes() > 0; ++i) {
    const std::string name = "#" + in.ConsumeRandomLengthString(12) + "#";
    const std::string value = in.ConsumeRandomLengthString(40);
    expected = StepByStep(expected, name, value);
    sql.Replace(name, value);
    // A value that holds its own placeholder multiplies the text with each
    // step; past this size the run proves nothing new and only eats memory.
    if (expected.size() > kMaxText) break;
  }
  if (sql.Text() != expected) std::abort();

  std::string text = in.ConsumeRemainingBytesAsString();
  if (text.find('\0') != std::string::npos) return 0;
  const std::string quoted = "'" + TextValue(text) + "'";
  const auto tokens = Tokenize(quoted);
  if (tokens.size() != 1 || tokens[0].kind != TokenKind::kString) std::abort();
  if (StringValue(tokens[0]) != text) std::abort();
  return 0;
}
