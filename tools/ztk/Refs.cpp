#include "Refs.h"

#include <cctype>
#include <charconv>
#include <vector>

#include "connection/DbConnectionRegistry.h"
#include "connection/DbDialect.h"
#include "engine/Database.h"

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
    throw UsageError("'" + ref + "' names no " + word + ": give its id" +
                     (numbered ? " or its prefix and number as the lists print them (A12)" : ""));
  }
  const std::string prefix = ref.substr(0, letters);
  // Only digits reach the text; the prefix is compared here.
  const std::string table = word == "auftrag" ? "T_Auftrag" : "T_Meldung";
  auto db = ZTkDb::detail::DbConnectionRegistry::Instance()
                .Item(ZTkDb::detail::WorkspaceName(session.Client()))
                ->GetDatabase();
  const std::string sql = "SELECT lId, stNrVorsatz FROM " + table +
                          " WHERE lNr = " + std::to_string(nr) + " ORDER BY lId";
  ZTkDb::Recordset rs(db, sql, db->Query(sql));
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
  if (found.empty()) throw Failure("no " + word + " " + ref);
  std::string ids;
  for (int32_t candidate : found) ids += (ids.empty() ? "" : ", ") + std::to_string(candidate);
  throw Failure(word + " " + ref + " is not one row: ids " + ids + ". Give the id.");
}

}  // namespace ztk
