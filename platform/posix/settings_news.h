#pragma once

#include <atomic>
#include <mutex>

#include "platform/settings_backend.h"

/// What this process has found out about the user's settings file.
class SettingsReporter {
 public:
  static SettingsReporter& Instance();

  void TellDamaged(const WideString& aside);
  void TellLocked();
  SettingsNews Take();

  /// A lock that was waited for in vain is not waited for again, until it is gone.
  std::atomic<bool> isLocked = false;

 private:
  std::mutex m_mutex;
  SettingsNews m_news;
};
