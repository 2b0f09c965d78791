#include "platform/thread_priority.h"

#include <cerrno>
#include <thread>

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

namespace {

int PriorityOfThisThread() { return getpriority(PRIO_PROCESS, static_cast<id_t>(gettid())); }

TEST(ThreadPriority, OthersGoBeforeTheThreadThatLetsThem) {
  const int before = PriorityOfThisThread();
  int lowest = 0;
  std::thread([&lowest] {
    LetOthersGoFirst();
    lowest = PriorityOfThisThread();
  }).join();
  EXPECT_EQ(lowest, 19);
  EXPECT_EQ(PriorityOfThisThread(), before);
}

}  // namespace
