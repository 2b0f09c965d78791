#include "platform/end_process.h"

#include <csignal>

#include <unistd.h>

bool EndProcess(int64_t process) {
  const auto number = static_cast<pid_t>(process);
  // Numbers of 0 and below stand for many processes.
  return number > 0 && number == process && number != getpid() && kill(number, SIGKILL) == 0;
}
