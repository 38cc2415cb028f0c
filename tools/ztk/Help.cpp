#include "Help.h"

#include <algorithm>
#include <optional>
#include <sstream>

#include "Output.h"
#include "Text.h"

namespace ztk {
namespace {

size_t HelpWidth() {
  const size_t terminal = TerminalWidth();
  return terminal > 0 ? terminal : 80;
}

class Formatter : public CLI::Formatter {
 public:
  Formatter() {
    // TRANSLATORS: the words of ztk's help around the commands and options.
    label("Usage", _("Usage"));
    label("OPTIONS", _("OPTIONS"));
    label("SUBCOMMAND", _("COMMAND"));
    label("SUBCOMMANDS", _("COMMANDS"));
    label("Positionals", _("Arguments"));
    label("REQUIRED", _("REQUIRED"));
    label("Env", _("Env"));
    label("Needs", _("Needs"));
    label("Excludes", _("Excludes"));
    // A narrow terminal keeps the room for the descriptions.
    column_width(HelpWidth() < 60 ? 16 : 26);
  }

  std::string make_option_desc(const CLI::Option* opt) const override {
    return Wrap(opt->get_description(), Room());
  }
  std::string make_subcommand(const CLI::App* sub) const override {
    std::stringstream out;
    CLI::detail::format_help(out, sub->get_display_name(true), Wrap(sub->get_description(), Room()),
                             column_width_);
    return out.str();
  }
  // The whole command line that leads to a command, "ztk auftrag list".
  std::string make_usage(const CLI::App* app, std::string) const override {
    std::string path;
    for (const CLI::App* at = app; at; at = at->get_parent()) {
      path = (at->get_parent() ? at->get_name() : std::string("ztk")) + (path.empty() ? "" : " ") +
             path;
    }
    return CLI::Formatter::make_usage(app, path);
  }
  std::string make_description(const CLI::App* app) const override {
    const std::string text = app->get_description();
    return text.empty() ? std::string() : Wrap(text, HelpWidth() - 1) + "\n";
  }

 private:
  // What is left of a line beside the names, never less than a readable
  // column.
  size_t Room() const {
    const size_t width = HelpWidth();
    return width > column_width_ + 21 ? width - column_width_ - 1 : 20;
  }
  static std::string Wrap(const std::string& text, size_t width) {
    std::string out;
    std::stringstream paragraphs(text);
    for (std::string paragraph; std::getline(paragraphs, paragraph);) {
      for (const auto& line : Wrapped(paragraph, width)) out += (out.empty() ? "" : "\n") + line;
    }
    return out;
  }
};

size_t Distance(const std::string& a, const std::string& b) {
  std::vector<size_t> row(b.size() + 1);
  for (size_t j = 0; j <= b.size(); ++j) row[j] = j;
  for (size_t i = 1; i <= a.size(); ++i) {
    size_t diagonal = row[0];
    row[0] = i;
    for (size_t j = 1; j <= b.size(); ++j) {
      const size_t above = row[j];
      row[j] = std::min({row[j] + 1, row[j - 1] + 1, diagonal + (a[i - 1] != b[j - 1] ? 1 : 0)});
      diagonal = above;
    }
  }
  return row[b.size()];
}

std::vector<std::string> Names(const CLI::App& app) {
  std::vector<std::string> names;
  for (const auto* sub : app.get_subcommands([](const CLI::App*) { return true; })) {
    names.push_back(sub->get_name());
  }
  return names;
}

}  // namespace

void SetUpHelp(CLI::App& app) {
  app.formatter(std::make_shared<Formatter>());
  // Subcommands take these from their parent when they are made; the help
  // flag takes its group when it is set.
  app.option_defaults()->group(_("Options"));
  app.group(_("Commands"));
  app.set_help_flag("-h,--help", _("print this help and exit"));
}

void FinishHelp(CLI::App& app) {
  for (CLI::App* sub : app.get_subcommands([](CLI::App*) { return true; })) {
    if (CLI::Option* help = sub->get_help_ptr()) help->group(_("Options"));
    FinishHelp(*sub);
  }
}

int FirstWord(int argc, char** argv) {
  for (int i = 1; i < argc; ++i) {
    const std::string word = argv[i];
    if (!word.starts_with("-")) return i;
    // The global options that take a value take the next word.
    if (word == "--db" || word == "--odbc" || word == "--client") ++i;
  }
  return argc;
}

// Lower case, umlauts as their vowels: "Aufträge" is near "auftrag".
std::string Folded(const std::string& word) {
  std::string out;
  for (size_t i = 0; i < word.size(); ++i) {
    const auto c = static_cast<unsigned char>(word[i]);
    if (c == 0xC3 && i + 1 < word.size()) {
      const auto next = static_cast<unsigned char>(word[++i]);
      out += next == 0xA4 || next == 0x84   ? "a"
             : next == 0xB6 || next == 0x96 ? "o"
             : next == 0xBC || next == 0x9C ? "u"
             : next == 0x9F                 ? "ss"
                                            : "?";
      continue;
    }
    out += static_cast<char>(std::tolower(c));
  }
  return out;
}

std::string Nearest(const std::string& typed, const std::vector<std::string>& known) {
  const std::string word = Folded(typed);
  std::string best;
  size_t bestDistance = 3;  // two slips at most
  for (const auto& name : known) {
    if (word.size() >= 2 && name.starts_with(word)) return name;
    const size_t d = Distance(word, name);
    if (d < bestDistance && d < name.size()) {
      best = name;
      bestDistance = d;
    }
  }
  return best;
}

namespace {

std::string Listing(const std::vector<std::string>& names) {
  std::string known;
  for (const auto& n : names) known += (known.empty() ? "" : ", ") + n;
  return known;
}

std::string UnknownCommand(const std::string& path, const std::string& word,
                           const std::vector<std::string>& names) {
  const std::string nearest = Nearest(word, names);
  if (!nearest.empty()) {
    return Say(_("unknown command '{1}'; did you mean '{2}'?"), path + word, path + nearest);
  }
  return Say(_("unknown command '{1}'; the commands are {2}"), path + word, Listing(names));
}

// An option the command does not know, with the nearest one it knows.
std::optional<std::string> UnknownOption(const CLI::App* at, const std::string& path,
                                         const std::string& what) {
  std::vector<std::string> options;
  for (const CLI::App* a = at; a; a = a->get_parent()) {
    for (const CLI::Option* option : a->get_options()) {
      for (const auto& name : option->get_lnames()) options.push_back("--" + name);
    }
  }
  std::stringstream extras(what.substr(what.find(':') + 1));
  for (std::string word; extras >> word;) {
    if (!word.starts_with("-")) continue;
    const std::string bare = word.substr(0, word.find('='));
    const std::string nearest = Nearest(bare, options);
    return nearest.empty()
               ? Say(_("unknown option '{1}'; ztk help {2}lists the options"), bare, path)
               : Say(_("unknown option '{1}'; did you mean '{2}'?"), bare, nearest);
  }
  return std::nullopt;
}

// The command words in order: the first that names no command of the one
// before it is unknown; a command with commands below it and none given
// lacks one.
std::optional<std::string> CommandMessage(const CLI::App& app, const CLI::ParseError& e,
                                          const std::string& what, int argc, char** argv) {
  const CLI::App* at = &app;
  std::string path;
  for (int i = FirstWord(argc, argv); i < argc; ++i) {
    const std::string word = argv[i];
    if (word.starts_with("-")) {
      if (word == "--db" || word == "--odbc" || word == "--client") ++i;
      continue;
    }
    const auto names = Names(*at);
    if (names.empty()) break;  // the arguments of a command
    if (std::find(names.begin(), names.end(), word) == names.end()) {
      return UnknownCommand(path, word, names);
    }
    path += word + " ";
    at = at->get_subcommand(word);
  }
  if (!Names(*at).empty()) {
    return path.empty() ? std::string(_("a command is required"))
                        : Say(_("'{1}' needs a command: {2}"), path.substr(0, path.size() - 1),
                              Listing(Names(*at)));
  }
  if (dynamic_cast<const CLI::ExtrasError*>(&e)) {
    if (auto message = UnknownOption(at, path, what)) return message;
  }
  if (what == "a command is required") return _("a command is required");
  return std::nullopt;
}

// The rest of CLI11's words, in the user's language.
std::string TranslatedMessage(const CLI::ParseError& e, const std::string& what) {
  auto after = [&](const std::string& marker) {
    const size_t at = what.find(marker);
    return at == std::string::npos ? std::string() : what.substr(at + marker.size());
  };
  if (dynamic_cast<const CLI::RequiredError*>(&e) && what.ends_with(" is required")) {
    return Say(_("{1} is required"), what.substr(0, what.size() - 12));
  }
  if (dynamic_cast<const CLI::ExtrasError*>(&e)) {
    return Say(_("this command takes no more arguments: {1}"), after(": "));
  }
  if (dynamic_cast<const CLI::ConversionError*>(&e) && what.starts_with("Could not convert: ")) {
    const std::string rest = after("Could not convert: ");
    const size_t eq = rest.find(" = ");
    if (eq != std::string::npos) {
      return Say(_("{1}: '{2}' is not a whole number"), rest.substr(0, eq), rest.substr(eq + 3));
    }
  }
  if (dynamic_cast<const CLI::ExcludesError*>(&e) && what.find(" excludes ") != std::string::npos) {
    return Say(_("{1} and {2} exclude each other"), what.substr(0, what.find(" excludes ")),
               after(" excludes "));
  }
  if (dynamic_cast<const CLI::ArgumentMismatch*>(&e) &&
      what.find(" required ") != std::string::npos) {
    return Say(_("{1} needs a value"), what.substr(0, what.find(':')));
  }
  if (dynamic_cast<const CLI::ValidationError*>(&e) &&
      what.find("not in range") != std::string::npos) {
    // "--reports: Value 0 not in range 1 to 100000"
    std::string name = what.substr(0, what.find(':'));
    std::string range = after("not in range ");
    const size_t to = range.find(" to ");
    if (to != std::string::npos) range = range.substr(0, to) + ".." + range.substr(to + 4);
    return Say(_("{1} must lie in {2}"), name, range);
  }
  return what;
}

}  // namespace

std::string ParseMessage(const CLI::App& app, const CLI::ParseError& e, int argc, char** argv) {
  const std::string what = e.what();
  if (what.find("At Most 1 required but received") != std::string::npos) {
    return Say(_("{1} was given more than once"), what.substr(0, what.find(':')));
  }
  if (dynamic_cast<const CLI::ExtrasError*>(&e) || what.find("A subcommand is required") == 0 ||
      what.find("a command is required") != std::string::npos ||
      what.find("subcommand") != std::string::npos) {
    if (auto message = CommandMessage(app, e, what, argc, argv)) return *message;
  }
  return TranslatedMessage(e, what);
}

}  // namespace ztk
