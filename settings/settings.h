#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "settings/setting_values.h"
#include "settings/storage.h"

/// What the settings ask of the directions providers that this program knows.
class RouteProviders {
 public:
  virtual ~RouteProviders() = default;
  virtual int32_t DefaultProvider() const = 0;
  virtual std::vector<int32_t> Providers() const = 0;
  /// The vehicles of a provider; none when there is no such provider.
  virtual std::optional<std::set<int32_t>> VehiclesOf(int32_t provider) const = 0;
};

/// The settings of the user, loaded from the store and saved to it.
class CSettings : public SettingValues {
 public:
  /// `openStorage` gives the store for each operation.
  explicit CSettings(std::function<storage::Storage()> openStorage = storage::OpenUserStorage);
  CSettings(const CSettings&) = delete;
  CSettings& operator=(const CSettings&) = delete;

  /// The settings of this process.
  static CSettings& Instance();

  /// Reads all keys below `rootPath`, which all other operations use from then on. A key that
  /// cannot be read keeps its default. A provider that `providers` does not know becomes the
  /// default one, a vehicle that the provider does not have becomes 0; without `providers` both
  /// stay as they are stored. Returns 0, or the platform's error code when the store itself could
  /// not be read; a store that does not exist yet is no failure.
  uint32_t Load(std::string_view rootPath = kSettingsRoot,
                const RouteProviders* providers = nullptr);

  /// What `Load` does with its providers, for those that are known only later.
  void CheckProvider(const RouteProviders& providers);

  /// True from the first `Load` on.
  bool IsLoaded() const { return !m_known.empty(); }

  /// Writes all keys except `Language` as one. A key that another program has changed since this
  /// object was loaded, and this one has not, keeps that program's value. A write that fails ends
  /// the save at that key. Returns 0 or the platform's error code.
  uint32_t Save();

  /// At the end of a program: as `Save` when there are changes that have not been saved, otherwise
  /// nothing.
  uint32_t SaveChanges();

 private:
  // A value for each row of the table, none where there is nothing to store.
  using Values = std::vector<std::optional<SettingsValue>>;

  bool HasChanges() const;
  // Writes to `root` and tells in `known` what has been written.
  void SaveRows(storage::SFolder& root, Values& known) const;
  std::function<storage::Storage()> m_openStorage;
  std::string m_rootPath{kSettingsRoot};
  Values m_known;  // what this object and the store last agreed upon; empty before the first load
};
