#pragma once

#include <chrono>
#include <mutex>
#include <optional>

/// Holds requests to a service apart. Any thread.
class RequestPace {
 public:
  using TimePoint = std::chrono::steady_clock::time_point;

  /// The first request goes at once, or a gap after `last`.
  explicit RequestPace(std::chrono::milliseconds gap, std::optional<TimePoint> last = {})
      : m_gap(gap), m_last(last) {}

  /// Returns when the gap since the request before is over.
  void Await();

 private:
  const std::chrono::milliseconds m_gap;
  std::mutex m_mutex;
  std::optional<TimePoint> m_last;  ///< when the last may have left
};
