#pragma once

#include <chrono>
#include <string>

#include <time.h>

/// How long another program's lock on a file is waited for: half a second in which nothing happens
/// to the file. Programs that take turns at it are given five seconds; one that hangs gets no more
/// of the user's time, in the whole run.
class LockPatience {
 public:
  explicit LockPatience(std::string path);

  /// Waits a moment before the next try. False when it is time to give up.
  bool WaitAMoment();

 private:
  using Clock = std::chrono::steady_clock;

  std::string m_path;
  Clock::time_point m_start;
  Clock::time_point m_lastChange;
  timespec m_fileTime{};
};
