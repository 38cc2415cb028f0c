#pragma once

#include <chrono>

#include <cstdio>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace ztk {

// How results are printed: a table for people (fitted to the terminal,
// unless --wide or not a terminal), CSV or JSON for programs.
struct OutputOptions {
  bool json = false;
  bool csv = false;
  bool wide = false;
};

// An aligned text table: a header row of column names and rows of cells.
// Widths are display columns (wide CJK characters and emoji count two,
// combining marks none); tabs and line breaks become blanks, bytes that are
// not UTF-8 become U+FFFD. On a terminal the table is fitted to its width,
// the widest columns cut first with "…"; elsewhere, or with `wide`, nothing
// is cut.
class Table {
 public:
  explicit Table(std::vector<std::string> header) : header_(std::move(header)) {}
  void Add(std::vector<std::string> row) { rows_.push_back(std::move(row)); }
  size_t Rows() const { return rows_.size(); }
  // As a table, or as CSV (RFC 4180) when the options say so.
  void Print(std::FILE* out, const OutputOptions& options) const;
  void PrintCsv(std::FILE* out) const;

 private:
  std::vector<std::string> header_;
  std::vector<std::vector<std::string>> rows_;
};

// Display columns of a UTF-8 text on a terminal.
size_t DisplayWidth(const std::string& s);
// The text with every byte that is not part of valid UTF-8 as U+FFFD.
std::string ValidUtf8(const std::string& s);
// The terminal's width when stdout is one, 0 otherwise.
size_t TerminalWidth();

// JSON on stdout; text that is not UTF-8 comes out with U+FFFD.
void PrintJson(const nlohmann::ordered_json& doc);

// A one-line progress bar on stderr, drawn only when stderr is a terminal.
class Progress {
 public:
  Progress(std::string label, size_t total);
  ~Progress();
  void Step(size_t done);

 private:
  std::string label_;
  size_t total_;
  bool shown_;
  int last_percent_ = -1;
  std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

}  // namespace ztk
