#include "conversion/csv_layout_question.h"

#include <gtest/gtest.h>

#include "base/status.h"
#include "tests/settings_home.h"

namespace {

const CCsvLayout kStored{kManualCsvPreset, 3, 4, 5, 1, 2, false, "!", "|"};

class CsvLayoutQuestion : public testing::Test {
 protected:
  CsvLayoutQuestion() {
    storage::Storage user = storage::OpenUserStorage();
    StoreCsvLayout(user, ECsvUse::kRead, kStored);
    SetCsvLayoutAsker([this](ECsvUse use, CCsvLayout& offered) {
      ++m_asked;
      m_askedUse = use;
      m_shown = offered;
      offered.nameColumn = 9;
      return m_accepts;
    });
  }
  ~CsvLayoutQuestion() override {
    SetCsvLayoutAsker(nullptr);
    SetCsvLayoutForRun(ECsvUse::kRead, std::nullopt);
    SetCsvLayoutForRun(ECsvUse::kWrite, std::nullopt);
  }

  SettingsHome m_home;
  CCsvLayout m_layout;
  CCsvLayout m_shown;
  ECsvUse m_askedUse = ECsvUse::kWrite;
  int m_asked = 0;
  bool m_accepts = true;
};

TEST_F(CsvLayoutQuestion, SilentUsesTheStoredLayoutAsItStands) {
  EXPECT_EQ(AskCsvLayout(ECsvUse::kRead, true, m_layout), kStatusSuccess);
  EXPECT_EQ(m_layout, kStored);
  EXPECT_EQ(AskCsvLayout(ECsvUse::kWrite, true, m_layout), kStatusSuccess);
  EXPECT_EQ(m_layout, CCsvLayout());
  EXPECT_EQ(m_asked, 0);
}

TEST_F(CsvLayoutQuestion, TheUserSeesTheStoredLayoutAndMayChangeIt) {
  EXPECT_EQ(AskCsvLayout(ECsvUse::kRead, false, m_layout), kStatusSuccess);
  EXPECT_EQ(m_asked, 1);
  EXPECT_EQ(m_askedUse, ECsvUse::kRead);
  EXPECT_EQ(m_shown, kStored);
  EXPECT_EQ(m_layout.nameColumn, 9u);
}

TEST_F(CsvLayoutQuestion, AnythingButOkCancels) {
  m_accepts = false;
  EXPECT_EQ(AskCsvLayout(ECsvUse::kRead, false, m_layout), kStatusCancelled);
}

TEST_F(CsvLayoutQuestion, WithNobodyToAskTheStoredLayoutIsUsed) {
  SetCsvLayoutAsker(nullptr);
  EXPECT_EQ(AskCsvLayout(ECsvUse::kRead, false, m_layout), kStatusSuccess);
  EXPECT_EQ(m_layout, kStored);
}

TEST_F(CsvLayoutQuestion, ALayoutForTheRunIsNeitherAskedNorStored) {
  const CCsvLayout forRun = CsvPresets()[3].layout;
  SetCsvLayoutForRun(ECsvUse::kRead, forRun);
  EXPECT_EQ(AskCsvLayout(ECsvUse::kRead, false, m_layout), kStatusSuccess);
  EXPECT_EQ(m_layout, forRun);
  EXPECT_EQ(m_asked, 0);
  EXPECT_EQ(LoadCsvLayout(storage::OpenUserStorage(), ECsvUse::kRead), kStored);
  EXPECT_EQ(AskCsvLayout(ECsvUse::kWrite, true, m_layout), kStatusSuccess);
  EXPECT_EQ(m_layout, CCsvLayout());

  SetCsvLayoutForRun(ECsvUse::kRead, std::nullopt);
  EXPECT_EQ(AskCsvLayout(ECsvUse::kRead, true, m_layout), kStatusSuccess);
  EXPECT_EQ(m_layout, kStored);
}

}  // namespace
