#include "platform/debug_log.h"

#include <cstdlib>
#include <string>

#include "platform/console.h"

void DebugLog(std::string_view line) {
  if (!std::getenv("CORVANE_DEBUG")) return;
  WriteError(std::string(line) + '\n');
}
