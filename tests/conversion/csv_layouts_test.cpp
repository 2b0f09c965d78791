#include "conversion/csv_layouts.h"

#include <gtest/gtest.h>

#include "base/status.h"
#include "tests/settings_home.h"

namespace {

const CCsvLayout kStored{kManualCsvPreset, 3, 4, 5, 1, 2, false, "!", "|"};

class CsvLayoutsTest : public testing::Test {
 protected:
  CsvLayoutsTest() {
    storage::Storage user = storage::OpenUserStorage();
    StoreCsvLayout(user, CsvUse::kRead, kStored);
    m_layouts.ask = [this](CsvUse use, CCsvLayout& offered) {
      ++m_asked;
      m_askedUse = use;
      m_shown = offered;
      offered.nameColumn = 9;
      return m_accepts;
    };
  }

  SettingsHome m_home;
  CsvLayouts m_layouts;
  CCsvLayout m_layout;
  CCsvLayout m_shown;
  CsvUse m_askedUse = CsvUse::kWrite;
  int m_asked = 0;
  bool m_accepts = true;
};

TEST_F(CsvLayoutsTest, SilentUsesTheStoredLayoutAsItStands) {
  EXPECT_EQ(m_layouts.Choose(CsvUse::kRead, true, m_layout), kStatusSuccess);
  EXPECT_EQ(m_layout, kStored);
  EXPECT_EQ(m_layouts.Choose(CsvUse::kWrite, true, m_layout), kStatusSuccess);
  EXPECT_EQ(m_layout, CCsvLayout());
  EXPECT_EQ(m_asked, 0);
}

TEST_F(CsvLayoutsTest, TheUserSeesTheStoredLayoutAndMayChangeIt) {
  EXPECT_EQ(m_layouts.Choose(CsvUse::kRead, false, m_layout), kStatusSuccess);
  EXPECT_EQ(m_asked, 1);
  EXPECT_EQ(m_askedUse, CsvUse::kRead);
  EXPECT_EQ(m_shown, kStored);
  EXPECT_EQ(m_layout.nameColumn, 9u);
}

TEST_F(CsvLayoutsTest, AnythingButOkCancels) {
  m_accepts = false;
  EXPECT_EQ(m_layouts.Choose(CsvUse::kRead, false, m_layout), kStatusCancelled);
}

TEST_F(CsvLayoutsTest, WithNobodyToAskTheStoredLayoutIsUsed) {
  m_layouts.ask = nullptr;
  EXPECT_EQ(m_layouts.Choose(CsvUse::kRead, false, m_layout), kStatusSuccess);
  EXPECT_EQ(m_layout, kStored);
}

TEST_F(CsvLayoutsTest, ALayoutForTheRunIsNeitherAskedNorStored) {
  const CCsvLayout forRun = CsvPresets()[3].layout;
  m_layouts.forReading = forRun;
  EXPECT_EQ(m_layouts.Choose(CsvUse::kRead, false, m_layout), kStatusSuccess);
  EXPECT_EQ(m_layout, forRun);
  EXPECT_EQ(m_asked, 0);
  EXPECT_EQ(LoadCsvLayout(storage::OpenUserStorage(), CsvUse::kRead), kStored);
  EXPECT_EQ(m_layouts.Choose(CsvUse::kWrite, true, m_layout), kStatusSuccess);
  EXPECT_EQ(m_layout, CCsvLayout());

  m_layouts.forReading = std::nullopt;
  EXPECT_EQ(m_layouts.Choose(CsvUse::kRead, true, m_layout), kStatusSuccess);
  EXPECT_EQ(m_layout, kStored);
}

}  // namespace
