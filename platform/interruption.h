#pragma once

#include <memory>

/// Takes the requests to end this process (Ctrl+C, a terminal that closes) as long as it lives, so
/// that what runs can end in good order. One at a time, on the main thread.
class InterruptionWatch {
 public:
  InterruptionWatch();
  /// From here on such a request ends the process again.
  ~InterruptionWatch();
  InterruptionWatch(const InterruptionWatch&) = delete;
  InterruptionWatch& operator=(const InterruptionWatch&) = delete;

  /// Whether there was one since this was made.
  bool IsInterrupted() const;

 private:
  struct Former;
  const std::unique_ptr<Former> m_former;
};
