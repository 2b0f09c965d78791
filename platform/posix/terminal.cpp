#include "platform/terminal.h"

#include <unistd.h>

bool IsInteractive() { return isatty(STDIN_FILENO) && isatty(STDERR_FILENO); }

bool ReadInputLine(std::string& line) {
  line.clear();
  char byte = 0;
  while (read(STDIN_FILENO, &byte, 1) == 1) {
    if (byte == '\n') return true;
    line.push_back(byte);
  }
  return !line.empty();
}
