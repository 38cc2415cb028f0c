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
  bool local = false;  // CSV and JSON in the desk's forms instead of machine forms
};

// A column of a table for people. Columns of a higher rank give way first
// when the terminal is too narrow: cut down to `least`, then left out;
// rank 1 is never left out. A `whole` column (a date, a number) is never
// cut, only left out; a `wrap` column continues on the next lines instead
// of being cut.
struct Column {
  std::string header;
  int rank = 1;
  bool whole = false;
  size_t least = 4;
  bool wrap = false;
};

// An aligned text table: a header row and rows of cells. Widths are display
// columns (wide CJK characters and emoji count two, combining marks none);
// tabs and line breaks become blanks, bytes that are not UTF-8 become
// U+FFFD. On a terminal the table is fitted to its width by the columns'
// ranks; elsewhere, or with `wide`, nothing is cut or left out.
class Table {
 public:
  explicit Table(std::vector<Column> columns) : columns_(std::move(columns)) {}
  explicit Table(const std::vector<std::string>& header);
  void Add(std::vector<std::string> row) { rows_.push_back(std::move(row)); }
  size_t Rows() const { return rows_.size(); }
  // As a table, or as CSV (RFC 4180, LF line ends) when the options say so.
  // Returns the headers of the columns left out for want of width.
  std::vector<std::string> Print(std::FILE* out, const OutputOptions& options) const;
  void PrintCsv(std::FILE* out) const;

 private:
  std::vector<Column> columns_;
  std::vector<std::vector<std::string>> rows_;
};

// "12 rows", and which columns the terminal had no room for.
void PrintCount(size_t rows, const std::vector<std::string>& hidden);

// Display columns of a UTF-8 text on a terminal.
size_t DisplayWidth(const std::string& s);
// The text with every byte that is not part of valid UTF-8 as U+FFFD.
std::string ValidUtf8(const std::string& s);
// The terminal's width when stdout is one, 0 otherwise.
size_t TerminalWidth();
// The text in lines of at most `width` display columns, broken at blanks
// where it can be.
std::vector<std::string> Wrapped(const std::string& text, size_t width);

// JSON on stdout; text that is not UTF-8 comes out with U+FFFD.
void PrintJson(const nlohmann::ordered_json& doc);

// A one-line progress bar on stderr, drawn only when stderr is a terminal,
// as wide as the terminal allows.
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
