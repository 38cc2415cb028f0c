#pragma once

// What ztk copy and ztk import share: opening either end, writing rows in
// batches as the target stores them, and the checksum that verifies them.
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "Copy.h"
#include "connection/ToolAccess.h"
#include "ztkdb/Variant.h"

namespace ztk {

using Engine = ZTkDb::tool::OpenedEngine;

Engine OpenEngine(const Endpoint& end, bool write);

// A row's values hashed as every engine reads them back alike (flags 1/0,
// numbers by their digits, dates in ISO form, amounts exact); a result's
// checksum is the sum of its rows' hashes, whatever their order.
uint64_t RowHash(const std::vector<ZTkDb::Variant>& row);

void RollbackQuietly(ZTkDb::tool::Database& db) noexcept;

// A target file the command is about to create, removed again with
// SQLite's side files unless the command reaches Keep(): a command that
// fails leaves no file behind. Declared before the target is opened, so
// that the target is closed by the time the file goes.
class NewTargetFile {
 public:
  // `path` empty, or a file that exists already: nothing is ever removed.
  explicit NewTargetFile(const std::string& path);
  ~NewTargetFile();
  NewTargetFile(const NewTargetFile&) = delete;
  NewTargetFile& operator=(const NewTargetFile&) = delete;
  void Keep() { path_.clear(); }

 private:
  std::string path_;
};

// The target's spelling of `name` among `columns`, compared without regard
// to case; raises a Failure naming `table` when there is none.
std::string TargetColumn(const std::vector<ZTkDb::tool::ColumnInfo>& columns,
                         const std::string& name, const std::string& table);

int64_t CountRows(ZTkDb::tool::Database& db, const std::string& table);

// The checksum of `columns` of `table` as the target reads them back, and
// how many rows it holds. The module's flags are read as the numbers stored,
// not as truth values: a 1 where the engine's statements look for -1 is no
// copy of a true flag.
uint64_t ChecksumOf(ZTkDb::tool::Database& db, const std::string& table,
                    const std::vector<std::string>& columns, int64_t& rows);

// The module's flags of the rows of one table written in a target's stored
// form; Null stays Null, other tables' columns stay as they are.
class FlagForms {
 public:
  // `names`: the row's columns as the target spells them.
  FlagForms(const Engine& target, const std::string& table, const std::vector<std::string>& names);
  void Apply(std::vector<ZTkDb::Variant>& row) const;

 private:
  int16_t true_form_;
  std::vector<size_t> flags_;
};

// Rows written to one table with their values bound, a thousand at a
// time; the checksum is of the rows as they were given.
class RowWriter {
 public:
  // `table` and `columns` as the target spells them (quoted where needed).
  RowWriter(const Engine& target, std::string table, std::vector<std::string> columns);
  void Add(std::vector<ZTkDb::Variant> row);
  void Finish();
  int64_t Written() const { return written_; }
  uint64_t Checksum() const { return checksum_; }

 private:
  const Engine& target_;
  std::string table_;
  std::vector<std::string> columns_;
  std::vector<std::vector<ZTkDb::Variant>> rows_;
  int64_t written_ = 0;
  uint64_t checksum_ = 0;
};

}  // namespace ztk
