#pragma once

#include <memory>

/// Takes the requests to end this process (Ctrl+C, a terminal that closes) as long as it lives, so
/// that what runs can end in good order and the process goes on. On the main thread; one may stand
/// inside another.
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

/// As long as this lives, such a request is kept instead of ending the process, so that what is
/// half made can be cleared up: those who work look at `IsPending` now and then. A second one of
/// the kind ends the process at once. One at a time, on the main thread.
class InterruptionScope {
 public:
  InterruptionScope();
  /// Ends the process by the kept signal, if there was one.
  ~InterruptionScope();
  InterruptionScope(const InterruptionScope&) = delete;
  InterruptionScope& operator=(const InterruptionScope&) = delete;

  /// Any thread may ask.
  static bool IsPending();
};
