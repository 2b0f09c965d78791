#pragma once

#include <cstdlib>
#include <string>

#include "tests/temporary_folder.h"

/// An empty home for the settings of one test.
class SettingsHome {
 public:
  SettingsHome() {
    const char* const former = std::getenv("XDG_CONFIG_HOME");
    m_hadFormer = former != nullptr;
    if (former) m_former = former;
    setenv("XDG_CONFIG_HOME", m_folder.Path().c_str(), 1);
  }
  ~SettingsHome() {
    if (m_hadFormer) {
      setenv("XDG_CONFIG_HOME", m_former.c_str(), 1);
    } else {
      unsetenv("XDG_CONFIG_HOME");
    }
  }
  SettingsHome(const SettingsHome&) = delete;
  SettingsHome& operator=(const SettingsHome&) = delete;

  /// The settings file, there or not.
  std::string File() const { return m_folder.PathTo("CorvaneMap/settings.db"); }
  bool HasFile() const { return m_folder.Has("CorvaneMap/settings.db"); }
  const TemporaryFolder& Folder() const { return m_folder; }

 private:
  TemporaryFolder m_folder;
  bool m_hadFormer = false;
  std::string m_former;
};
