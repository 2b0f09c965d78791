#include "platform/become_program.h"

#include <cstdlib>

#include <limits.h>
#include <unistd.h>

#include "platform/open_link.h"
#include "platform/posix/errors.h"

namespace {

std::string BesideThisProgram(const std::string& name) {
  char path[PATH_MAX];
  const ssize_t length = readlink("/proc/self/exe", path, sizeof path);
  if (length <= 0) return name;
  const std::string program(path, static_cast<size_t>(length));
  return program.substr(0, program.rfind('/') + 1) + name;
}

}  // namespace

uint32_t BecomeProgram(const std::vector<std::string>& arguments) {
  std::vector<char*> pointers;
  pointers.reserve(arguments.size() + 1);
  for (const std::string& argument : arguments)
    pointers.push_back(const_cast<char*>(argument.c_str()));
  pointers.push_back(nullptr);
  execv(BesideThisProgram(arguments.front()).c_str(), pointers.data());
  execvp(arguments.front().c_str(), pointers.data());
  return FailWithErrno();
}

bool CanShowWindow() {
  const char* const platform = std::getenv("QT_QPA_PLATFORM");
  return HasDesktop() || (platform && *platform);
}
