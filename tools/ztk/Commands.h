#pragma once

#include <CLI/CLI.hpp>
#include <functional>

#include "Output.h"
#include "Session.h"

namespace ztk {

// The exit statuses, as `ztk help` lists them.
constexpr int kOk = 0;
constexpr int kFailed = 1;
constexpr int kUsage = 2;
constexpr int kConflict = 3;
constexpr int kInterrupted = 130;  // as a shell reports a Ctrl-C

// What every command sees: the global options, and the action the command
// line chose. A command's callback only sets the action; main runs it after
// the whole line is parsed, so a global option given after the command
// still counts.
struct Context {
  DbOptions db;
  OutputOptions out;
  std::function<void()> action;
};

// Each command family adds its commands to the tree. Their options live as
// long as the process: the tree is built once.
void AddDocCommands(CLI::App& app, Context& ctx);       // man, completion
void AddDatabaseCommands(CLI::App& app, Context& ctx);  // query, init, copy, import, check, demo
// summary: per site, for a period, the orders opened and done, those overdue
// now, and the hours and costs booked.
void AddSummaryCommand(CLI::App& app, Context& ctx);
void AddTablesCommand(CLI::App& app, Context& ctx);  // tables
void AddRecordFamilies(CLI::App& app,
                       Context& ctx);  // auftrag, meldung, leistung, material, dokument

// `ztk help [COMMAND…]`: the words after it name a command, they are not
// parsed as one. Returns the exit status.
int ShowHelp(CLI::App& app, int argc, char** argv);

// The commands that make or fill a database have nothing to do read-only.
void RefuseReadOnly(const DbOptions& db, const char* command);

}  // namespace ztk
