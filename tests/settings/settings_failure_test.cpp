#include <memory>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/status.h"
#include "settings/favorites.h"
#include "settings/map_sources.h"
#include "settings/settings.h"
#include "tests/list_builder.h"
#include "tests/settings/empty_backend.h"
#include "tests/settings/stored_settings.h"

namespace {

// Takes everything up to one key.
class FailingBackend : public EmptyBackend {
 public:
  FailingBackend(std::string key, uint32_t status) : m_key(std::move(key)), m_status(status) {}
  uint32_t Read(std::string_view, std::string_view name, SettingsValue&) override {
    return name == m_key ? m_status : uint32_t{kStatusFileNotFound};
  }
  uint32_t Write(std::string_view, std::string_view name, const SettingsValue&) override {
    if (name == m_key) return m_status;
    written.emplace_back(name);
    return 0;
  }
  uint32_t CommitSave() override {
    ++commits;
    return commitStatus;
  }

  std::vector<std::string> written;
  int commits = 0;
  uint32_t commitStatus = 0;

 private:
  std::string m_key;
  uint32_t m_status;
};

TEST_F(Settings, AWriteThatFailsEndsTheSaveAtItsKey) {
  const auto backend = std::make_shared<FailingBackend>("DIST_MILES", kStatusDiskFull);
  CSettings settings([&backend] { return storage::Storage(backend); });
  settings.editorPosition.emplace();
  EXPECT_EQ(settings.Save(), kStatusDiskFull);
  EXPECT_THAT(backend->written, testing::ElementsAre("EditorPosition", "AUTO_CALC"));
  EXPECT_EQ(backend->commits, 1);
}

TEST_F(Settings, AFailedSaveTellsWhatFailedFirst) {
  constexpr uint32_t kNoSaveUnderWay = 1359;
  const auto backend = std::make_shared<FailingBackend>("DIST_MILES", kStatusDiskFull);
  backend->commitStatus = kNoSaveUnderWay;
  CSettings settings([&backend] { return storage::Storage(backend); });
  EXPECT_EQ(settings.Save(), kStatusDiskFull);
  EXPECT_EQ(backend->commits, 1);
  const auto other = std::make_shared<FailingBackend>("none", kStatusDiskFull);
  other->commitStatus = kNoSaveUnderWay;
  CSettings whole([&other] { return storage::Storage(other); });
  EXPECT_EQ(whole.Save(), kNoSaveUnderWay);
}

TEST_F(Settings, AStoreThatCannotBeReadIsToldAndGivesDefaults) {
  const auto backend = std::make_shared<FailingBackend>("Coordinates", kStatusAccessDenied);
  CSettings settings([&backend] { return storage::Storage(backend); });
  EXPECT_EQ(settings.Load(), kStatusAccessDenied);
  EXPECT_EQ(settings.coordinates, 0);
}

TEST_F(Settings, ListsThatCannotBeReadStayAsTheyAre) {
  const auto backend = std::make_shared<FailingBackend>("Number", kStatusAccessDenied);
  const storage::Storage broken(backend);
  CGpsRoute favorites = MakeList("", MakePoint(1, 2, "kept"));
  EXPECT_EQ(LoadFavorites(broken, favorites), kStatusAccessDenied);
  ASSERT_EQ(favorites.Count(), 1u);
  EXPECT_EQ(favorites.At(0).name, "kept");
  MapSources maps{{"kept", 3}};
  EXPECT_EQ(LoadMaps(broken, maps), kStatusAccessDenied);
  EXPECT_EQ(maps, (MapSources{{"kept", 3}}));
  // A store without them is no failure: they are empty.
  const auto fresh = std::make_shared<FailingBackend>("none", kStatusAccessDenied);
  const storage::Storage first(fresh);
  EXPECT_EQ(LoadFavorites(first, favorites), kStatusSuccess);
  EXPECT_EQ(favorites.Count(), 0u);
  EXPECT_EQ(LoadMaps(first, maps), kStatusSuccess);
  EXPECT_TRUE(maps.empty());
}

TEST_F(Settings, WithoutAStoreThereAreDefaultsAndNoSave) {
  CSettings settings([] { return storage::Storage(); });
  EXPECT_EQ(settings.Load(), kStatusSuccess);
  EXPECT_TRUE(settings.displayNumber);
  EXPECT_NE(settings.Save(), kStatusSuccess);
  CGpsRoute favorites;
  EXPECT_NE(LoadFavorites(storage::Storage(), favorites), kStatusSuccess);
  EXPECT_NE(SaveFavorites(storage::Storage(), favorites), kStatusSuccess);
}

TEST_F(Settings, ADamagedFileGivesDefaultsAndIsReplacedByASave) {
  std::filesystem::create_directory(m_home.Folder().PathTo("CorvaneMap"));
  m_home.Folder().Put("CorvaneMap/settings.db", "damaged");
  CSettings settings;
  EXPECT_EQ(settings.Load(), kStatusSuccess);
  EXPECT_EQ(TakeSettingsNews().damagedFile,
            m_home.Folder().WidePathTo("CorvaneMap/settings.db.damaged"));
  EXPECT_TRUE(settings.displayNumber);
  settings.coordinates = 2;
  EXPECT_EQ(settings.Save(), kStatusSuccess);
  EXPECT_EQ(Value("Coordinates").ReadNumber(), 2u);
}

}  // namespace
