// Statement adaptation for one engine's rules (ZTKDB_FUZZ_ODBC: the ODBC
// timestamp escape of servers other than PostgreSQL and SQLite; otherwise
// the quoted ISO text of SQLite and PostgreSQL), with its invariants:
//  - a text holding more statements than one is refused (3129), one that
//    cannot be read with certainty is refused (3075), and an adapted text
//    never holds more statements than it was given;
//  - adapting an adapted text changes nothing more;
//  - a string that is not a German date, standing in a date position,
//    leaves the statement byte for byte as it was.
#include <strings.h>

#include <cstdlib>
#include <string>

#include "engine/SqlTokenizer.h"
#include "engine/StatementAdapter.h"
#include "sql/Literals.h"
#include "ztkdb/Date.h"
#include "ztkdb/Error.h"

using namespace ZTkDb;
using namespace ZTkDb::detail;

namespace {

const AdaptationRules& Rules() {
  static const AdaptationRules rules = [] {
    AdaptationRules r;
#ifdef ZTKDB_FUZZ_ODBC
    r.date_literal = [](const Date& d) { return "{ts '" + d.IsoText() + "'}"; };
#else
    r.date_literal = [](const Date& d) { return "'" + d.IsoText() + "'"; };
#endif
    r.is_table = [](const std::string& t) {
      for (const char* known : {"T_Auftrag", "T_Meldung", "T_Leistung", "T_AMaterial",
                                "T_AuftragMeldung", "T_MsgOrderDokument"}) {
        if (strcasecmp(t.c_str(), known) == 0) return true;
      }
      return false;
    };
    r.is_date_column = [](const std::string&, const std::string& c) {
      for (const char* known : {"AuftragsDatum", "ErledBisDatum", "WiederDatum", "ErledigtDatum",
                                "MeldeDatum", "AusfDatum"}) {
        if (strcasecmp(c.c_str(), known) == 0) return true;
      }
      return false;
    };
    return r;
  }();
  return rules;
}

// 1 + the ';' after which something meaningful follows.
int Statements(const std::string& sql) {
  int count = 1;
  bool ended = false;
  for (const Token& t : Tokenize(sql)) {
    if (IsTrivia(t)) continue;
    if (t.kind == TokenKind::kSemicolon) {
      ended = true;
    } else if (ended) {
      ++count;
      ended = false;
    }
  }
  return count;
}

bool LooksGerman(const std::string& value) {
  const size_t dot = value.find('.');
  Date d;
  return dot != std::string::npos && dot != 0 && dot <= 2 && Date::TryParse(value, d);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string input(reinterpret_cast<const char*>(data), size);
  std::string out;
  try {
    out = AdaptStatement(input, Rules());
  } catch (const Error& e) {
    if (e.Number() == 3129 && Statements(input) > 1) return 0;
    if (e.Number() == 3075 && input.find('\0') != std::string::npos) return 0;
    Doubt doubt;
    Tokenize(input, LibraryLexicon(), &doubt);
    if (e.Number() == 3075 && doubt) return 0;  // a string or comment left open
    std::abort();                               // refused for no reason
  }
  if (Statements(out) > Statements(input)) std::abort();
  if (AdaptStatement(out, Rules()) != out) std::abort();

  // The same bytes as a text in a date position.
  if (input.find('\0') == std::string::npos && !LooksGerman(input)) {
    const std::string probe =
        "SELECT * FROM T_Auftrag WHERE T_Auftrag.AuftragsDatum = '" + TextValue(input) + "'";
    if (AdaptStatement(probe, Rules()) != probe) std::abort();
  }
  return 0;
}
