#include "services/request_pace.h"

#include <algorithm>
#include <thread>

void RequestPace::Await() {
  TimePoint turn = std::chrono::steady_clock::now();
  {
    const std::lock_guard lock(m_mutex);
    if (m_last) turn = std::max(turn, *m_last + m_gap);
    m_last = turn;
  }
  std::this_thread::sleep_until(turn);
}
