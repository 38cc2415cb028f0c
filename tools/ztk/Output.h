#pragma once

#include <cstdio>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace ztk {

// An aligned text table: a header row of column names and rows of cells,
// widths measured in characters (UTF-8 aware), long cells cut with "…".
class Table {
 public:
  explicit Table(std::vector<std::string> header) : header_(std::move(header)) {}
  void Add(std::vector<std::string> row) { rows_.push_back(std::move(row)); }
  size_t Rows() const { return rows_.size(); }
  void Print(std::FILE* out, size_t maxCell = 40) const;

 private:
  std::vector<std::string> header_;
  std::vector<std::vector<std::string>> rows_;
};

// Characters in a UTF-8 text (continuation bytes do not count).
size_t DisplayWidth(const std::string& s);

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
};

}  // namespace ztk
