#include "Text.h"

#include <unistd.h>

#include <clocale>
#include <cstdio>
#include <filesystem>

namespace ztk {

namespace {

// Where the catalogues are: beside the binary in a build tree, under
// ../share/locale of an installed (or moved) tree, or where it was built to
// be installed.
std::string CatalogueDir() {
  namespace fs = std::filesystem;
  std::error_code ec;
  const fs::path self = fs::read_symlink("/proc/self/exe", ec);
  if (!ec) {
    for (const fs::path& dir :
         {self.parent_path() / "locale", self.parent_path().parent_path() / "share" / "locale"}) {
      if (fs::exists(dir / "de" / "LC_MESSAGES" / "ztk.mo", ec)) return dir.string();
    }
  }
  return ZTK_LOCALEDIR;
}

}  // namespace

void SetUpLanguage() {
  std::setlocale(LC_MESSAGES, "");
  // The catalogue's texts go out as UTF-8 whatever LC_CTYPE says: the
  // character type stays C so that no library call reads numbers otherwise.
  static const std::string dir = CatalogueDir();
  bindtextdomain("ztk", dir.c_str());
  bind_textdomain_codeset("ztk", "UTF-8");
  textdomain("ztk");
}

const char* ContextText(const char* key, const char* text) {
  const char* translated = ::gettext(key);
  return translated == key ? text : translated;
}

std::string ToText(const std::string& s) { return s; }
std::string ToText(const char* s) { return s ? s : ""; }

std::string Fill(const char* pattern, const std::vector<std::string>& args) {
  std::string out;
  for (const char* p = pattern; *p; ++p) {
    if (p[0] == '{' && p[1] >= '1' && p[1] <= '9' && p[2] == '}') {
      const auto index = static_cast<size_t>(p[1] - '1');
      if (index < args.size()) {
        out += args[index];
        p += 2;
        continue;
      }
    }
    out += *p;
  }
  return out;
}

const DeskForms& Desk() {
  static const DeskForms forms = [] {
    DeskForms f;
    // TRANSLATORS: how a date is written: yyyy, mm and dd in any order with
    // any separators.
    f.date_pattern = P_("date form", "yyyy-mm-dd");
    f.yes = P_("flag", "yes");
    f.no = P_("flag", "no");
    // TRANSLATORS: the decimal mark, then the mark that groups thousands.
    const std::string marks = P_("number form", ".,");
    if (marks.size() == 2) {
      f.decimal = marks[0];
      f.group = marks[1];
    }
    return f;
  }();
  return forms;
}

std::string DeskDate(const ZTkDb::Date& d) {
  if (d == ZTkDb::NoDate) return "";
  const std::string iso = d.IsoText();  // yyyy-mm-dd hh:nn:ss
  std::string out = Desk().date_pattern;
  auto put = [&](const char* token, const std::string& value) {
    const size_t at = out.find(token);
    if (at != std::string::npos) out.replace(at, std::string(token).size(), value);
  };
  put("yyyy", iso.substr(0, 4));
  put("mm", iso.substr(5, 2));
  put("dd", iso.substr(8, 2));
  if (d.HasTime()) out += " " + iso.substr(11, 5);
  return out;
}

std::string DeskAmount(const std::string& exactText) {
  std::string sign, whole = exactText, fraction;
  if (!whole.empty() && whole[0] == '-') {
    sign = "-";
    whole.erase(0, 1);
  }
  if (const size_t dot = whole.find('.'); dot != std::string::npos) {
    fraction = whole.substr(dot + 1);
    whole.resize(dot);
  }
  while (fraction.size() < 2) fraction += '0';
  std::string grouped;
  for (size_t i = 0; i < whole.size(); ++i) {
    if (i > 0 && (whole.size() - i) % 3 == 0) grouped += Desk().group;
    grouped += whole[i];
  }
  return sign + grouped + Desk().decimal + fraction;
}

}  // namespace ztk
