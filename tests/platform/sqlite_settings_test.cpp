#include "platform/posix/sqlite_settings.h"

#include <chrono>
#include <csignal>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/sqlite_database.h"
#include "tests/settings_home.h"
#include "tests/temporary_folder.h"

namespace {

using std::string_literals::operator""s;

constexpr uint32_t kNotFound = 2;
constexpr uint32_t kAccessDenied = 5;
constexpr uint32_t kInvalidHandle = 6;
constexpr uint32_t kBadLength = 24;
constexpr uint32_t kNotSupported = 50;

class SqliteSettings : public testing::Test {
 protected:
  ~SqliteSettings() override { TakeSettingsNews(); }

  std::unique_ptr<SettingsBackend> Open() const {
    return OpenSqliteSettings(m_folder.WidePathTo("settings.db"));
  }

  // Runs statements on the file as another program would.
  void Run(const char* statements) const {
    SqliteDatabase database;
    ASSERT_EQ(database.Open(m_folder.PathTo("settings.db"), SqliteDatabase::Mode::kReadWrite), 0);
    ASSERT_EQ(database.Execute(statements), 0);
  }

  uint32_t Store(const char* name, const SettingsValue& value) const {
    const auto settings = Open();
    uint32_t status = settings->BeginSave();
    if (status == 0) status = settings->CreateFolder("F");
    if (status == 0) status = settings->Write("F", name, value);
    return status == 0 ? settings->CommitSave() : status;
  }

  // The value of that name, or the status as a 64-bit number, a kind that nothing here stores.
  SettingsValue Stored(const char* name) const {
    SettingsValue value;
    const uint32_t status = Open()->Read("F", name, value);
    return status == 0 ? value : uint64_t{status};
  }

  TemporaryFolder m_folder;
};

TEST_F(SqliteSettings, KeepsValuesOfEachKind) {
  const auto settings = Open();
  EXPECT_EQ(settings->CreateFolder("F"), 0u);
  const SettingsValue values[] = {"\x00\x01\xFF"s,
                                  std::string(),
                                  uint32_t{7},
                                  uint32_t{0xFFFFFFFF},
                                  uint64_t{0xFFFFFFFF00000001},
                                  WideString(u"caf\u00e9 \U0001F600"),
                                  WideString()};
  for (const SettingsValue& value : values) {
    EXPECT_EQ(settings->Write("F", "v", value), 0u);
    SettingsValue read;
    EXPECT_EQ(Open()->Read("F", "v", read), 0u);
    EXPECT_EQ(read, value);
  }
}

TEST_F(SqliteSettings, KeepsNumbersAndTextsSoThatAPersonCanReadThem) {
  ASSERT_EQ(Store("Export", uint32_t{0xFFFFFFFF}), 0u);
  ASSERT_EQ(Store("UserID", WideString(u"anna")), 0u);
  SqliteDatabase database;
  ASSERT_EQ(database.Open(m_folder.PathTo("settings.db"), SqliteDatabase::Mode::kReadOnly), 0);
  int64_t number = 0;
  std::string text;
  EXPECT_EQ(database.Query("SELECT data FROM value WHERE name = 'export'", number), 0);
  EXPECT_EQ(database.Query("SELECT data FROM value WHERE name = 'UserID'", text), 0);
  EXPECT_EQ(number, -1);
  EXPECT_EQ(text, "anna");
}

TEST_F(SqliteSettings, HalfACharacterOfATextIsReplaced) {
  ASSERT_EQ(Store("v", WideString(u"a\xD800"
                                  u"b")),
            0u);
  EXPECT_EQ(Stored("v"), SettingsValue(WideString(u"a\uFFFDb")));
}

TEST_F(SqliteSettings, ReadingMakesNoFile) {
  EXPECT_EQ(Stored("v"), SettingsValue(uint64_t{kNotFound}));
  std::vector<std::string> names;
  EXPECT_EQ(Open()->ListValues("F", names), kNotFound);
  EXPECT_TRUE(std::filesystem::is_empty(m_folder.Path()));
}

TEST_F(SqliteSettings, ReadingLeavesTheFileAndItsFolderAsTheyAre) {
  ASSERT_EQ(Store("v", uint32_t{1}), 0u);
  const std::string before = m_folder.Get("settings.db");
  EXPECT_EQ(Stored("v"), SettingsValue(uint32_t{1}));
  EXPECT_EQ(m_folder.Get("settings.db"), before);
  const auto entries = std::filesystem::directory_iterator(m_folder.Path());
  EXPECT_EQ(std::distance(begin(entries), end(entries)), 1);
}

TEST_F(SqliteSettings, TheFileIsThisUsersOnly) {
  const mode_t former = umask(0);
  EXPECT_EQ(Store("v", uint32_t{1}), 0u);
  umask(former);
  struct stat details {};
  ASSERT_EQ(stat(m_folder.PathTo("settings.db").c_str(), &details), 0);
  EXPECT_EQ(details.st_mode & 07777, 0600u);
}

TEST_F(SqliteSettings, MakesTheFoldersAboveTheFile) {
  const auto settings = OpenSqliteSettings(m_folder.WidePathTo("a/b/settings.db"));
  EXPECT_EQ(settings->CreateFolder("F"), 0u);
  EXPECT_TRUE(m_folder.Has("a/b/settings.db"));
}

TEST_F(SqliteSettings, NamesDoNotTellCapitalsFromSmallLetters) {
  const auto settings = Open();
  ASSERT_EQ(settings->CreateFolder("Software\\Map"), 0u);
  EXPECT_EQ(settings->Write("SOFTWARE\\map", "AUTO_calc", uint32_t{1}), 0u);
  EXPECT_EQ(settings->Write("Software\\Map", "auto_CALC", uint32_t{2}), 0u);
  SettingsValue value;
  EXPECT_EQ(Open()->Read("software\\MAP", "Auto_Calc", value), 0u);
  EXPECT_EQ(value, SettingsValue(uint32_t{2}));
  std::vector<std::string> names;
  EXPECT_EQ(Open()->ListValues("Software\\Map", names), 0u);
  EXPECT_THAT(names, testing::ElementsAre("AUTO_calc"));
}

TEST_F(SqliteSettings, AFolderComesWithThoseAboveIt) {
  const auto settings = Open();
  ASSERT_EQ(settings->CreateFolder("a\\b\\c"), 0u);
  EXPECT_EQ(settings->Write("a", "v", uint32_t{1}), 0u);
  EXPECT_EQ(settings->Write("a\\b", "v", uint32_t{2}), 0u);
  EXPECT_EQ(settings->Write("a\\b\\c", "v", uint32_t{3}), 0u);
  EXPECT_EQ(settings->Write("b", "v", uint32_t{4}), kInvalidHandle);
  SettingsValue value;
  EXPECT_EQ(settings->Read("a\\b", "v", value), 0u);
  EXPECT_EQ(value, SettingsValue(uint32_t{2}));
  EXPECT_EQ(settings->Read("b", "v", value), kNotFound);
}

TEST_F(SqliteSettings, ListsTheFoldersRightBelow) {
  for (const char* path : {"Root\\b\\deep", "Root\\A", "Root2\\c", "R_ot\\d"})
    ASSERT_EQ(Open()->CreateFolder(path), 0u);
  std::vector<std::string> names;
  EXPECT_EQ(Open()->ListFolders("rOOT", names), 0u);
  EXPECT_THAT(names, testing::UnorderedElementsAre("A", "b"));
  names.clear();
  EXPECT_EQ(Open()->ListFolders("Root\\A", names), 0u);
  EXPECT_THAT(names, testing::IsEmpty());
}

TEST_F(SqliteSettings, RemovesAValue) {
  ASSERT_EQ(Store("gone", uint32_t{1}), 0u);
  ASSERT_EQ(Store("kept", uint32_t{2}), 0u);
  EXPECT_EQ(Open()->RemoveValue("f", "GONE"), 0u);
  EXPECT_EQ(Stored("gone"), SettingsValue(uint64_t{kNotFound}));
  EXPECT_EQ(Stored("kept"), SettingsValue(uint32_t{2}));
  EXPECT_EQ(Open()->RemoveValue("F", "gone"), kNotFound);
  EXPECT_EQ(Open()->RemoveValue("nowhere", "kept"), kNotFound);
}

TEST_F(SqliteSettings, RemovesAFolderWithAllBelowItAndNothingBeside) {
  for (const char* path : {"Root", "Root\\Sub", "Root\\Sub\\Deep", "Root\\Subway"}) {
    ASSERT_EQ(Open()->CreateFolder(path), 0u);
    ASSERT_EQ(Open()->Write(path, "v", uint32_t{1}), 0u);
  }
  EXPECT_EQ(Open()->RemoveFolder("root\\SUB"), 0u);
  SettingsValue value;
  EXPECT_EQ(Open()->Read("Root", "v", value), 0u);
  EXPECT_EQ(Open()->Read("Root\\Subway", "v", value), 0u);
  EXPECT_EQ(Open()->Read("Root\\Sub", "v", value), kNotFound);
  // A new folder of that name is empty.
  ASSERT_EQ(Open()->CreateFolder("Root\\Sub\\Deep"), 0u);
  EXPECT_EQ(Open()->Read("Root\\Sub\\Deep", "v", value), kNotFound);
  EXPECT_EQ(Open()->RemoveFolder("nowhere"), kNotFound);
}

TEST_F(SqliteSettings, ARemovalIsTakenBackWithItsSave) {
  ASSERT_EQ(Store("v", uint32_t{1}), 0u);
  const auto settings = Open();
  ASSERT_EQ(settings->BeginSave(), 0u);
  EXPECT_EQ(settings->RemoveFolder("F"), 0u);
  settings->AbandonSave();
  EXPECT_EQ(Stored("v"), SettingsValue(uint32_t{1}));
}

TEST_F(SqliteSettings, RefusesAValueThatIsTooLarge) {
  EXPECT_EQ(Store("v", std::string(kLargestSettingsValue, 'x')), 0u);
  EXPECT_EQ(Stored("v"), SettingsValue(std::string(kLargestSettingsValue, 'x')));
  EXPECT_EQ(Store("w", std::string(kLargestSettingsValue + 1, 'x')), kBadLength);
  EXPECT_EQ(Stored("w"), SettingsValue(uint64_t{kNotFound}));
}

TEST_F(SqliteSettings, PassesOverValuesThatAreTooLargeOrOfNoKind) {
  ASSERT_EQ(Store("v", uint32_t{1}), 0u);
  Run("INSERT INTO value SELECT id, 'huge', 1, zeroblob(1048577) FROM folder;"
      "INSERT INTO value SELECT id, 'behind zero', 4, CAST(zeroblob(1048577) AS TEXT) FROM folder;"
      "INSERT INTO value SELECT id, 'odd', 9, 1 FROM folder;");
  EXPECT_EQ(Stored("v"), SettingsValue(uint32_t{1}));
  EXPECT_EQ(Stored("huge"), SettingsValue(uint64_t{kNotFound}));
  EXPECT_EQ(Stored("behind zero"), SettingsValue(uint64_t{kNotFound}));
  EXPECT_EQ(Stored("odd"), SettingsValue(uint64_t{kNotFound}));
}

TEST_F(SqliteSettings, ASaveAppearsAsOneOrNotAtAll) {
  const auto settings = Open();
  ASSERT_EQ(settings->BeginSave(), 0u);
  ASSERT_EQ(settings->CreateFolder("F"), 0u);
  ASSERT_EQ(settings->Write("F", "v", uint32_t{1}), 0u);
  EXPECT_EQ(Stored("v"), SettingsValue(uint64_t{kNotFound}));
  SettingsValue own;
  EXPECT_EQ(settings->Read("F", "v", own), 0u);
  EXPECT_EQ(own, SettingsValue(uint32_t{1}));
  ASSERT_EQ(settings->CommitSave(), 0u);
  EXPECT_EQ(Stored("v"), SettingsValue(uint32_t{1}));

  ASSERT_EQ(settings->BeginSave(), 0u);
  ASSERT_EQ(settings->Write("F", "v", uint32_t{2}), 0u);
  settings->AbandonSave();
  EXPECT_EQ(Stored("v"), SettingsValue(uint32_t{1}));
}

TEST_F(SqliteSettings, AReaderSeesAFolderAsItWasWhenItLookedFirst) {
  ASSERT_EQ(Store("v", uint32_t{1}), 0u);
  const auto reader = Open();
  SettingsValue value;
  ASSERT_EQ(reader->Read("F", "v", value), 0u);
  ASSERT_EQ(Store("v", uint32_t{2}), 0u);
  ASSERT_EQ(reader->Read("F", "v", value), 0u);
  EXPECT_EQ(value, SettingsValue(uint32_t{1}));
  ASSERT_EQ(reader->BeginSave(), 0u);
  ASSERT_EQ(reader->Read("F", "v", value), 0u);
  EXPECT_EQ(value, SettingsValue(uint32_t{2}));
}

TEST_F(SqliteSettings, AFileThatCannotBeOpenedIsDenied) {
  std::filesystem::create_directory(m_folder.PathTo("settings.db"));
  EXPECT_EQ(Stored("v"), SettingsValue(uint64_t{kAccessDenied}));
  EXPECT_EQ(Store("v", uint32_t{1}), kAccessDenied);
  EXPECT_EQ(TakeSettingsNews().damagedFile, u"");
}

TEST_F(SqliteSettings, ALinkToItselfIsNoEmptyStore) {
  std::filesystem::create_symlink("settings.db", m_folder.PathTo("settings.db"));
  EXPECT_EQ(Stored("v"), SettingsValue(uint64_t{kAccessDenied}));
  EXPECT_EQ(Store("v", uint32_t{1}), kAccessDenied);
  EXPECT_TRUE(std::filesystem::is_symlink(m_folder.PathTo("settings.db")));
}

// Two programs

// Runs `body` in a process of its own; it must not use what the test has open.
template <typename Body>
pid_t Fork(Body body) {
  const pid_t child = fork();
  if (child == 0) {
    body();
    _exit(0);
  }
  return child;
}

int ExitStatus(pid_t child) {
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST_F(SqliteSettings, TwoProgramsThatSaveAtOnceLoseNothing) {
  constexpr uint32_t kSaves = 60;
  const auto count = [this](const char* own) {
    for (uint32_t i = 1; i <= kSaves; ++i) {
      const auto settings = Open();
      SettingsValue value = uint32_t{0};
      if (settings->BeginSave() != 0) _exit(1);
      if (settings->CreateFolder("F") != 0) _exit(2);
      settings->Read("F", "both", value);
      if (settings->Write("F", "both", std::get<uint32_t>(value) + 1) != 0) _exit(3);
      if (settings->Write("F", own, i) != 0) _exit(4);
      if (settings->CommitSave() != 0) _exit(5);
    }
  };
  const pid_t first = Fork([&count] { count("first"); });
  const pid_t second = Fork([&count] { count("second"); });
  EXPECT_EQ(ExitStatus(first), 0);
  EXPECT_EQ(ExitStatus(second), 0);
  EXPECT_EQ(Stored("both"), SettingsValue(2 * kSaves));
  EXPECT_EQ(Stored("first"), SettingsValue(kSaves));
  EXPECT_EQ(Stored("second"), SettingsValue(kSaves));
}

TEST_F(SqliteSettings, AKillDuringASaveLeavesTheFormerOrTheNewState) {
  constexpr int kKills = 40;
  constexpr int kValues = 30;
  uint32_t last = 0;
  for (int round = 0; round < kKills; ++round) {
    int saved[2];
    ASSERT_EQ(pipe(saved), 0);
    const pid_t child = Fork([this, last, &saved] {
      for (uint32_t state = last + 1;; ++state) {
        const auto settings = Open();
        if (settings->BeginSave() != 0 || settings->CreateFolder("F") != 0) _exit(1);
        for (int i = 0; i < kValues; ++i)
          settings->Write("F", std::to_string(i), std::string(2000, static_cast<char>(state)));
        settings->Write("F", "state", state);
        if (settings->CommitSave() != 0) _exit(2);
        if (write(saved[1], "x", 1) != 1) _exit(3);
      }
    });
    // Every second kill comes at once, the others in a later save, however slow the disk is.
    close(saved[1]);
    char byte = 0;
    if (round % 2 == 1) {
      ASSERT_EQ(read(saved[0], &byte, 1), 1);
    }
    std::this_thread::sleep_for(std::chrono::microseconds(2000 + 997 * round));
    ASSERT_EQ(kill(child, SIGKILL), 0);
    ASSERT_EQ(ExitStatus(child), -1);
    close(saved[0]);

    const auto settings = Open();
    SettingsValue state = uint32_t{0};
    const uint32_t status = settings->Read("F", "state", state);
    ASSERT_TRUE(status == 0 || status == kNotFound) << status;
    ASSERT_GE(std::get<uint32_t>(state), last);
    last = std::get<uint32_t>(state);
    for (int i = 0; i < kValues && status == 0; ++i) {
      SettingsValue value;
      ASSERT_EQ(settings->Read("F", std::to_string(i), value), 0u);
      ASSERT_EQ(value, SettingsValue(std::string(2000, static_cast<char>(last))));
    }
  }
  EXPECT_GT(last, 0u);
  EXPECT_EQ(TakeSettingsNews().damagedFile, u"");
}

TEST_F(SqliteSettings, AReaderTakesBackASaveThatWasKilledWhileItWrote) {
  ASSERT_EQ(Store("v", std::string(300000, 'a')), 0u);
  // With so little room the save goes to the file before it is committed.
  SqliteDatabase killed;
  ASSERT_EQ(killed.Open(m_folder.PathTo("settings.db"), SqliteDatabase::Mode::kReadWrite), 0);
  ASSERT_EQ(killed.Execute("PRAGMA cache_size = 2; BEGIN IMMEDIATE;"
                           "UPDATE value SET data = zeroblob(300000)"),
            0);
  const TemporaryFolder copy;
  for (const char* const name : {"settings.db", "settings.db-journal"})
    std::filesystem::copy_file(m_folder.PathTo(name), copy.PathTo(name));
  ASSERT_EQ(copy.Get("settings.db").find(std::string(5000, 'a')), std::string::npos);

  SettingsValue value;
  EXPECT_EQ(OpenSqliteSettings(copy.WidePathTo("settings.db"))->Read("F", "v", value), 0u);
  EXPECT_EQ(value, SettingsValue(std::string(300000, 'a')));
}

// Damage

TEST_F(SqliteSettings, ADamagedFileIsPutAsideAndReportedOnce) {
  m_folder.Put("settings.db", "this was a settings file once");
  EXPECT_EQ(Stored("v"), SettingsValue(uint64_t{kNotFound}));
  EXPECT_EQ(m_folder.Get("settings.db"), "");
  EXPECT_EQ(m_folder.Get("settings.db.damaged"), "this was a settings file once");
  EXPECT_EQ(TakeSettingsNews().damagedFile, m_folder.WidePathTo("settings.db.damaged"));
  EXPECT_EQ(TakeSettingsNews().damagedFile, u"");
  EXPECT_EQ(Stored("v"), SettingsValue(uint64_t{kNotFound}));
  EXPECT_EQ(TakeSettingsNews().damagedFile, u"");
}

TEST_F(SqliteSettings, ASecondDamagedFileGetsAnotherName) {
  m_folder.Put("settings.db.damaged", "first");
  m_folder.Put("settings.db", "second");
  EXPECT_EQ(Store("v", uint32_t{1}), 0u);
  EXPECT_EQ(m_folder.Get("settings.db.damaged"), "first");
  EXPECT_EQ(m_folder.Get("settings.db.damaged-2"), "second");
  EXPECT_EQ(TakeSettingsNews().damagedFile, m_folder.WidePathTo("settings.db.damaged-2"));
  EXPECT_EQ(Stored("v"), SettingsValue(uint32_t{1}));
}

TEST_F(SqliteSettings, EveryKindOfDamageEndsInAWorkingStore) {
  ASSERT_EQ(Store("v", uint32_t{1}), 0u);
  const std::string whole = m_folder.Get("settings.db");
  for (size_t offset = 0; offset < whole.size(); offset += offset < 100 ? 20 : 601) {
    std::string damaged = whole;
    for (size_t i = offset; i < std::min(offset + 300, whole.size()); ++i) damaged[i] = '\xA5';
    m_folder.Put("settings.db", damaged);
    SettingsValue value;
    Open()->Read("F", "v", value);
    ASSERT_EQ(Store("w", uint32_t{2}), 0u) << offset;
    ASSERT_EQ(Stored("w"), SettingsValue(uint32_t{2})) << offset;
  }
  for (size_t length = 0; length < whole.size(); length += 1531) {
    m_folder.Put("settings.db", whole.substr(0, length));
    ASSERT_EQ(Store("w", uint32_t{2}), 0u) << length;
    ASSERT_EQ(Stored("w"), SettingsValue(uint32_t{2})) << length;
  }
}

TEST_F(SqliteSettings, AnotherProgramsTablesArePutAside) {
  m_folder.Put("settings.db", "");
  Run("CREATE TABLE value(something)");
  EXPECT_EQ(Stored("v"), SettingsValue(uint64_t{kNotFound}));
  EXPECT_TRUE(m_folder.Has("settings.db.damaged"));

  m_folder.Put("settings.db", "");
  Run("CREATE TABLE value(something); PRAGMA user_version = 1");
  EXPECT_EQ(Store("v", uint32_t{1}), 0u);
  EXPECT_TRUE(m_folder.Has("settings.db.damaged-2"));
  EXPECT_EQ(Stored("v"), SettingsValue(uint32_t{1}));
}

TEST_F(SqliteSettings, AnEmptyFileIsAStoreWithoutValues) {
  m_folder.Put("settings.db", "");
  EXPECT_EQ(Stored("v"), SettingsValue(uint64_t{kNotFound}));
  EXPECT_FALSE(m_folder.Has("settings.db.damaged"));
  EXPECT_EQ(Store("v", uint32_t{1}), 0u);
  EXPECT_EQ(Stored("v"), SettingsValue(uint32_t{1}));
}

TEST_F(SqliteSettings, AFileOfALaterVersionIsLeftAlone) {
  ASSERT_EQ(Store("v", uint32_t{1}), 0u);
  Run("PRAGMA user_version = 2");
  const std::string before = m_folder.Get("settings.db");
  EXPECT_EQ(Stored("v"), SettingsValue(uint64_t{kNotSupported}));
  EXPECT_EQ(Store("v", uint32_t{2}), kNotSupported);
  EXPECT_EQ(m_folder.Get("settings.db"), before);
  EXPECT_EQ(TakeSettingsNews().damagedFile, u"");
}

TEST_F(SqliteSettings, TheJournalGoesAsideWithItsFile) {
  m_folder.Put("settings.db", "no settings");
  m_folder.Put("settings.db-journal", "no journal");
  EXPECT_EQ(Store("v", uint32_t{1}), 0u);
  EXPECT_FALSE(m_folder.Has("settings.db-journal"));
  EXPECT_TRUE(m_folder.Has("settings.db.damaged"));
  EXPECT_EQ(Stored("v"), SettingsValue(uint32_t{1}));
}

TEST_F(SqliteSettings, ProgramsThatFindADamagedFileTogetherPutAsideThatOneOnly) {
  constexpr int kPrograms = 6;
  for (int round = 0; round < 10; ++round) {
    const TemporaryFolder folder;
    const WideString path = folder.Put("settings.db", "damaged");
    std::vector<pid_t> programs;
    for (int i = 0; i < kPrograms; ++i) {
      programs.push_back(Fork([&path, i] {
        const auto settings = OpenSqliteSettings(path);
        if (const uint32_t status = settings->BeginSave()) _exit(static_cast<int>(status & 0xFF));
        if (settings->CreateFolder("F") != 0) _exit(1);
        if (settings->Write("F", std::to_string(i), uint32_t{1}) != 0) _exit(2);
        if (settings->CommitSave() != 0) _exit(3);
      }));
    }
    for (const pid_t program : programs) EXPECT_EQ(ExitStatus(program), 0);
    std::vector<std::string> names;
    EXPECT_EQ(OpenSqliteSettings(path)->ListValues("F", names), 0u);
    EXPECT_EQ(names.size(), static_cast<size_t>(kPrograms));
    EXPECT_EQ(folder.Get("settings.db.damaged"), "damaged");
    EXPECT_FALSE(folder.Has("settings.db.damaged-2"));
  }
}

TEST(UserSettings, LieInTheUsersFolder) {
  const SettingsHome home;
  const auto settings = OpenUserSettings();
  ASSERT_NE(settings, nullptr);
  EXPECT_FALSE(home.HasFile());
  EXPECT_EQ(settings->CreateFolder("F"), 0u);
  EXPECT_TRUE(home.HasFile());
}

}  // namespace
