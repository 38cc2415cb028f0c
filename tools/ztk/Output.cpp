#include "Output.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <iostream>
#include <limits>

#include "Interrupt.h"
#include "Text.h"

namespace ztk {

namespace {

// One code point of valid UTF-8 at `i` (advanced past it); -1 and one byte
// for anything else.
int32_t NextCodePoint(const std::string& s, size_t& i) {
  const auto c = static_cast<unsigned char>(s[i]);
  int len = c < 0x80 ? 1 : (c >> 5) == 6 ? 2 : (c >> 4) == 14 ? 3 : (c >> 3) == 30 ? 4 : 0;
  if (len == 0 || i + static_cast<size_t>(len) > s.size()) {
    ++i;
    return -1;
  }
  int32_t cp = len == 1 ? c : c & (0x7F >> len);
  for (int k = 1; k < len; ++k) {
    const auto d = static_cast<unsigned char>(s[i + static_cast<size_t>(k)]);
    if ((d & 0xC0) != 0x80) {
      ++i;
      return -1;
    }
    cp = (cp << 6) | (d & 0x3F);
  }
  static const int32_t kMin[5] = {0, 0, 0x80, 0x800, 0x10000};
  if (cp < kMin[len] || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) {
    ++i;
    return -1;
  }
  i += static_cast<size_t>(len);
  return cp;
}

// Columns a code point takes on a terminal: East Asian wide and fullwidth
// characters and emoji two (Unicode's East_Asian_Width W and F, as wcwidth
// of current C libraries has them), combining marks and zero-width
// characters none.
int Columns(int32_t cp) {
  if ((cp >= 0x300 && cp <= 0x36F) || (cp >= 0x200B && cp <= 0x200F) ||
      (cp >= 0xFE00 && cp <= 0xFE0F) || cp == 0x20E3 || (cp >= 0x1F3FB && cp <= 0x1F3FF) ||
      (cp >= 0xE0100 && cp <= 0xE01EF)) {
    return 0;
  }
  static constexpr int32_t kWide[][2] = {
      {0x1100, 0x115F},   {0x231A, 0x231B},   {0x2329, 0x232A},   {0x23E9, 0x23EC},
      {0x23F0, 0x23F0},   {0x23F3, 0x23F3},   {0x25FD, 0x25FE},   {0x2614, 0x2615},
      {0x2648, 0x2653},   {0x267F, 0x267F},   {0x2693, 0x2693},   {0x26A1, 0x26A1},
      {0x26AA, 0x26AB},   {0x26BD, 0x26BE},   {0x26C4, 0x26C5},   {0x26CE, 0x26CE},
      {0x26D4, 0x26D4},   {0x26EA, 0x26EA},   {0x26F2, 0x26F3},   {0x26F5, 0x26F5},
      {0x26FA, 0x26FA},   {0x26FD, 0x26FD},   {0x2705, 0x2705},   {0x270A, 0x270B},
      {0x2728, 0x2728},   {0x274C, 0x274C},   {0x274E, 0x274E},   {0x2753, 0x2755},
      {0x2757, 0x2757},   {0x2795, 0x2797},   {0x27B0, 0x27B0},   {0x27BF, 0x27BF},
      {0x2B1B, 0x2B1C},   {0x2B50, 0x2B50},   {0x2B55, 0x2B55},   {0x2E80, 0x303E},
      {0x3041, 0x33FF},   {0x3400, 0x4DBF},   {0x4E00, 0x9FFF},   {0xA000, 0xA4CF},
      {0xA960, 0xA97F},   {0xAC00, 0xD7A3},   {0xF900, 0xFAFF},   {0xFE10, 0xFE19},
      {0xFE30, 0xFE6F},   {0xFF00, 0xFF60},   {0xFFE0, 0xFFE6},   {0x16FE0, 0x18AFF},
      {0x1B000, 0x1B2FF}, {0x1F004, 0x1F004}, {0x1F0CF, 0x1F0CF}, {0x1F18E, 0x1F18E},
      {0x1F191, 0x1F19A}, {0x1F200, 0x1F2FF}, {0x1F300, 0x1F320}, {0x1F32D, 0x1F335},
      {0x1F337, 0x1F37C}, {0x1F37E, 0x1F393}, {0x1F3A0, 0x1F3CA}, {0x1F3CF, 0x1F3D3},
      {0x1F3E0, 0x1F3F0}, {0x1F3F4, 0x1F3F4}, {0x1F3F8, 0x1F43E}, {0x1F440, 0x1F440},
      {0x1F442, 0x1F4FC}, {0x1F4FF, 0x1F53D}, {0x1F54B, 0x1F54E}, {0x1F550, 0x1F567},
      {0x1F57A, 0x1F57A}, {0x1F595, 0x1F596}, {0x1F5A4, 0x1F5A4}, {0x1F5FB, 0x1F64F},
      {0x1F680, 0x1F6C5}, {0x1F6CC, 0x1F6CC}, {0x1F6D0, 0x1F6D2}, {0x1F6D5, 0x1F6D7},
      {0x1F6DC, 0x1F6DF}, {0x1F6EB, 0x1F6EC}, {0x1F6F4, 0x1F6FC}, {0x1F7E0, 0x1F7EB},
      {0x1F7F0, 0x1F7F0}, {0x1F90C, 0x1F93A}, {0x1F93C, 0x1F945}, {0x1F947, 0x1F9FF},
      {0x1FA70, 0x1FAFF}, {0x20000, 0x3FFFD}};
  for (const auto& range : kWide) {
    if (cp < range[0]) break;
    if (cp <= range[1]) return 2;
  }
  return 1;
}

// A cell on one line: tabs and line breaks as blanks, other control
// characters left out, bad bytes as U+FFFD.
std::string Clean(const std::string& s) {
  std::string out;
  for (size_t i = 0; i < s.size();) {
    const size_t start = i;
    const int32_t cp = NextCodePoint(s, i);
    if (cp < 0)
      out += "\xEF\xBF\xBD";
    else if (cp == '\t' || cp == '\n' || cp == '\r')
      out += ' ';
    else if (cp < 0x20 || cp == 0x7F)
      continue;
    else
      out.append(s, start, i - start);
  }
  return out;
}

// The text cut to `width` columns, "…" standing for the rest.
std::string Cut(const std::string& s, size_t width) {
  if (DisplayWidth(s) <= width) return s;
  std::string out;
  size_t used = 0;
  for (size_t i = 0; i < s.size();) {
    const size_t start = i;
    const int32_t cp = NextCodePoint(s, i);
    const size_t w = static_cast<size_t>(Columns(cp < 0 ? 0xFFFD : cp));
    if (used + w + 1 > width) break;
    used += w;
    out.append(s, start, i - start);
  }
  return out + "…";
}

size_t Total(const std::vector<size_t>& widths, const std::vector<bool>& shown) {
  size_t total = 0, count = 0;
  for (size_t i = 0; i < widths.size(); ++i) {
    if (shown[i]) {
      total += widths[i];
      ++count;
    }
  }
  return count ? total + 2 * (count - 1) : 0;
}

// Widths within `limit`, the cuttable columns of the highest rank giving
// way first (the widest of a rank before the others), none below its least
// width, the main texts (rank 1) at first not below a width that still
// reads well.
std::vector<size_t> Shrunk(const std::vector<Column>& columns, const std::vector<size_t>& natural,
                           const std::vector<bool>& shown, size_t limit, size_t mainFloor) {
  int lowest = 1;
  for (const auto& c : columns) lowest = std::max(lowest, c.rank);
  std::vector<size_t> widths = natural;
  for (int rank = lowest; rank >= 1 && Total(widths, shown) > limit; --rank) {
    while (Total(widths, shown) > limit) {
      size_t widest = widths.size();
      for (size_t i = 0; i < widths.size(); ++i) {
        if (!shown[i] || columns[i].whole || columns[i].rank != rank) continue;
        const size_t floor = rank == 1 ? std::max(columns[i].least, mainFloor) : columns[i].least;
        if (widths[i] <= std::min(floor, natural[i])) continue;
        if (widest == widths.size() || widths[i] > widths[widest]) widest = i;
      }
      if (widest == widths.size()) break;
      --widths[widest];
    }
  }
  return widths;
}

// The rightmost shown column of the highest rank from `from` up, or none.
size_t DropCandidate(const std::vector<Column>& columns, const std::vector<bool>& shown, int from) {
  size_t drop = columns.size();
  for (size_t i = 0; i < columns.size(); ++i) {
    if (shown[i] && columns[i].rank >= from &&
        (drop == columns.size() || columns[i].rank >= columns[drop].rank)) {
      drop = i;
    }
  }
  return drop;
}

// What fits `limit`, step by step: places and names (rank 3) cut; ids,
// sites and links (rank 4 and above) left out; the main texts (rank 1) cut
// to a width that still reads well; places and names left out; the main
// texts cut further; the dates (rank 2) left out. A date is never cut.
std::vector<size_t> Fit(const std::vector<Column>& columns, const std::vector<size_t>& natural,
                        std::vector<bool>& shown, size_t limit) {
  constexpr size_t kUncut = std::numeric_limits<size_t>::max();
  constexpr size_t kReadable = 24;
  const struct {
    size_t mainFloor;
    int dropFrom;
  } steps[] = {{kUncut, 4}, {kReadable, 3}, {0, 2}};
  for (;;) {
    std::vector<size_t> widths;
    bool dropped = false;
    for (const auto& step : steps) {
      widths = Shrunk(columns, natural, shown, limit, step.mainFloor);
      if (Total(widths, shown) <= limit) return widths;
      if (const size_t drop = DropCandidate(columns, shown, step.dropFrom); drop < columns.size()) {
        shown[drop] = false;
        dropped = true;
        break;
      }
    }
    if (!dropped) return widths;  // as narrow as it gets
  }
}

std::string CsvField(const std::string& s) {
  if (s.find_first_of(",\"\r\n") == std::string::npos) return s;
  std::string out = "\"";
  for (char c : s) {
    if (c == '"') out += '"';
    out += c;
  }
  return out + "\"";
}

}  // namespace

size_t DisplayWidth(const std::string& s) {
  size_t n = 0;
  for (size_t i = 0; i < s.size();) {
    const int32_t cp = NextCodePoint(s, i);
    n += static_cast<size_t>(Columns(cp < 0 ? 0xFFFD : cp));
  }
  return n;
}

std::string ValidUtf8(const std::string& s) {
  std::string out;
  for (size_t i = 0; i < s.size();) {
    const size_t start = i;
    if (NextCodePoint(s, i) < 0)
      out += "\xEF\xBF\xBD";
    else
      out.append(s, start, i - start);
  }
  return out;
}

size_t TerminalWidth() {
  if (isatty(STDOUT_FILENO) != 1) return 0;
  winsize ws{};
  if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &ws) == 0 && ws.ws_col > 0) return ws.ws_col;
  return 80;
}

Table::Table(const std::vector<std::string>& header) {
  for (const auto& h : header) columns_.push_back(Column{h});
}

void Table::PrintCsv(std::FILE* out) const {
  auto line = [&](const std::vector<std::string>& cells) {
    std::string text;
    for (size_t i = 0; i < columns_.size(); ++i) {
      if (i) text += ',';
      text += CsvField(ValidUtf8(i < cells.size() ? cells[i] : ""));
    }
    std::fprintf(out, "%s\n", text.c_str());
  };
  std::vector<std::string> header;
  for (const auto& c : columns_) header.push_back(c.header);
  line(header);
  for (const auto& row : rows_) line(row);
}

std::vector<std::string> Wrapped(const std::string& text, size_t width) {
  std::vector<std::string> lines;
  std::string line, word;
  size_t lineWidth = 0;
  auto flushWord = [&] {
    const size_t w = DisplayWidth(word);
    if (lineWidth > 0 && lineWidth + 1 + w > width) {
      lines.push_back(line);
      line.clear();
      lineWidth = 0;
    }
    if (lineWidth > 0) {
      line += ' ';
      ++lineWidth;
    }
    // A word longer than a line is broken where the line ends.
    for (size_t i = 0; i < word.size();) {
      const size_t start = i;
      const int32_t cp = NextCodePoint(word, i);
      const auto cw = static_cast<size_t>(Columns(cp < 0 ? 0xFFFD : cp));
      if (lineWidth + cw > width && lineWidth > 0) {
        lines.push_back(line);
        line.clear();
        lineWidth = 0;
      }
      line.append(word, start, i - start);
      lineWidth += cw;
    }
    word.clear();
  };
  for (char c : text) {
    if (c == ' ') {
      if (!word.empty()) flushWord();
    } else {
      word += c;
    }
  }
  if (!word.empty()) flushWord();
  if (!line.empty() || lines.empty()) lines.push_back(line);
  return lines;
}

std::vector<std::string> Table::Print(std::FILE* out, const OutputOptions& options) const {
  if (options.csv) {
    PrintCsv(out);
    return {};
  }
  std::vector<size_t> natural;
  for (const auto& c : columns_) natural.push_back(DisplayWidth(c.header));
  std::vector<std::vector<std::string>> cells;
  for (const auto& row : rows_) {
    std::vector<std::string> line;
    for (size_t i = 0; i < columns_.size(); ++i) {
      line.push_back(Clean(i < row.size() ? row[i] : ""));
      natural[i] = std::max(natural[i], DisplayWidth(line.back()));
    }
    cells.push_back(std::move(line));
  }
  std::vector<bool> shown(columns_.size(), true);
  const size_t terminal = options.wide ? 0 : TerminalWidth();
  // On a terminal a column with nothing in it (the done date of open
  // orders) gives its room to the others.
  std::vector<bool> empty(columns_.size(), false);
  if (terminal > 0 && !cells.empty()) {
    for (size_t i = 0; i < columns_.size(); ++i) {
      empty[i] = std::all_of(cells.begin(), cells.end(),
                             [&](const std::vector<std::string>& line) { return line[i].empty(); });
      shown[i] = !empty[i];
    }
  }
  const std::vector<size_t> widths =
      terminal > 0 ? Fit(columns_, natural, shown, terminal) : natural;
  auto print = [&](const std::vector<std::string>& line) {
    // Each cell as the lines it takes: one, or more in a wrapped column.
    std::vector<std::vector<std::string>> parts(line.size());
    size_t height = 1;
    for (size_t i = 0; i < line.size(); ++i) {
      if (!shown[i]) continue;
      if (columns_[i].wrap && DisplayWidth(line[i]) > widths[i])
        parts[i] = Wrapped(line[i], widths[i]);
      else
        parts[i] = {Cut(line[i], widths[i])};
      height = std::max(height, parts[i].size());
    }
    for (size_t k = 0; k < height; ++k) {
      std::string text;
      for (size_t i = 0; i < line.size(); ++i) {
        if (!shown[i]) continue;
        const std::string cell = k < parts[i].size() ? parts[i][k] : "";
        text += cell + std::string(widths[i] - std::min(widths[i], DisplayWidth(cell)) + 2, ' ');
      }
      while (!text.empty() && text.back() == ' ') text.pop_back();
      std::fprintf(out, "%s\n", text.c_str());
    }
  };
  std::vector<std::string> header;
  for (const auto& c : columns_) header.push_back(c.header);
  print(header);
  std::vector<std::string> rule;
  for (size_t w : widths) {
    std::string dashes;
    for (size_t i = 0; i < w; ++i) dashes += "─";
    rule.push_back(dashes);
  }
  print(rule);
  for (const auto& line : cells) print(line);
  std::vector<std::string> hidden;
  for (size_t i = 0; i < columns_.size(); ++i) {
    if (!shown[i] && !empty[i]) hidden.push_back(columns_[i].header);
  }
  return hidden;
}

void PrintCount(size_t rows, const std::vector<std::string>& hidden) {
  std::string line = SayCount("{1} row", "{1} rows", rows);
  if (!hidden.empty()) {
    std::string names;
    for (const auto& h : hidden) names += (names.empty() ? "" : ", ") + h;
    // TRANSLATORS: {1} the headers of the columns left out.
    line += Say(_(" (no room for {1}: --wide shows every column)"), names);
  }
  std::printf("%s\n", line.c_str());
}

void PrintJson(const nlohmann::ordered_json& doc) {
  std::cout << doc.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) << "\n";
}

Progress::Progress(std::string label, size_t total)
    : label_(std::move(label)), total_(total), shown_(isatty(STDERR_FILENO) == 1) {}

Progress::~Progress() {
  if (shown_ && last_percent_ >= 0) std::fprintf(stderr, "\n");
}

void Progress::Step(size_t done) {
  ThrowIfInterrupted();
  if (!shown_ || total_ == 0) return;
  const int percent = static_cast<int>(done * 100 / total_);
  if (percent == last_percent_) return;
  last_percent_ = percent;
  // Rows per second and the time left, once there is a rate to tell.
  const double seconds =
      std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count();
  std::string rate;
  if (seconds > 0.2 && done > 0) {
    const double perSecond = static_cast<double>(done) / seconds;
    const auto left = static_cast<long>(static_cast<double>(total_ - done) / perSecond);
    char clock[32];
    std::snprintf(clock, sizeof clock, "%ld:%02ld", left / 60, left % 60);
    // TRANSLATORS: rows done, rows in all, rows per second, minutes:seconds left.
    rate = Say(_("  {1}/{2}  {3}/s  {4} left"), done, total_, static_cast<unsigned long>(perSecond),
               std::string(clock));
  }
  // The bar shrinks, and the rate goes, so that the line stays within the
  // terminal.
  winsize ws{};
  const size_t columns =
      ioctl(STDERR_FILENO, TIOCGWINSZ, &ws) == 0 && ws.ws_col > 0 ? ws.ws_col : 80;
  const size_t fixed = DisplayWidth(label_) + 7;  // blank, bar, blank, "100%", room for the cursor
  if (fixed + 10 + DisplayWidth(rate) > columns) rate.clear();
  const size_t room =
      columns > fixed + DisplayWidth(rate) ? columns - fixed - DisplayWidth(rate) : 1;
  const size_t width = std::min<size_t>(room, 30);
  const size_t filled = static_cast<size_t>(percent) * width / 100;
  std::string bar;
  for (size_t i = 0; i < width; ++i) bar += i < filled ? "█" : "░";
  std::fprintf(stderr, "\r%s %s %3d%%%s\x1b[K", label_.c_str(), bar.c_str(), percent, rate.c_str());
  std::fflush(stderr);
}

}  // namespace ztk
