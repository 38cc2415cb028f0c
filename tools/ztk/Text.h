#pragma once

// What ztk says, in the user's language: English source texts looked up in
// the catalogue of the gettext domain "ztk" for LANGUAGE, LC_ALL,
// LC_MESSAGES or LANG. The library's own box texts are not translated.
#include <libintl.h>

#include <concepts>
#include <string>
#include <vector>

#include "ztkdb/ZTkDb.h"

// The conventional gettext marks: _ translates, N_ only marks a text that is
// translated where it is used, P_ translates with a context that tells two
// uses of the same English apart.
#define _(text) ::gettext(text)
#define N_(text) text
#define P_(context, text) ::ztk::ContextText(context "\004" text, text)

namespace ztk {

// Chooses the catalogue: messages only (LC_MESSAGES), so that numbers read
// and written by the C library keep their C form whatever the language.
void SetUpLanguage();

const char* ContextText(const char* key, const char* text);

std::string ToText(const std::string& s);
std::string ToText(const char* s);
template <std::integral T>
std::string ToText(T value) {
  return std::to_string(value);
}

// The pattern (already translated) with {1}…{9} replaced by the arguments,
// so that a translation may put them in another order.
std::string Fill(const char* pattern, const std::vector<std::string>& args);
template <typename... A>
std::string Say(const char* pattern, const A&... args) {
  return Fill(pattern, {ToText(args)...});
}
// One of two patterns by count (ngettext), its {1} the count.
template <typename... A>
std::string SayCount(const char* one, const char* many, unsigned long n, const A&... args) {
  return Fill(::ngettext(one, many, n), {std::to_string(n), ToText(args)...});
}

// The forms a desk reads, in the catalogue's language: dates (dd.mm.yyyy
// in German, ISO in English), yes/no, amounts with the decimal mark and the
// thousands grouping of the language.
struct DeskForms {
  std::string date_pattern;  // "yyyy-mm-dd" or "dd.mm.yyyy"
  std::string yes, no;
  char decimal = '.';
  char group = ',';
};
const DeskForms& Desk();
std::string DeskDate(const ZTkDb::Date& d);            // empty for NoDate; hh:mm when it has a time
std::string DeskAmount(const std::string& exactText);  // "1234.5" → "1.234,50"

}  // namespace ztk
