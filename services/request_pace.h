#pragma once

#include <chrono>
#include <mutex>
#include <optional>

/// Holds requests to a service apart. Any thread.
class RequestPace {
 public:
  explicit RequestPace(std::chrono::milliseconds gap) : m_gap(gap) {}

  /// Returns when the gap since the request before is over; at once for the first one.
  void Await();

 private:
  const std::chrono::milliseconds m_gap;
  std::mutex m_mutex;
  std::optional<std::chrono::steady_clock::time_point> m_last;  ///< when the last may have left
};
