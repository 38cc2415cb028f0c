// Runs the ztk binary as a user would: its exit status, stdout and stderr,
// with stdout a file (Ztk) or a terminal of a given width (ZtkOnTerminal).
#pragma once

#include <fcntl.h>
#include <grp.h>
#include <gtest/gtest.h>
#include <pty.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "TestSupport.h"

namespace ztktest {

struct Outcome {
  int code = -1;
  std::string out;
  std::string err;
  nlohmann::json Json() const { return nlohmann::json::parse(out); }
  // The id of the record the command printed, as a later command takes it.
  std::string Id() const { return std::to_string(Json()["Id"].get<int>()); }
};

// A number of the tool's JSON as a later command takes it.
inline std::string Arg(const nlohmann::json& number) { return std::to_string(number.get<int>()); }

// The language of the user ztk runs for: English (C.UTF-8) unless the
// environment given to a run names another; nothing of the test's own.
// "ZTKTEST_NOBODY=1" in `env` runs it as the user nobody: a user whom file
// modes bind, as root is not bound.
inline void Speak(const std::vector<std::string>& env) {
  for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANGUAGE", "LANG"}) unsetenv(variable);
  setenv("LANG", "C.UTF-8", 1);
  for (const auto& variable : env) {
    if (variable == "ZTKTEST_NOBODY=1") {
      if (setgroups(0, nullptr) != 0 || setgid(65534) != 0 || setuid(65534) != 0) _exit(126);
    } else {
      putenv(const_cast<char*>(variable.c_str()));
    }
  }
}

// Display columns of a terminal line: wide characters two, the rest one.
inline size_t Columns(const std::string& line) {
  size_t n = 0;
  for (const char ch : line) {
    const auto c = static_cast<unsigned char>(ch);
    if ((c & 0xC0) == 0x80) continue;
    n += c >= 0xF0 || (c >= 0xE4 && c <= 0xE9) ? 2 : 1;
  }
  return n;
}

inline std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> lines;
  std::stringstream s(text);
  for (std::string line; std::getline(s, line);) lines.push_back(line);
  return lines;
}

// `interruptOnceExists`: a Ctrl-C (SIGINT) sent a moment after that file
// appeared (the command is then at work, however slow the machine).
inline Outcome Ztk(const std::vector<std::string>& args, const std::vector<std::string>& env = {},
                   const std::string& interruptOnceExists = {}) {
  ztktest::TempDb scratch(false);
  const std::string out = scratch.Dir() + "/out", err = scratch.Dir() + "/err";
  const pid_t pid = fork();
  if (pid == 0) {
    const int o = open(out.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    const int e = open(err.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    const int in = open("/dev/null", O_RDONLY);
    dup2(o, 1);
    dup2(e, 2);
    dup2(in, 0);
    Speak(env);
    std::vector<char*> argv{const_cast<char*>(ZTKDB_ZTK_PATH)};
    for (const auto& a : args) argv.push_back(const_cast<char*>(a.c_str()));
    argv.push_back(nullptr);
    execv(ZTKDB_ZTK_PATH, argv.data());
    _exit(127);
  }
  if (!interruptOnceExists.empty()) {
    for (int i = 0; i < 2000 && access(interruptOnceExists.c_str(), F_OK) != 0; ++i) usleep(5000);
    usleep(200000);
    kill(pid, SIGINT);
  }
  int status = 0;
  waitpid(pid, &status, 0);
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, FileBytes(out), FileBytes(err)};
}

// stdout and stderr on a pseudo-terminal `columns` wide.
inline Outcome ZtkOnTerminal(const std::vector<std::string>& args, unsigned short columns,
                             const std::vector<std::string>& env = {}) {
  winsize ws{};
  ws.ws_col = columns;
  ws.ws_row = 50;
  int master = -1;
  const pid_t pid = forkpty(&master, nullptr, nullptr, &ws);
  if (pid == 0) {
    Speak(env);
    std::vector<char*> argv{const_cast<char*>(ZTKDB_ZTK_PATH)};
    for (const auto& a : args) argv.push_back(const_cast<char*>(a.c_str()));
    argv.push_back(nullptr);
    execv(ZTKDB_ZTK_PATH, argv.data());
    _exit(127);
  }
  std::string out;
  char buffer[4096];
  for (ssize_t n; (n = read(master, buffer, sizeof buffer)) > 0;)
    out.append(buffer, static_cast<size_t>(n));
  close(master);
  int status = 0;
  waitpid(pid, &status, 0);
  // The terminal turns line feeds into CR LF; a carriage return of the
  // program's own (a progress line) stays.
  std::string lines;
  for (size_t i = 0; i < out.size(); ++i) {
    if (out[i] != '\r' || i + 1 >= out.size() || out[i + 1] != '\n') lines += out[i];
  }
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, lines, ""};
}

// A fixture: a database made by `ztk init`, and the tool run on it.
class ZtkDatabase : public ::testing::Test {
 protected:
  void SetUp() override {
    path = dir.Dir() + "/ztk.db";
    ASSERT_EQ(Ztk({"init", path}).code, 0);
  }
  Outcome On(std::vector<std::string> args, const std::vector<std::string>& env = {}) {
    args.insert(args.begin(), {"--db", path});
    return Ztk(args, env);
  }
  TempDb dir{false};
  std::string path;
};

}  // namespace ztktest
