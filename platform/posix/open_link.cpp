#include "platform/open_link.h"

#include <cerrno>
#include <cstdlib>
#include <string_view>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/posix/errors.h"

namespace {

constexpr char kOpener[] = "xdg-open";
constexpr std::string_view kDefaultPath = "/usr/local/bin:/usr/bin:/bin";

// The program's file; empty when there is none that may be run.
std::string FindProgram(const std::string& name) {
  if (name.find('/') != std::string::npos) return access(name.c_str(), X_OK) == 0 ? name : "";
  const char* const path = std::getenv("PATH");
  std::string_view rest = path ? path : kDefaultPath;
  while (!rest.empty()) {
    const size_t end = rest.find(':');
    std::string file = std::string(rest.substr(0, end)) + "/" + name;
    if (access(file.c_str(), X_OK) == 0) return file;
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
  }
  errno = ENOENT;
  return {};
}

// In the child: a second child is the program, so that nobody has to wait for its end. Nothing here
// may allocate, since other threads may have held the heap when the process was copied.
[[noreturn]] void BecomeProgram(const char* file, char* const* arguments) {
  if (fork() != 0) _exit(0);
  setsid();
  const int nowhere = open("/dev/null", O_RDWR);
  if (nowhere >= 0) {
    dup2(nowhere, STDIN_FILENO);
    dup2(nowhere, STDOUT_FILENO);
    dup2(nowhere, STDERR_FILENO);
  }
  execv(file, arguments);
  _exit(127);
}

}  // namespace

uint32_t StartProgram(const std::vector<std::string>& arguments) {
  if (arguments.empty()) {
    errno = EINVAL;
    return FailWithErrno();
  }
  const std::string file = FindProgram(arguments.front());
  if (file.empty()) return FailWithErrno();
  std::vector<char*> pointers;
  pointers.reserve(arguments.size() + 1);
  for (const std::string& argument : arguments)
    pointers.push_back(const_cast<char*>(argument.c_str()));
  pointers.push_back(nullptr);

  const pid_t child = fork();
  if (child < 0) return FailWithErrno();
  if (child == 0) BecomeProgram(file.c_str(), pointers.data());
  while (waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
  }
  return 0;
}

bool HasDesktop() {
  const auto isSet = [](const char* name) {
    const char* const display = std::getenv(name);
    return display != nullptr && *display != '\0';
  };
  return isSet("WAYLAND_DISPLAY") || isSet("DISPLAY");
}

uint32_t OpenLink(const std::string& link) { return StartProgram({kOpener, link}); }
