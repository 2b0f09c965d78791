#include "platform/posix/settings_news.h"

#include <utility>

SettingsReporter& SettingsReporter::Instance() {
  static SettingsReporter news;
  return news;
}

void SettingsReporter::TellDamaged(const WideString& aside) {
  const std::lock_guard lock(m_mutex);
  m_news.damagedFile = aside;
}

void SettingsReporter::TellLocked() {
  const std::lock_guard lock(m_mutex);
  m_news.wasLocked = true;
}

SettingsNews SettingsReporter::Take() {
  const std::lock_guard lock(m_mutex);
  return std::exchange(m_news, {});
}

SettingsNews TakeSettingsNews() { return SettingsReporter::Instance().Take(); }
