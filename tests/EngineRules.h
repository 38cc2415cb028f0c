#pragma once

// Each engine's adaptation and lifting rules as the engine sets them up,
// over a small schema, for checks that run statements through the engine's
// reading without an engine (the memo test and its fuzz target).
#include <strings.h>

#include <string>
#include <vector>

#include "engine/SchemaCache.h"
#include "engine/dialect/ServerDialect.h"

namespace ztktest {

// Three tables whose *Datum columns hold dates, st* columns texts, cuKosten
// an amount (19 digits, 4 after the point) and dStunden a double, as the
// engines' catalogues would report them.
inline std::vector<ZTkDb::detail::ColumnInfo> MemoCatalogue(const std::string& table) {
  bool known = false;
  for (const char* t : {"T_Auftrag", "T_Meldung", "T_AuftragMeldung"}) {
    known = known || strcasecmp(table.c_str(), t) == 0;
  }
  if (!known) return {};
  std::vector<ZTkDb::detail::ColumnInfo> columns;
  for (const char* name :
       {"lId", "lNr", "lAuftragId", "lMeldungId", "stUId", "stAuftrag", "AuftragsDatum",
        "ErledDatum", "ErledigtDatum", "cuKosten", "dStunden"}) {
    ZTkDb::detail::ColumnInfo c;
    c.name = name;
    c.is_date = c.name.ends_with("Datum");
    c.is_text = c.name.starts_with("st");
    c.declared_type = c.is_date ? "TIMESTAMP" : c.is_text ? "VARCHAR(255)" : "INTEGER";
    c.is_float = c.name == "dStunden";
    if (c.name == "cuKosten") {
      c.precision = 19;
      c.scale = 4;
    }
    columns.push_back(c);
  }
  return columns;
}

// The embedded engine binds every string; a server binds strings only
// beside text and date columns, never one holding '?', and hardens
// backslashes its own way.
struct EngineRules {
  ZTkDb::detail::SchemaCache schema{MemoCatalogue};
  ZTkDb::detail::LiftingRules lifting;
  ZTkDb::detail::AdaptationRules rules;
  explicit EngineRules(const ZTkDb::detail::ServerDialect& dialect) {
    using namespace ZTkDb::detail;
    rules = schema.Rules([&dialect](const ZTkDb::Date& d) { return dialect.DateLiteral(d); });
    if (&dialect == &SqliteDialect()) {
      lifting.any_string = true;
      rules.lexicon = &LibraryLexicon();
      rules.final_lexicon = &dialect.Lexical();
    } else {
      lifting = schema.Lifting();
      lifting.any_string = dialect.StringsReadAsBoundText();
      lifting.refuse_question_marks = true;
      rules.lexicon = &dialect.Lexical();
      rules.harden_string = [&dialect](const Token& t) { return dialect.HardenString(t); };
    }
    lifting.decimal_marker = dialect.BoundDecimal();
    rules.lifting = &lifting;
  }
  EngineRules(const EngineRules&) = delete;
  EngineRules& operator=(const EngineRules&) = delete;
};

}  // namespace ztktest
