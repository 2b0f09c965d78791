#include "platform/console.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>

#include <unistd.h>

#include "platform/posix/errors.h"
#include "platform/posix/file_descriptor.h"

void PrepareProcess() {
  std::signal(SIGXFSZ, SIG_IGN);
  std::signal(SIGPIPE, SIG_IGN);
}

bool IsErrorTerminal() {
  const char* const kind = std::getenv("TERM");
  return isatty(STDERR_FILENO) && kind && *kind && std::string_view(kind) != "dumb";
}

bool WriteOutput(std::string_view text) {
  return WriteFully(STDOUT_FILENO, text) || errno == EPIPE;
}

bool WriteError(std::string_view text) { return WriteFully(STDERR_FILENO, text); }

uint32_t ReadInput(std::string& bytes) {
  char piece[65536];
  for (;;) {
    const ssize_t count = read(STDIN_FILENO, piece, sizeof piece);
    if (count == 0) return 0;
    if (count > 0) {
      bytes.append(piece, static_cast<size_t>(count));
    } else if (errno != EINTR) {
      return FailWithErrno();
    }
  }
}
