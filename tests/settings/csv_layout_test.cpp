#include "settings/csv_layout.h"

#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "base/status.h"
#include "tests/settings/empty_backend.h"
#include "tests/settings_home.h"

namespace {

using std::string_literals::operator""s;

// Preset 4, columns 1 to 5 in another order, the locale's flag, separators of three and four
// characters.
const std::string kBytes =
    "\x04\0\0\0\x02\0\0\0\x01\0\0\0\x05\0\0\0\x03\0\0\0\x04\x01\0\0\x01"
    "abc\0"
    ";|\t\xA7"s;

CCsvLayout LayoutOfBytes() { return {4, 2, 1, 5, 3, 0x104, true, "abc", ";|\t\xA7"}; }

// A store whose disk is full behind the first value.
class WritesOnce : public EmptyBackend {
 public:
  uint32_t Write(std::string_view, std::string_view, const SettingsValue&) override {
    return ++m_writes == 1 ? 0 : uint32_t{kStatusDiskFull};
  }
  uint32_t BeginSave() override {
    ++begun;
    return 0;
  }
  uint32_t CommitSave() override {
    ++committed;
    return 0;
  }
  void AbandonSave() override { ++abandoned; }

  int begun = 0;
  int committed = 0;
  int abandoned = 0;

 private:
  int m_writes = 0;
};

TEST(CsvLayout, IsStoredIn33Bytes) {
  EXPECT_EQ(kBytes.size(), 33u);
  EXPECT_EQ(EncodeCsvLayout(LayoutOfBytes()), kBytes);
  EXPECT_EQ(DecodeCsvLayout(kBytes), LayoutOfBytes());
  EXPECT_EQ(EncodeCsvLayout(CCsvLayout()),
            "\0\0\0\0\2\0\0\0\1\0\0\0\0\0\0\0\3\0\0\0\0\0\0\0\0.\0\0\0,\0\0\0"s);
}

TEST(CsvLayout, TakesNoOtherSize) {
  for (size_t size = 0; size < kBytes.size(); ++size)
    EXPECT_EQ(DecodeCsvLayout(kBytes.substr(0, size)), std::nullopt) << size;
  EXPECT_EQ(DecodeCsvLayout(kBytes + "\0"s), std::nullopt);
}

TEST(CsvLayout, CutsSeparatorsToFourCharacters) {
  CCsvLayout layout;
  layout.decimalSeparator = "12345";
  layout.columnSeparator = "";
  const std::string bytes = EncodeCsvLayout(layout);
  EXPECT_EQ(bytes.size(), 33u);
  EXPECT_EQ(bytes.substr(25), "1234\0\0\0\0"s);
  EXPECT_EQ(DecodeCsvLayout(bytes)->decimalSeparator, "1234");
  EXPECT_EQ(DecodeCsvLayout(bytes)->columnSeparator, "");
}

TEST(CsvLayout, ANewOneIsTheFirstPreset) { EXPECT_EQ(CCsvLayout(), CsvPresets()[0].layout); }

TEST(CsvLayout, HasItsPresets) {
  const auto presets = CsvPresets();
  ASSERT_EQ(presets.size(), 5u);
  EXPECT_EQ(presets[0].textId, 228u);
  EXPECT_EQ(presets[0].layout, (CCsvLayout{0, 2, 1, 0, 3, 0, false, ".", ","}));
  EXPECT_EQ(presets[1].textId, 229u);
  EXPECT_EQ(presets[1].layout, (CCsvLayout{1, 1, 2, 0, 3, 0, false, ",", ";"}));
  EXPECT_EQ(presets[2].textId, 247u);
  EXPECT_EQ(presets[2].layout, (CCsvLayout{2, 2, 1, 0, 3, 0, false, ".", ";"}));
  EXPECT_EQ(presets[3].textId, 252u);
  EXPECT_EQ(presets[3].layout, (CCsvLayout{3, 4, 3, 0, 6, 7, false, ".", ","}));
  EXPECT_EQ(presets[4].textId, 127u);
  EXPECT_EQ(presets[4].layout.preset, kManualCsvPreset);
}

TEST(CsvLayout, TakesSeparatorsFromTheLocaleWhenAsked) {
  CCsvLayout layout{4, 1, 2, 0, 3, 0, false, "!", "|"};
  const NumberSeparators german{",", ";"};
  EXPECT_EQ(CsvSeparators(layout, german).decimal, "!");
  EXPECT_EQ(CsvSeparators(layout, german).list, "|");
  layout.useLocale = true;
  EXPECT_EQ(CsvSeparators(layout, german).decimal, ",");
  EXPECT_EQ(CsvSeparators(layout, german).list, ";");
}

TEST(CsvLayout, SeparatorsOfTheLocaleAreEightBitAndShort) {
  const CCsvLayout layout{4, 1, 2, 0, 3, 0, true, "!", "|"};
  const NumberSeparators odd = CsvSeparators(layout, {"\u00b7", "abcdef"});
  EXPECT_EQ(odd.decimal, "\xB7");
  EXPECT_EQ(odd.list, "abcd");
  const NumberSeparators arabic = CsvSeparators(layout, {"\u066b", "\u061b"});
  EXPECT_EQ(arabic.decimal, ".");
  EXPECT_EQ(arabic.list, ",");
  EXPECT_EQ(CsvSeparators(layout, {"", ""}).decimal, ".");
}

TEST(CsvLayout, ReadingAndWritingAreStoredApart) {
  const SettingsHome home;
  storage::Storage user = storage::OpenUserStorage();
  EXPECT_EQ(LoadCsvLayout(user, CsvUse::kRead), CCsvLayout());
  EXPECT_EQ(LoadCsvLayout(user, CsvUse::kWrite), CCsvLayout());
  EXPECT_FALSE(home.HasFile());

  StoreCsvLayout(user, CsvUse::kRead, LayoutOfBytes());
  EXPECT_EQ(LoadCsvLayout(storage::OpenUserStorage(), CsvUse::kRead), LayoutOfBytes());
  EXPECT_EQ(LoadCsvLayout(storage::OpenUserStorage(), CsvUse::kWrite), CCsvLayout());
  StoreCsvLayout(user, CsvUse::kWrite, CsvPresets()[1].layout);

  const storage::SFolder folder = user.OpenFolder("Software\\CorvaneMap\\CSV");
  EXPECT_EQ(folder.OpenValue("read").ReadBytes(), kBytes);
  EXPECT_EQ(folder.OpenValue("write").ReadBytes(), EncodeCsvLayout(CsvPresets()[1].layout));
}

TEST(CsvLayout, BothAreStoredInOneSave) {
  const SettingsHome home;
  storage::Storage user = storage::OpenUserStorage();
  StoreCsvLayouts(user, std::nullopt, std::nullopt);
  EXPECT_FALSE(home.HasFile());
  StoreCsvLayouts(user, LayoutOfBytes(), CsvPresets()[1].layout);
  EXPECT_EQ(LoadCsvLayout(user, CsvUse::kRead), LayoutOfBytes());
  EXPECT_EQ(LoadCsvLayout(user, CsvUse::kWrite), CsvPresets()[1].layout);
  StoreCsvLayouts(user, std::nullopt, CsvPresets()[3].layout);
  EXPECT_EQ(LoadCsvLayout(user, CsvUse::kRead), LayoutOfBytes());
  EXPECT_EQ(LoadCsvLayout(user, CsvUse::kWrite), CsvPresets()[3].layout);

  const auto writesOnce = std::make_shared<WritesOnce>();
  storage::Storage failing(writesOnce);
  EXPECT_THROW(StoreCsvLayouts(failing, LayoutOfBytes(), LayoutOfBytes()), storage::Exception);
  EXPECT_EQ(writesOnce->begun, 1);
  EXPECT_EQ(writesOnce->committed, 0);
  EXPECT_EQ(writesOnce->abandoned, 1);
}

TEST(CsvLayout, AStoredValueThatIsNoneGivesTheFirstPreset) {
  const SettingsHome home;
  storage::Storage user = storage::OpenUserStorage();
  storage::SValue value = user.CreateFolder("Software\\CorvaneMap\\CSV").CreateValue("read");
  value.WriteBytes(kBytes.substr(1));
  EXPECT_EQ(LoadCsvLayout(user, CsvUse::kRead), CCsvLayout());
  value.WriteText(u"layout");
  EXPECT_EQ(LoadCsvLayout(user, CsvUse::kRead), CCsvLayout());
}

TEST(CsvLayout, WithoutAStoreItCannotBeKept) {
  storage::Storage none;
  EXPECT_EQ(LoadCsvLayout(none, CsvUse::kRead), CCsvLayout());
  EXPECT_THROW(StoreCsvLayout(none, CsvUse::kRead, CCsvLayout()), storage::Exception);
}

}  // namespace
