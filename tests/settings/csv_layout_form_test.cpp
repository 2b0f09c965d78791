#include "settings/csv_layout_form.h"

#include <cstdlib>
#include <string>

#include <gtest/gtest.h>

#include "base/localized_text.h"
#include "base/status.h"
#include "tests/settings_home.h"

namespace {

const CCsvLayout kByHand{kManualCsvPreset, 3, 4, 5, 1, 2, false, "!", "|"};

TEST(CsvLayoutForm, OpensWithTheStoredLayout) {
  const CsvLayoutForm form(CsvUse::kRead, kByHand);
  EXPECT_EQ(form.Shown(), kByHand);
  EXPECT_FALSE(form.IsLocked());
  EXPECT_FALSE(form.AreSeparatorsLocked());
}

TEST(CsvLayoutForm, OpensWithTheFirstPresetWhenTheStoredOneDoesNotExist) {
  CCsvLayout stored = kByHand;
  stored.preset = 5;
  const CsvLayoutForm form(CsvUse::kRead, stored);
  EXPECT_EQ(form.Shown(), CsvPresets()[0].layout);
  EXPECT_TRUE(form.IsLocked());
}

TEST(CsvLayoutForm, HasTheTitleOfItsCommand) {
  EXPECT_EQ(CsvLayoutForm(CsvUse::kRead, {}).Title(), "Open CSV");
  EXPECT_EQ(CsvLayoutForm(CsvUse::kWrite, {}).Title(), "Export CSV");
}

TEST(CsvLayoutForm, ListsPresetsAndColumns) {
  const std::vector<std::string> presets = CsvLayoutForm::PresetChoices();
  EXPECT_EQ(presets, (std::vector<std::string>{"Default", "Inforad", "Pioneer Navgate",
                                               "Destinator", "Manual"}));
  const std::vector<std::string> columns = CsvLayoutForm::ColumnChoices();
  ASSERT_EQ(columns.size(), 20u);
  EXPECT_EQ(columns[0], "No");
  EXPECT_EQ(columns[1], "Column 01");
  EXPECT_EQ(columns[19], "Column 19");
}

TEST(CsvLayoutForm, APresetFillsAndLocksEverything) {
  CsvLayoutForm form(CsvUse::kRead, kByHand);
  form.SetUseLocale(true);
  for (uint32_t preset = 0; preset < kManualCsvPreset; ++preset) {
    form.ChoosePreset(preset);
    EXPECT_EQ(form.Shown(), CsvPresets()[preset].layout);
    EXPECT_TRUE(form.IsLocked());
    EXPECT_TRUE(form.AreSeparatorsLocked());
  }
  form.ChoosePreset(5);
  EXPECT_EQ(form.Shown(), CsvPresets()[3].layout);
}

TEST(CsvLayoutForm, ManualStartsFromWhatIsShown) {
  CsvLayoutForm form(CsvUse::kRead, CsvPresets()[1].layout);
  form.ChoosePreset(kManualCsvPreset);
  CCsvLayout expected = CsvPresets()[1].layout;
  expected.preset = kManualCsvPreset;
  EXPECT_EQ(form.Shown(), expected);
  EXPECT_FALSE(form.IsLocked());
}

TEST(CsvLayoutForm, ManualKeepsWhatWasLastEntered) {
  CsvLayoutForm form(CsvUse::kRead, kByHand);
  form.Shown().latitudeColumn = 19;
  form.ChoosePreset(0);
  form.ChoosePreset(2);
  form.ChoosePreset(kManualCsvPreset);
  CCsvLayout expected = kByHand;
  expected.latitudeColumn = 19;
  EXPECT_EQ(form.Shown(), expected);
}

TEST(CsvLayoutForm, TheLocalesSeparatorsAreShownAndLocked) {
  const char* const former = std::getenv("LC_ALL");
  const std::string kept = former ? former : "";
  setenv("LC_ALL", "C", 1);
  CsvLayoutForm form(CsvUse::kRead, kByHand);
  form.SetUseLocale(true);
  CCsvLayout stored = kByHand;
  stored.useLocale = true;
  const CsvLayoutForm opened(CsvUse::kRead, stored);
  if (former) {
    setenv("LC_ALL", kept.c_str(), 1);
  } else {
    unsetenv("LC_ALL");
  }

  EXPECT_EQ(form.Shown().decimalSeparator, ".");
  EXPECT_EQ(form.Shown().columnSeparator, ",");
  EXPECT_FALSE(form.IsLocked());
  EXPECT_TRUE(form.AreSeparatorsLocked());
  form.SetUseLocale(false);
  EXPECT_EQ(form.Shown().decimalSeparator, ".");
  EXPECT_FALSE(form.AreSeparatorsLocked());
  EXPECT_EQ(opened.Shown().columnSeparator, ",");
}

TEST(CsvLayoutForm, OkCutsSeparatorsAndStores) {
  const SettingsHome home;
  storage::Storage user = storage::OpenUserStorage();
  CsvLayoutForm form(CsvUse::kWrite, kByHand);
  form.Shown().columnSeparator = "12345";
  form.Shown().decimalSeparator = "abcdef";
  CCsvLayout expected = kByHand;
  expected.columnSeparator = "1234";
  expected.decimalSeparator = "abcd";
  CCsvLayout layout;
  EXPECT_EQ(form.Accept(user, layout), kStatusSuccess);
  EXPECT_EQ(layout, expected);
  EXPECT_EQ(LoadCsvLayout(storage::OpenUserStorage(), CsvUse::kWrite), expected);
  EXPECT_EQ(LoadCsvLayout(storage::OpenUserStorage(), CsvUse::kRead), CCsvLayout());
}

TEST(CsvLayoutForm, OkGivesTheLayoutEvenWhenItCannotBeStored) {
  storage::Storage none;
  CCsvLayout layout;
  EXPECT_NE(CsvLayoutForm(CsvUse::kRead, kByHand).Accept(none, layout), kStatusSuccess);
  EXPECT_EQ(layout, kByHand);
}

}  // namespace
