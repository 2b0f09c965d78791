#pragma once

#include <string>
#include <vector>

#include <sys/wait.h>
#include <unistd.h>

#include "tests/temporary_folder.h"

/// What a finished program has left.
struct ProgramResult {
  int status = -1;  ///< exit status, or 128 + signal
  std::string output;
  std::string errors;
};

/// Waits for a child. Gives its exit status, or 128 + signal.
inline int WaitFor(pid_t child) {
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

/// Runs a shell command without a terminal. `environment` are assignments in front of it.
inline ProgramResult RunShell(const std::string& command) {
  const TemporaryFolder folder;
  const std::string output = folder.PathTo("output");
  const std::string errors = folder.PathTo("errors");
  const pid_t child = fork();
  if (child == 0) {
    const std::string redirected =
        "{ " + command + "\n} >'" + output + "' 2>'" + errors + "' </dev/null";
    execl("/bin/bash", "bash", "-c", redirected.c_str(), nullptr);
    _exit(127);
  }
  ProgramResult result;
  result.status = WaitFor(child);
  result.output = folder.Get("output");
  result.errors = folder.Get("errors");
  return result;
}

/// A word for the shell.
inline std::string Quoted(const std::string& word) {
  std::string quoted = "'";
  for (const char c : word) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return quoted + "'";
}

/// Runs the converter in English with these arguments, by default without any settings.
inline ProgramResult RunConverter(const std::vector<std::string>& arguments,
                                  const std::string& environment = "LC_ALL=C") {
  std::string command = "export XDG_CONFIG_HOME=/nonexistent/corvane; " + environment + " " +
                        Quoted(CORVANE_BINARY_FOLDER "/bin/corvanemap");
  for (const std::string& argument : arguments) command += " " + Quoted(argument);
  return RunShell(command);
}
