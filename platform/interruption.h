#pragma once

#include <memory>

/// Takes the requests to end this process (Ctrl+C, a terminal that closes) as long as it lives, so
/// that what runs can end in good order. On the main thread; one may stand inside another.
class InterruptionWatch {
 public:
  InterruptionWatch();
  /// From here on such a request does what it did before.
  ~InterruptionWatch();
  InterruptionWatch(const InterruptionWatch&) = delete;
  InterruptionWatch& operator=(const InterruptionWatch&) = delete;

  /// Whether there was one since this was made, or the outermost of those that stand around it.
  bool IsInterrupted() const;

 private:
  struct Former;
  const std::unique_ptr<Former> m_former;
};
