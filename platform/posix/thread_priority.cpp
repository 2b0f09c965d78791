#include "platform/thread_priority.h"

#include <sys/resource.h>
#include <unistd.h>

namespace {

constexpr int kLowest = 19;

}  // namespace

void LetOthersGoFirst() {
#ifdef __linux__
  // Here a thread has a priority of its own; elsewhere it would be the process that gets it.
  setpriority(PRIO_PROCESS, static_cast<id_t>(gettid()), kLowest);
#endif
}
