#include "Refs.h"

#include <cctype>
#include <charconv>
#include <vector>

#include "Text.h"
#include "connection/ToolAccess.h"

namespace ztk {
namespace {

bool ParseNumber(std::string_view digits, int32_t& out) {
  if (digits.empty() || digits.size() > 10) return false;
  const auto [end, ec] = std::from_chars(digits.data(), digits.data() + digits.size(), out);
  return ec == std::errc() && end == digits.data() + digits.size();
}

bool SameLetters(const std::string& a, const std::string& b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i) {
    if (std::tolower(static_cast<unsigned char>(a[i])) !=
        std::tolower(static_cast<unsigned char>(b[i]))) {
      return false;
    }
  }
  return true;
}

// Why `ref` names no row of the kind `word`: one sentence per kind, so that
// a translation can decline the noun.
std::string NamesNothing(const std::string& word, const std::string& ref) {
  if (word == "auftrag") {
    return Say(_("'{1}' names no order: give its id, or its prefix and number as the lists print "
                 "them (A12)"),
               ref);
  }
  if (word == "meldung") {
    return Say(_("'{1}' names no report: give its id, or its prefix and number as the lists print "
                 "them (M12)"),
               ref);
  }
  if (word == "leistung") return Say(_("'{1}' names no labour booking: give its id"), ref);
  if (word == "material") return Say(_("'{1}' names no material booking: give its id"), ref);
  return Say(_("'{1}' names no document link: give its id"), ref);
}

}  // namespace

int32_t ResolveRef(Session& session, const std::string& word, const std::string& ref) {
  int32_t id = 0;
  if (ParseNumber(ref, id)) return id;
  const bool numbered = word == "auftrag" || word == "meldung";
  size_t letters = 0;
  while (letters < ref.size() && std::isalpha(static_cast<unsigned char>(ref[letters]))) {
    ++letters;
  }
  int32_t nr = 0;
  if (!numbered || letters == 0 || letters > 10 ||
      !ParseNumber(std::string_view(ref).substr(letters), nr)) {
    throw UsageError(NamesNothing(word, ref));
  }
  const std::string prefix = ref.substr(0, letters);
  // Only digits reach the text; the prefix is compared here.
  const std::string table = word == "auftrag" ? "T_Auftrag" : "T_Meldung";
  auto db = ZTkDb::tool::EngineOf(session.Client());
  const std::string sql = "SELECT lId, stNrVorsatz FROM " + table +
                          " WHERE lNr = " + std::to_string(nr) + " ORDER BY lId";
  const auto result = ZTkDb::tool::Results(db, sql);
  ZTkDb::Recordset& rs = *result;
  std::vector<int32_t> exact, folded;
  if (rs.RecordCount() > 0) {
    for (rs.MoveFirst(); !rs.Eof(); rs.MoveNext()) {
      const std::string stored =
          rs.Fields("stNrVorsatz").IsNull() ? std::string() : rs.Fields("stNrVorsatz").ToString();
      if (stored == prefix) exact.push_back(rs.Fields("lId").ToLong());
      if (SameLetters(stored, prefix)) folded.push_back(rs.Fields("lId").ToLong());
    }
  }
  const std::vector<int32_t>& found = exact.size() == 1 ? exact : folded;
  if (found.size() == 1) return found.front();
  const bool order = word == "auftrag";
  if (found.empty()) {
    // TRANSLATORS: {1} is an order's prefix and number (A12).
    if (order) throw Failure(Say(_("no order {1}"), ref));
    // TRANSLATORS: {1} is a report's prefix and number (M12).
    throw Failure(Say(_("no report {1}"), ref));
  }
  std::string ids;
  for (int32_t candidate : found) ids += (ids.empty() ? "" : ", ") + std::to_string(candidate);
  if (order) {
    // TRANSLATORS: {1} is an order's prefix and number (A12), {2} a list of ids.
    throw Failure(Say(_("{1} names more than one order (ids {2}); give the id"), ref, ids));
  }
  // TRANSLATORS: {1} is a report's prefix and number (M12), {2} a list of ids.
  throw Failure(Say(_("{1} names more than one report (ids {2}); give the id"), ref, ids));
}

std::vector<std::string> WithIds(Session& session, const std::vector<std::string>& assignments) {
  std::vector<std::string> out;
  for (const std::string& a : assignments) {
    const size_t eq = a.find('=');
    std::string name = a.substr(0, eq == std::string::npos ? 0 : eq);
    for (char& c : name) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    const std::string value = eq == std::string::npos ? "" : a.substr(eq + 1);
    const bool number = !value.empty() && std::isalpha(static_cast<unsigned char>(value[0]));
    if (number && (name == "auftragid" || name == "orderid")) {
      out.push_back(a.substr(0, eq + 1) + std::to_string(ResolveRef(session, "auftrag", value)));
    } else if (number && (name == "meldungid" || name == "msgid")) {
      out.push_back(a.substr(0, eq + 1) + std::to_string(ResolveRef(session, "meldung", value)));
    } else {
      out.push_back(a);
    }
  }
  return out;
}

}  // namespace ztk
