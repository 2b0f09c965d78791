#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <mutex>

/// As a time limit: none.
inline constexpr int32_t kWaitForever = -1;

/// A flag that threads wait for. It stays set until somebody resets it.
class ManualResetEvent {
 public:
  explicit ManualResetEvent(bool isSet) : m_isSet(isSet) {}

  // Notified under the lock: whoever waits may destroy the event as soon as it returns.
  void Set() {
    const std::lock_guard lock(m_mutex);
    m_isSet = true;
    m_changed.notify_all();
  }
  void Reset() {
    const std::lock_guard lock(m_mutex);
    m_isSet = false;
  }
  /// False when the time limit, in milliseconds, has passed first.
  bool Wait(int32_t timeoutMs) const {
    std::unique_lock lock(m_mutex);
    if (timeoutMs < 0) {
      m_changed.wait(lock, [this] { return m_isSet; });
      return true;
    }
    return m_changed.wait_for(lock, std::chrono::milliseconds(timeoutMs),
                              [this] { return m_isSet; });
  }

 private:
  mutable std::mutex m_mutex;
  mutable std::condition_variable m_changed;
  bool m_isSet;
};
