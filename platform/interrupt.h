#pragma once

/// As long as this lives, a signal that asks the process to end is kept instead of ending it, so
/// that what is under way can be cleared up: those who work look at `IsPending` now and then. A
/// second signal of the kind ends the process at once. One at a time, on the main thread.
class InterruptScope {
 public:
  InterruptScope();
  /// Ends the process by the kept signal, if there was one.
  ~InterruptScope();
  InterruptScope(const InterruptScope&) = delete;
  InterruptScope& operator=(const InterruptScope&) = delete;

  /// Any thread may ask.
  static bool IsPending();
};
