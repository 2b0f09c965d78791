#include "planner/post_box.h"

#include <exception>
#include <string>
#include <utility>

#include "platform/debug_log.h"

void PostBox::Post(Work work) {
  const std::lock_guard lock(m_mutex);
  m_waiting.push_back(std::move(work));
  if (m_wake) m_wake();
}

size_t PostBox::Pump() {
  size_t count = 0;
  size_t limit = 0;
  {
    const std::lock_guard lock(m_mutex);
    limit = m_waiting.size();
  }
  // One at a time: what is done may close the box, or pump the rest itself.
  for (; count < limit; ++count) {
    Work work;
    {
      const std::lock_guard lock(m_mutex);
      if (m_closed || m_waiting.empty()) break;
      work = std::move(m_waiting.front());
      m_waiting.pop_front();
    }
    try {
      work();
    } catch (const std::exception& failure) {
      DebugLog(std::string("posted call: ") + failure.what());
    }
  }
  return count;
}

void PostBox::Close() {
  const std::lock_guard lock(m_mutex);
  m_closed = true;
  m_wake = nullptr;
}
