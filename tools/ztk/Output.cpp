#include "Output.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <iostream>

#include "Interrupt.h"

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
// characters and emoji two, combining marks and zero-width characters none.
int Columns(int32_t cp) {
  if ((cp >= 0x300 && cp <= 0x36F) || (cp >= 0x200B && cp <= 0x200F) ||
      (cp >= 0xFE00 && cp <= 0xFE0F) || cp == 0x20E3) {
    return 0;
  }
  if ((cp >= 0x1100 && cp <= 0x115F) || (cp >= 0x2E80 && cp <= 0xA4CF && cp != 0x303F) ||
      (cp >= 0xAC00 && cp <= 0xD7A3) || (cp >= 0xF900 && cp <= 0xFAFF) ||
      (cp >= 0xFE30 && cp <= 0xFE4F) || (cp >= 0xFF00 && cp <= 0xFF60) ||
      (cp >= 0xFFE0 && cp <= 0xFFE6) || (cp >= 0x1F300 && cp <= 0x1F64F) ||
      (cp >= 0x1F900 && cp <= 0x1F9FF) || (cp >= 0x1F680 && cp <= 0x1F6FF) ||
      (cp >= 0x20000 && cp <= 0x3FFFD)) {
    return 2;
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

// Column widths that fit `limit`: the widest columns give way first, none
// below its least width.
std::vector<size_t> Fit(std::vector<size_t> widths, const std::vector<size_t>& least,
                        size_t limit) {
  auto total = [&] {
    size_t t = widths.empty() ? 0 : 2 * (widths.size() - 1);
    for (size_t w : widths) t += w;
    return t;
  };
  while (total() > limit) {
    size_t widest = 0;
    for (size_t i = 1; i < widths.size(); ++i) {
      if (widths[i] > least[i] && (widths[widest] <= least[widest] || widths[i] > widths[widest])) {
        widest = i;
      }
    }
    if (widths[widest] <= least[widest]) break;  // as narrow as it gets
    --widths[widest];
  }
  return widths;
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

void Table::PrintCsv(std::FILE* out) const {
  auto line = [&](const std::vector<std::string>& cells) {
    std::string text;
    for (size_t i = 0; i < header_.size(); ++i) {
      if (i) text += ',';
      text += CsvField(ValidUtf8(i < cells.size() ? cells[i] : ""));
    }
    std::fprintf(out, "%s\r\n", text.c_str());
  };
  line(header_);
  for (const auto& row : rows_) line(row);
}

void Table::Print(std::FILE* out, const OutputOptions& options) const {
  if (options.csv) return PrintCsv(out);
  // Narrowest useful: four columns ("Erl…"), or the column's own width.
  std::vector<size_t> widths, least;
  for (const auto& h : header_) {
    widths.push_back(DisplayWidth(h));
    least.push_back(4);
  }
  std::vector<std::vector<std::string>> cells;
  for (const auto& row : rows_) {
    std::vector<std::string> line;
    for (size_t i = 0; i < header_.size(); ++i) {
      line.push_back(Clean(i < row.size() ? row[i] : ""));
      widths[i] = std::max(widths[i], DisplayWidth(line.back()));
    }
    cells.push_back(std::move(line));
  }
  for (size_t i = 0; i < least.size(); ++i) least[i] = std::min(least[i], widths[i]);
  const size_t terminal = options.wide ? 0 : TerminalWidth();
  if (terminal > 0) widths = Fit(widths, least, terminal);
  auto print = [&](const std::vector<std::string>& line) {
    std::string text;
    for (size_t i = 0; i < line.size(); ++i) {
      const std::string cell = Cut(line[i], widths[i]);
      text += cell;
      if (i + 1 < line.size()) text += std::string(widths[i] - DisplayWidth(cell) + 2, ' ');
    }
    while (!text.empty() && text.back() == ' ') text.pop_back();
    std::fprintf(out, "%s\n", text.c_str());
  };
  print(header_);
  std::vector<std::string> rule;
  for (size_t w : widths) {
    std::string dashes;
    for (size_t i = 0; i < w; ++i) dashes += "─";
    rule.push_back(dashes);
  }
  print(rule);
  for (const auto& line : cells) print(line);
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
  constexpr int kWidth = 30;
  const int filled = percent * kWidth / 100;
  std::string bar;
  for (int i = 0; i < kWidth; ++i) bar += i < filled ? "█" : "░";
  // Rows per second and the time left, once there is a rate to tell.
  const double seconds =
      std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count();
  std::string rate;
  if (seconds > 0.2 && done > 0) {
    const double perSecond = static_cast<double>(done) / seconds;
    const auto left = static_cast<long>(static_cast<double>(total_ - done) / perSecond);
    char text[80];
    std::snprintf(text, sizeof text, "  %zu/%zu  %.0f/s  %ld:%02ld left", done, total_, perSecond,
                  left / 60, left % 60);
    rate = text;
  }
  std::fprintf(stderr, "\r%s %s %3d%%%s\x1b[K", label_.c_str(), bar.c_str(), percent, rate.c_str());
  std::fflush(stderr);
}

}  // namespace ztk
