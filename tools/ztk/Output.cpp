#include "Output.h"

#include <unistd.h>

#include <algorithm>
#include <iostream>

namespace ztk {

size_t DisplayWidth(const std::string& s) {
  size_t n = 0;
  for (unsigned char c : s) n += (c & 0xC0) != 0x80;
  return n;
}

namespace {

// The first `width` characters of `s`, with "…" standing for the rest.
std::string Cut(const std::string& s, size_t width) {
  if (DisplayWidth(s) <= width) return s;
  std::string out;
  size_t chars = 0;
  for (size_t i = 0; i < s.size(); ++i) {
    const auto c = static_cast<unsigned char>(s[i]);
    if ((c & 0xC0) != 0x80 && ++chars == width) break;
    out += s[i];
  }
  return out + "…";
}

std::string OneLine(std::string s) {
  std::replace(s.begin(), s.end(), '\n', ' ');
  std::replace(s.begin(), s.end(), '\r', ' ');
  return s;
}

}  // namespace

void Table::Print(std::FILE* out, size_t maxCell) const {
  std::vector<size_t> widths;
  for (const auto& h : header_) widths.push_back(DisplayWidth(h));
  std::vector<std::vector<std::string>> cells;
  for (const auto& row : rows_) {
    std::vector<std::string> line;
    for (size_t i = 0; i < header_.size(); ++i) {
      line.push_back(Cut(OneLine(i < row.size() ? row[i] : ""), maxCell));
      widths[i] = std::max(widths[i], DisplayWidth(line.back()));
    }
    cells.push_back(std::move(line));
  }
  auto print = [&](const std::vector<std::string>& line) {
    std::string text;
    for (size_t i = 0; i < line.size(); ++i) {
      text += line[i];
      if (i + 1 < line.size()) text += std::string(widths[i] - DisplayWidth(line[i]) + 2, ' ');
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
  // The rule's cells are wider in bytes than in characters; print them as
  // they are, since DisplayWidth counts characters.
  print(rule);
  for (const auto& line : cells) print(line);
}

void PrintJson(const nlohmann::ordered_json& doc) { std::cout << doc.dump(2) << "\n"; }

Progress::Progress(std::string label, size_t total)
    : label_(std::move(label)), total_(total), shown_(isatty(STDERR_FILENO) == 1) {}

Progress::~Progress() {
  if (shown_ && last_percent_ >= 0) std::fprintf(stderr, "\n");
}

void Progress::Step(size_t done) {
  if (!shown_ || total_ == 0) return;
  const int percent = static_cast<int>(done * 100 / total_);
  if (percent == last_percent_) return;
  last_percent_ = percent;
  constexpr int kWidth = 30;
  const int filled = percent * kWidth / 100;
  std::string bar;
  for (int i = 0; i < kWidth; ++i) bar += i < filled ? "█" : "░";
  std::fprintf(stderr, "\r%s %s %3d%%", label_.c_str(), bar.c_str(), percent);
  std::fflush(stderr);
}

}  // namespace ztk
