// Settings and CSV layouts from the command line.

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <string>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "settings/favorites.h"
#include "settings/storage.h"
#include "tests/list_builder.h"
#include "tests/run_program.h"
#include "tests/temporary_folder.h"

namespace {

const std::string kItinerary = "235222|4885661|Paris|4|\r\n435000|5085045|Brussels|2|\r\n";

class SettingsCommand : public testing::Test {
 protected:
  ProgramResult Run(const std::vector<std::string>& arguments) const {
    return RunConverter(arguments, "XDG_CONFIG_HOME=" + folder.PathTo("config") + " LC_ALL=C");
  }

  const TemporaryFolder folder;
};

TEST_F(SettingsCommand, ListsDefaultsWithoutMakingAFile) {
  const ProgramResult result = Run({"--settings"});
  EXPECT_EQ(result.status, 0);
  EXPECT_NE(result.output.find("DisplayNumber"), std::string::npos);
  EXPECT_NE(result.output.find("Show waypoint numbers"), std::string::npos);
  EXPECT_FALSE(folder.Has("config"));
}

TEST_F(SettingsCommand, ChangesAndRemembers) {
  EXPECT_EQ(Run({"--set", "coordinates=2", "--set", "TruckHeight=40"}).status, 0);
  const ProgramResult result = Run({"--settings", "--json"});
  EXPECT_NE(result.output.find("{\"key\": \"Coordinates\", \"kind\": \"number\", \"value\": \"2\", "
                               "\"default\": \"0\""),
            std::string::npos);
  EXPECT_NE(result.output.find("{\"key\": \"TruckHeight\", \"kind\": \"number\", "
                               "\"value\": \"40\", \"default\": \"20\""),
            std::string::npos);
}

TEST_F(SettingsCommand, RefusesUnknownKeysAndWrongValues) {
  const ProgramResult key = Run({"--set", "TruckHeight=40", "--set", "Colour=1"});
  EXPECT_EQ(key.status, 2);
  EXPECT_NE(key.errors.find("The setting \"Colour\" does not exist. Settings: ConverterPosition, "),
            std::string::npos);
  const ProgramResult value = Run({"--set", "Coordinates=7"});
  EXPECT_EQ(value.status, 2);
  EXPECT_EQ(value.errors, "The value \"7\" of Coordinates is not allowed. Allowed: 0 to 2\n");
  EXPECT_EQ(Run({"--set", "Coordinates"}).status, 2);
  EXPECT_NE(Run({"--settings"}).output.find("TruckHeight            number   20"),
            std::string::npos);
}

TEST_F(SettingsCommand, UsesCsvLayoutsForOneRunOrRemembersThem) {
  folder.Put("a.itn", kItinerary);
  const std::string layout = "lat=1,lon=2,name=3,decimal=,,separator=;";
  EXPECT_EQ(Run({folder.PathTo("a.itn"), "csv", "--csv-write", layout}).status, 0);
  const std::string inforad =
      "Latitude;Longitude;Name\r\n48,856610;2,352220;\"Paris\"\r\n50,850450;4,350000;"
      "\"Brussels\"\r\n";
  EXPECT_EQ(folder.Get("a.csv"), inforad);
  EXPECT_EQ(Run({folder.PathTo("a.itn"), "csv"}).status, 0);
  EXPECT_EQ(folder.Get("a.csv"),
            "Longitude,Latitude,Name\r\n2.352220,48.856610,\"Paris\"\r\n4.350000,50.850450,"
            "\"Brussels\"\r\n");

  const ProgramResult remembered =
      Run({folder.PathTo("a.itn"), "csv", "--csv-write", "Inforad", "--remember"});
  EXPECT_EQ(remembered.status, 0);
  EXPECT_EQ(remembered.errors,
            folder.PathTo("a.csv") + ": checked: all 2 stops are as they were, within 0.0 m\n");
  EXPECT_EQ(Run({folder.PathTo("a.itn"), "csv"}).status, 0);
  EXPECT_EQ(folder.Get("a.csv"), inforad);
  EXPECT_EQ(
      Run({folder.PathTo("a.csv"), "itn", "--csv-read", "Inforad", "-o", folder.PathTo("b.itn")})
          .status,
      0);
  EXPECT_EQ(folder.Get("b.itn"), "235222|4885661|Paris|4|\r\n434999|5085045|Brussels|2|\r\n");
}

TEST_F(SettingsCommand, ChangesSettingsAndConverts) {
  folder.Put("a.itn", kItinerary);
  const ProgramResult result =
      Run({folder.PathTo("a.itn"), "csv", "--set", "Coordinates=2", "--csv-write", "Inforad"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(folder.Get("a.csv"),
            "Latitude;Longitude;Name\r\n48,856610;2,352220;\"Paris\"\r\n50,850450;4,350000;"
            "\"Brussels\"\r\n");
  EXPECT_NE(Run({"--settings"}).output.find("Coordinates            number   2 "),
            std::string::npos);
  // A wrong setting ends everything.
  EXPECT_EQ(Run({folder.PathTo("a.itn"), "ov2", "--set", "Coordinates=3"}).status, 2);
  EXPECT_FALSE(folder.Has("a.ov2"));
}

TEST_F(SettingsCommand, RemembersWithoutAConversion) {
  folder.Put("a.itn", kItinerary);
  const ProgramResult layout = Run({"--csv-write", "Inforad", "--remember"});
  EXPECT_EQ(layout.status, 0);
  EXPECT_EQ(layout.errors, "");
  EXPECT_EQ(Run({folder.PathTo("a.itn"), "csv"}).status, 0);
  EXPECT_TRUE(folder.Get("a.csv").starts_with("Latitude;Longitude;Name\r\n48,8"));
  // Beside a setting too, and in any language.
  EXPECT_EQ(
      Run({"LANG_GERMAN", "--set", "Coordinates=1", "--csv-write", "Pioneer Navgate", "--remember"})
          .status,
      0);
  EXPECT_EQ(Run({folder.PathTo("a.itn"), "csv"}).status, 0);
  EXPECT_TRUE(folder.Get("a.csv").starts_with("Longitude;Latitude;Name\r\n2.3"));
  // Nothing to keep is still wrong usage.
  EXPECT_EQ(Run({"--remember"}).status, 2);
  EXPECT_EQ(Run({"a.itn", "--set", "Coordinates=1"}).status, 2);
}

TEST_F(SettingsCommand, RefusesACsvLayoutThatMeansNothing) {
  folder.Put("a.itn", kItinerary);
  const ProgramResult result = Run({folder.PathTo("a.itn"), "csv", "--csv-write", "Nonsense"});
  EXPECT_EQ(result.status, 2);
  EXPECT_NE(result.errors.find("The CSV layout \"Nonsense\" does not exist."), std::string::npos);
  EXPECT_FALSE(folder.Has("a.csv"));
}

TEST_F(SettingsCommand, PutsADamagedFileAsideAndGoesOn) {
  std::filesystem::create_directories(folder.PathTo("config/CorvaneMap"));
  folder.Put("config/CorvaneMap/settings.db", std::string(5000, 'x'));
  folder.Put("a.itn", kItinerary);
  const ProgramResult first = Run({folder.PathTo("a.itn"), "ov2"});
  EXPECT_EQ(first.status, 0);
  EXPECT_NE(first.errors.find("The settings file was damaged and has been put aside as"),
            std::string::npos);
  EXPECT_EQ(Run({folder.PathTo("a.itn"), "ov2"}).errors.find("damaged"), std::string::npos);
}

TEST_F(SettingsCommand, TellsOfDamageThatOnlyASaveFinds) {
  const std::vector<std::vector<std::string>> saves{{"--set", "TruckHeight=40"},
                                                    {"--csv-write", "Inforad", "--remember"}};
  for (const std::vector<std::string>& save : saves) {
    std::filesystem::remove_all(folder.PathTo("config"));
    ASSERT_EQ(Run({"--set", "Coordinates=2"}).status, 0);
    // Many pages of favourites, the last of them overwritten: the settings can still be read.
    setenv("XDG_CONFIG_HOME", folder.PathTo("config").c_str(), 1);
    CGpsRoute favorites;
    for (int i = 0; i < 2000; ++i) favorites.points.push_back(MakePoint(1, 2, "place"));
    EXPECT_EQ(SaveFavorites(storage::OpenUserStorage(), favorites), 0u);
    unsetenv("XDG_CONFIG_HOME");
    std::string store = folder.Get("config/CorvaneMap/settings.db");
    ASSERT_GT(store.size(), 10u * 4096);
    store.replace(store.size() - 4096, 4096, 4096, '\xFF');
    folder.Put("config/CorvaneMap/settings.db", store);
    ASSERT_EQ(Run({"--settings"}).errors, "");

    const ProgramResult result = Run(save);
    EXPECT_EQ(result.status, 0);
    EXPECT_NE(result.errors.find("The settings file was damaged and has been put aside as"),
              std::string::npos);
    EXPECT_TRUE(folder.Has("config/CorvaneMap/settings.db.damaged"));
    EXPECT_EQ(Run({"--settings"}).errors, "");
  }
}

// Holds the bytes that SQLite locks, as a program does that hangs while it saves.
class HeldFile {
 public:
  explicit HeldFile(const std::string& path) : m_file(open(path.c_str(), O_RDWR)) {
    struct flock lock {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    lock.l_start = 0x40000000;
    lock.l_len = 512;
    EXPECT_EQ(fcntl(m_file, F_SETLK, &lock), 0);
  }
  ~HeldFile() { close(m_file); }
  HeldFile(const HeldFile&) = delete;
  HeldFile& operator=(const HeldFile&) = delete;

 private:
  int m_file;
};

TEST_F(SettingsCommand, AFileThatAnotherProgramHoldsHindersNothingForLong) {
  ASSERT_EQ(Run({"--set", "Coordinates=2"}).status, 0);
  folder.Put("a.itn", kItinerary);
  const HeldFile held(folder.PathTo("config/CorvaneMap/settings.db"));
  const std::string warning =
      "Another program is holding the settings file; the defaults are used.\n";

  // A CSV file asks for the settings and for a layout.
  const auto start = std::chrono::steady_clock::now();
  const ProgramResult result = Run({folder.PathTo("a.itn"), "csv"});
  // Far below the five seconds of programs that take turns, and far above half a second, so that a
  // busy machine does not matter.
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(4));
  EXPECT_EQ(result.status, 0);
  EXPECT_TRUE(result.errors.starts_with(warning)) << result.errors;
  EXPECT_EQ(result.errors.find(warning, 1), std::string::npos);
  EXPECT_TRUE(folder.Has("a.csv"));

  const ProgramResult change = Run({"--set", "Coordinates=1"});
  EXPECT_EQ(change.status, 1);
  EXPECT_EQ(change.errors, warning + "The settings cannot be stored.\n");
}

TEST_F(SettingsCommand, WhereNothingAsksForTheSettingsTheirFileIsLeftAlone) {
  ASSERT_EQ(Run({"--set", "Coordinates=2"}).status, 0);
  folder.Put("a.itn", kItinerary);
  const HeldFile held(folder.PathTo("config/CorvaneMap/settings.db"));
  const ProgramResult result = Run({folder.PathTo("a.itn"), "ov2", "LANG_ENGLISH", "--quiet"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.errors, "");
}

TEST_F(SettingsCommand, TellsWhatCannotBeStored) {
  std::filesystem::create_directories(folder.PathTo("config/CorvaneMap/settings.db"));
  folder.Put("a.itn", kItinerary);
  const std::string notStored = "The settings cannot be stored.\n";
  const ProgramResult setting = Run({folder.PathTo("a.itn"), "csv", "--set", "Coordinates=1"});
  EXPECT_EQ(setting.status, 1);
  EXPECT_EQ(setting.errors, notStored);
  const ProgramResult layout =
      Run({folder.PathTo("a.itn"), "csv", "--csv-write", "Inforad", "--remember"});
  EXPECT_EQ(layout.status, 1);
  EXPECT_EQ(layout.errors, notStored);
  EXPECT_FALSE(folder.Has("a.csv"));
  // Without anything to store the defaults are good enough.
  EXPECT_EQ(Run({folder.PathTo("a.itn"), "csv"}).status, 0);
}

TEST_F(SettingsCommand, RefusesAProviderThatDoesNotExist) {
  const ProgramResult result = Run({"--set", "RouteProvider=999"});
  EXPECT_EQ(result.status, 2);
  EXPECT_TRUE(result.errors.starts_with(
      "The value \"999\" of RouteProvider is not allowed. Allowed: 0, 2, 3, 5, "))
      << result.errors;
  EXPECT_EQ(Run({"--set", "RouteProvider=10"}).status, 0);
}

TEST_F(SettingsCommand, HonoursALanguageStoredByHand) {
  setenv("XDG_CONFIG_HOME", folder.PathTo("config").c_str(), 1);
  storage::OpenUserStorage().CreateFolder(kSettingsRoot).CreateValue("Language").WriteNumber(7);
  unsetenv("XDG_CONFIG_HOME");
  EXPECT_EQ(Run({"a.itn", "xyz", "LANG_ENGLISH"}).errors,
            "Unknown format key \"xyz\". \"corvanemap --formats\" lists the keys.\n");
  const ProgramResult german = Run({"a.itn", "itn"});
  EXPECT_EQ(german.status, 2);
  EXPECT_EQ(german.errors, "Die Quelle \u201ea.itn\u201c ist nicht vorhanden.\n");
  ASSERT_EQ(Run({"--set", "Coordinates=1"}).status, 0);
  EXPECT_EQ(Run({"a.itn", "itn"}).errors, german.errors);
}

TEST_F(SettingsCommand, TakesALanguageThatGivesWayToTheOneStoredByHand) {
  ASSERT_EQ(Run({"--set", "ProgramLanguage=19"}).status, 0);
  EXPECT_EQ(Run({"a.itn", "itn"}).errors, "De bron \u201Ca.itn\u201D bestaat niet.\n");
  EXPECT_EQ(Run({"a.itn", "itn", "LANG_ENGLISH"}).errors, "The source \"a.itn\" does not exist.\n");
  setenv("XDG_CONFIG_HOME", folder.PathTo("config").c_str(), 1);
  storage::OpenUserStorage().CreateFolder(kSettingsRoot).CreateValue("Language").WriteNumber(7);
  unsetenv("XDG_CONFIG_HOME");
  EXPECT_EQ(Run({"a.itn", "itn"}).errors, "Die Quelle \u201ea.itn\u201c ist nicht vorhanden.\n");
}

}  // namespace
