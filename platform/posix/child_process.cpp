#include "platform/child_process.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/interruption.h"
#include "platform/posix/errors.h"
#include "platform/posix/file_descriptor.h"

namespace {

/// What the child's descriptors and signals are at its start.
class SpawnPlan {
 public:
  explicit SpawnPlan(int output) {
    posix_spawn_file_actions_init(&m_files);
    posix_spawn_file_actions_addopen(&m_files, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&m_files, output, STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&m_files, output, STDERR_FILENO);
    // A group of its own, so that the terminal's signals come to us only.
    posix_spawnattr_init(&m_attributes);
    posix_spawnattr_setpgroup(&m_attributes, 0);
    posix_spawnattr_setflags(&m_attributes, POSIX_SPAWN_SETPGROUP);
  }
  ~SpawnPlan() {
    posix_spawn_file_actions_destroy(&m_files);
    posix_spawnattr_destroy(&m_attributes);
  }
  SpawnPlan(const SpawnPlan&) = delete;
  SpawnPlan& operator=(const SpawnPlan&) = delete;

  int Start(pid_t& child, char* const* arguments, char* const* environment) const {
    return posix_spawnp(&child, arguments[0], &m_files, &m_attributes, arguments, environment);
  }

 private:
  posix_spawn_file_actions_t m_files;
  posix_spawnattr_t m_attributes;
};

// The environment with the language of programs set to English.
std::vector<std::string> EnglishEnvironment() {
  std::vector<std::string> variables = {"LC_ALL=C"};
  for (char** variable = environ; *variable != nullptr; ++variable) {
    if (!std::string_view(*variable).starts_with("LC_ALL=")) variables.emplace_back(*variable);
  }
  return variables;
}

std::vector<char*> Pointers(std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  pointers.reserve(texts.size() + 1);
  for (std::string& text : texts) pointers.push_back(text.data());
  pointers.push_back(nullptr);
  return pointers;
}

// Hands out what comes through the pipe until its end. False when it was interrupted.
bool ReadOutput(int pipe, const InterruptionWatch& watch,
                const std::function<bool(std::string_view)>& onOutput) {
  constexpr int kPatienceMs = 200;  // for an interruption that came between two waits
  for (;;) {
    pollfd waiting{pipe, POLLIN, 0};
    const int ready = poll(&waiting, 1, kPatienceMs);
    if (watch.IsInterrupted()) return false;
    if (ready <= 0) continue;
    char bytes[4096];
    const ssize_t count = read(pipe, bytes, sizeof bytes);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return true;
    if (!onOutput(std::string_view(bytes, static_cast<size_t>(count)))) return false;
  }
}

int WaitForEnd(pid_t child) {
  constexpr int kKilled = 128;
  int status = 0;
  while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
  }
  return WIFEXITED(status) ? WEXITSTATUS(status) : kKilled + WTERMSIG(status);
}

}  // namespace

ChildResult RunChild(const std::vector<std::string>& arguments,
                     const std::function<bool(std::string_view output)>& onOutput) {
  ChildResult result;
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) {
    result.status = FailWithErrno();
    return result;
  }
  const FileDescriptor reading(ends[0]);
  FileDescriptor writing(ends[1]);

  std::vector<std::string> words = arguments;
  std::vector<std::string> variables = EnglishEnvironment();
  const InterruptionWatch watch;
  pid_t child = 0;
  const int failure =
      SpawnPlan(writing.Get()).Start(child, Pointers(words).data(), Pointers(variables).data());
  if (failure != 0) {
    errno = failure;
    result.status = FailWithErrno();
    return result;
  }
  writing = FileDescriptor();
  result.interrupted = !ReadOutput(reading.Get(), watch, onOutput);
  if (result.interrupted) kill(-child, SIGKILL);
  result.exitCode = WaitForEnd(child);
  return result;
}
