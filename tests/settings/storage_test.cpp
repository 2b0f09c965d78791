#include "settings/storage.h"

#include <functional>
#include <optional>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/status.h"
#include "tests/settings_home.h"

namespace {

using std::string_literals::operator""s;
using storage::Reason;

// Fails every operation with one code.
class BrokenBackend : public SettingsBackend {
 public:
  explicit BrokenBackend(uint32_t status) : m_status(status) {}
  uint32_t CreateFolder(std::string_view) override { return m_status; }
  uint32_t Read(std::string_view, std::string_view, SettingsValue&) override { return m_status; }
  uint32_t Write(std::string_view, std::string_view, const SettingsValue&) override {
    return m_status;
  }
  uint32_t ListValues(std::string_view, std::vector<std::string>&) override { return m_status; }
  uint32_t ListFolders(std::string_view, std::vector<std::string>&) override { return m_status; }
  uint32_t RemoveValue(std::string_view, std::string_view) override { return m_status; }
  uint32_t RemoveFolder(std::string_view) override { return m_status; }
  uint32_t BeginSave() override { return m_status; }
  uint32_t CommitSave() override { return m_status; }
  void AbandonSave() override {}

 private:
  uint32_t m_status;
};

// What `action` throws: its text and reason.
struct Failure {
  std::string text;
  Reason reason;
  uint32_t status;
};

std::optional<Failure> FailureOf(const std::function<void()>& action) {
  try {
    action();
  } catch (const storage::Exception& exception) {
    return Failure{exception.what(), exception.reason, exception.status};
  }
  return std::nullopt;
}

void ExpectFailure(const std::function<void()>& action, const std::string& text, Reason reason) {
  const std::optional<Failure> failure = FailureOf(action);
  ASSERT_TRUE(failure.has_value()) << text;
  EXPECT_EQ(failure->text, text);
  EXPECT_EQ(failure->reason, reason);
}

TEST(Storage, ReasonsHaveTheirNumbers) {
  EXPECT_EQ(static_cast<uint32_t>(Reason::kEmptyHandle), 0u);
  EXPECT_EQ(static_cast<uint32_t>(Reason::kInvalidData), 1u);
  EXPECT_EQ(static_cast<uint32_t>(Reason::kBadLength), 2u);
  EXPECT_EQ(static_cast<uint32_t>(Reason::kNotFound), 3u);
  EXPECT_EQ(static_cast<uint32_t>(Reason::kOther), 4u);
}

TEST(Storage, EmptyHandlesFailWithTheirClass) {
  storage::Storage none;
  ExpectFailure([&none] { none.CreateFolder("F"); }, "Storage", Reason::kEmptyHandle);
  ExpectFailure([&none] { const storage::Transaction t(none); }, "Storage", Reason::kEmptyHandle);
  storage::SFolder folder = none.OpenFolder("F");
  ExpectFailure([&folder] { folder.CreateFolder("G"); }, "SFolder", Reason::kEmptyHandle);
  ExpectFailure([&folder] { folder.ValueNames(); }, "SFolder", Reason::kEmptyHandle);
  storage::SValue value = folder.OpenFolder("G").OpenValue("v");
  ExpectFailure([&value] { value.ReadBytes(); }, "SValue", Reason::kEmptyHandle);
  ExpectFailure([&value] { value.ReadNumber(); }, "SValue", Reason::kEmptyHandle);
  ExpectFailure([&value] { value.ReadText(); }, "SValue", Reason::kEmptyHandle);
  ExpectFailure([&value] { value.WriteNumber(1); }, "SValue", Reason::kEmptyHandle);
}

TEST(Storage, PlatformFailuresBecomeReasons) {
  const std::pair<uint32_t, Reason> reasons[] = {{kStatusInvalidData, Reason::kInvalidData},
                                                 {kStatusBadLength, Reason::kBadLength},
                                                 {kStatusFileNotFound, Reason::kNotFound},
                                                 {kStatusAccessDenied, Reason::kOther},
                                                 {kStatusDiskFull, Reason::kOther}};
  for (const auto& [status, reason] : reasons) {
    storage::Storage broken(std::make_shared<BrokenBackend>(status));
    storage::SFolder folder = broken.OpenFolder("F");
    storage::SValue value = folder.OpenValue("Export");
    ExpectFailure([&broken] { broken.CreateFolder("F"); }, "Key", reason);
    ExpectFailure([&folder] { folder.CreateFolder("G"); }, "Key", reason);
    ExpectFailure([&folder] { folder.ValueNames(); }, "Key", reason);
    ExpectFailure([&value] { value.ReadNumber(); }, "Export", reason);
    ExpectFailure([&value] { value.WriteText(u"x"); }, "Export", reason);
    ExpectFailure([&broken] { const storage::Transaction t(broken); }, "Storage", reason);
    EXPECT_EQ(FailureOf([&value] { value.ReadBytes(); })->status, status);
  }
}

TEST(Storage, AMissingFolderFailsOnlyWhenAValueIsReadThroughIt) {
  const SettingsHome home;
  const storage::Storage user = storage::OpenUserStorage();
  const storage::SValue value = user.OpenFolder("a\\b").OpenFolder("c").OpenValue("v");
  ExpectFailure([&value] { value.ReadNumber(); }, "v", Reason::kNotFound);
  EXPECT_FALSE(home.HasFile());
}

TEST(Storage, AMissingValueIsNotFound) {
  const SettingsHome home;
  storage::Storage user = storage::OpenUserStorage();
  const storage::SFolder folder = user.CreateFolder("F");
  ExpectFailure([&folder] { folder.OpenValue("v").ReadBytes(); }, "v", Reason::kNotFound);
  EXPECT_THAT(folder.ValueNames(), testing::IsEmpty());
}

TEST(Storage, TellsWhetherAValueExists) {
  const SettingsHome home;
  storage::Storage user = storage::OpenUserStorage();
  EXPECT_FALSE(user.OpenFolder("F").OpenValue("v").Exists());
  EXPECT_FALSE(storage::SValue().Exists());
  storage::SValue value = user.CreateFolder("F").CreateValue("v");
  EXPECT_FALSE(value.Exists());
  value.WriteText(u"");
  EXPECT_TRUE(value.Exists());
  // What cannot be found out must show in the read.
  const storage::Storage broken(std::make_shared<BrokenBackend>(kStatusAccessDenied));
  EXPECT_TRUE(broken.OpenFolder("F").OpenValue("v").Exists());
}

TEST(Storage, AFolderThatWasOnlyOpenedCannotBeWritten) {
  const SettingsHome home;
  const storage::Storage user = storage::OpenUserStorage();
  ExpectFailure([&user] { user.OpenFolder("F").CreateValue("v").WriteNumber(1); }, "v",
                Reason::kEmptyHandle);
  ExpectFailure([&user] { user.OpenFolder("F").OpenValue("v").ReadNumber(); }, "v",
                Reason::kNotFound);
}

TEST(Storage, KeepsValuesInFoldersWithinFolders) {
  const SettingsHome home;
  {
    storage::Storage user = storage::OpenUserStorage();
    storage::SFolder folder = user.CreateFolder("Software\\CorvaneMap");
    folder.CreateValue("number").WriteNumber(0xFFFFFFFF);
    folder.CreateFolder("CSV").CreateValue("text").WriteText(u"caf\u00e9");
    folder.CreateFolder("CSV").CreateValue("bytes").WriteBytes("\x00\xFF"s);
  }
  const storage::Storage user = storage::OpenUserStorage();
  EXPECT_EQ(user.OpenFolder("Software").OpenFolder("CorvaneMap").OpenValue("number").ReadNumber(),
            0xFFFFFFFFu);
  const storage::SFolder csv = user.OpenFolder("Software\\CorvaneMap\\CSV");
  EXPECT_EQ(csv.OpenValue("text").ReadText(), u"caf\u00e9");
  EXPECT_EQ(csv.OpenValue("bytes").ReadBytes(), "\x00\xFF"s);
  EXPECT_THAT(csv.ValueNames(), testing::UnorderedElementsAre("text", "bytes"));
}

TEST(Storage, NumbersAndBytesReadAsEachOther) {
  const SettingsHome home;
  storage::Storage user = storage::OpenUserStorage();
  storage::SFolder folder = user.CreateFolder("F");
  folder.CreateValue("number").WriteNumber(0x04030201);
  EXPECT_EQ(folder.OpenValue("number").ReadBytes(), "\x01\x02\x03\x04");
  const auto numberOf = [&folder](std::string_view bytes) {
    folder.CreateValue("bytes").WriteBytes(bytes);
    return folder.OpenValue("bytes").ReadNumber();
  };
  EXPECT_EQ(numberOf("\x05"), 5u);
  EXPECT_EQ(numberOf("\x01\x02\x03\x84"), 0x84030201u);
  EXPECT_EQ(numberOf("\x01\x02\x03\x04\x05\x06"), 0x04030201u);
  ExpectFailure([&numberOf] { numberOf(""); }, "bytes", Reason::kBadLength);
}

TEST(Storage, ANumberOf64BitsReadsAsItsBytes) {
  const SettingsHome home;
  const auto backend = OpenUserSettings();
  ASSERT_EQ(backend->CreateFolder("F"), 0u);
  ASSERT_EQ(backend->Write("F", "v", uint64_t{0x0807060504030201}), 0u);
  const storage::SValue value = storage::OpenUserStorage().OpenFolder("F").OpenValue("v");
  EXPECT_EQ(value.ReadBytes(), "\x01\x02\x03\x04\x05\x06\x07\x08");
  EXPECT_EQ(value.ReadNumber(), 0x04030201u);
}

TEST(Storage, TextReadsAsNothingElse) {
  const SettingsHome home;
  storage::Storage user = storage::OpenUserStorage();
  storage::SFolder folder = user.CreateFolder("F");
  folder.CreateValue("text").WriteText(u"7");
  folder.CreateValue("number").WriteNumber(7);
  folder.CreateValue("bytes").WriteBytes("7");
  ExpectFailure([&folder] { folder.OpenValue("text").ReadNumber(); }, "text", Reason::kInvalidData);
  ExpectFailure([&folder] { folder.OpenValue("text").ReadBytes(); }, "text", Reason::kInvalidData);
  ExpectFailure([&folder] { folder.OpenValue("number").ReadText(); }, "number",
                Reason::kInvalidData);
  ExpectFailure([&folder] { folder.OpenValue("bytes").ReadText(); }, "bytes", Reason::kInvalidData);
}

TEST(Storage, RemovesAndLists) {
  const SettingsHome home;
  storage::SFolder root = storage::OpenUserStorage().CreateFolder("R");
  root.CreateFolder("one").CreateValue("v").WriteNumber(1);
  root.CreateFolder("two").CreateValue("w").WriteNumber(2);
  EXPECT_THAT(root.FolderNames(), testing::UnorderedElementsAre("one", "two"));
  root.RemoveFolder("one");
  root.RemoveFolder("one");
  EXPECT_THAT(root.FolderNames(), testing::ElementsAre("two"));
  storage::SFolder two = root.OpenFolder("two");
  two.RemoveValue("w");
  two.RemoveValue("w");
  EXPECT_THAT(two.ValueNames(), testing::IsEmpty());
  EXPECT_THAT(root.FolderNames(), testing::ElementsAre("two"));
}

TEST(Storage, RemovingTellsOfFailures) {
  storage::SFolder none;
  ExpectFailure([&none] { none.RemoveValue("v"); }, "SFolder", Reason::kEmptyHandle);
  ExpectFailure([&none] { none.RemoveFolder("f"); }, "SFolder", Reason::kEmptyHandle);
  ExpectFailure([&none] { none.FolderNames(); }, "SFolder", Reason::kEmptyHandle);
  storage::SFolder broken =
      storage::Storage(std::make_shared<BrokenBackend>(kStatusDiskFull)).OpenFolder("F");
  ExpectFailure([&broken] { broken.RemoveValue("v"); }, "v", Reason::kOther);
  ExpectFailure([&broken] { broken.RemoveFolder("f"); }, "Key", Reason::kOther);
  ExpectFailure([&broken] { broken.FolderNames(); }, "Key", Reason::kOther);
}

TEST(Storage, ATransactionIsOneOrNothing) {
  const SettingsHome home;
  storage::Storage user = storage::OpenUserStorage();
  const auto stored = [] {
    return storage::OpenUserStorage().OpenFolder("F").OpenValue("v").ReadNumber();
  };
  {
    storage::Transaction transaction(user);
    user.CreateFolder("F").CreateValue("v").WriteNumber(1);
    transaction.Commit();
  }
  EXPECT_EQ(stored(), 1u);
  {
    const storage::Transaction transaction(user);
    user.CreateFolder("F").CreateValue("v").WriteNumber(2);
    EXPECT_EQ(user.OpenFolder("F").OpenValue("v").ReadNumber(), 2u);
  }
  EXPECT_EQ(stored(), 1u);
}

TEST(Storage, WithoutAHomeTheUsersStoreIsEmpty) {
  const SettingsHome home;
  const char* const former = std::getenv("HOME");
  const std::string kept = former ? former : "";
  unsetenv("XDG_CONFIG_HOME");
  unsetenv("HOME");
  storage::Storage user = storage::OpenUserStorage();
  setenv("HOME", kept.c_str(), 1);
  ExpectFailure([&user] { user.CreateFolder("F"); }, "Storage", Reason::kEmptyHandle);
}

}  // namespace
