#pragma once

#include <gtest/gtest.h>

#include "settings/settings.h"
#include "tests/settings_home.h"

/// Settings in an empty home, seen through their store.
class Settings : public testing::Test {
 protected:
  static storage::SFolder Root() {
    return storage::OpenUserStorage().CreateFolder("Software\\CorvaneMap");
  }
  static storage::SValue Value(std::string_view key) { return Root().CreateValue(key); }
  static bool HasValue(std::string_view key) {
    try {
      Value(key).ReadBytes();
      return true;
    } catch (const storage::Exception&) {
      return false;
    }
  }

  SettingsHome m_home;
};
