// Any text as assignments of settings, one a line, and any bytes as what the settings file holds.
// The first byte chooses. Whatever is stored there, settings load, show, save and come back as they
// were, and nothing that is made of them is out of its bounds.

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "app/service_settings.h"
#include "base/text.h"
#include "fuzz/no_home.h"
#include "fuzz/stored_bytes.h"
#include "markup/json.h"
#include "planner/route_table.h"
#include "planner/start_json.h"
#include "services/directions/route_providers.h"
#include "services/directions/route_wishes.h"
#include "services/service_registry.h"
#include "services/service_table.h"
#include "settings/csv_layout.h"
#include "settings/favorites.h"
#include "settings/map_sources.h"
#include "settings/service_values.h"
#include "settings/setting_table.h"
#include "settings/settings.h"
#include "settings/settings_list.h"

namespace {

void Expect(bool holds) {
  if (!holds) std::abort();
}

std::string FolderOf(std::string_view name) { return storage::PathOf(kSettingsRoot, name); }

bool AreSame(const SettingValues& left, const SettingValues& right) {
  return std::ranges::all_of(SettingTable(), [&](const SettingRow& row) {
    return EncodeSetting(left, row) == EncodeSetting(right, row);
  });
}

// What the program makes of settings wherever it uses them.
void Use(const CSettings& settings, const MapSources& maps) {
  for (const SettingListing& each : ListSettings(settings)) Expect(IsValidUtf8(each.value));
  CGpsRoute list;
  list.points.emplace_back().latitude = 48.5;
  Expect(!RouteTableText(list, 0, RouteColumn::kPosition, settings).empty());
  CJsonDocument start;
  Expect(start.Parse(StartJson(settings, maps, std::nullopt)) == 0);
  const std::unique_ptr<CRouteProvider> provider =
      CServiceRegistry::Instance().CreateRouteProvider(settings.routeProvider);
  if (!provider) return;
  const RouteRequest request = RequestFor({}, settings, *provider);
  NotOffered({}, settings, *provider);
  Expect(request.options != nullptr);
}

void Assign(std::string_view text) {
  CSettings settings([] { return storage::Storage(); });
  while (!text.empty()) {
    const size_t end = text.find('\n');
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    if (IsServiceAssignment(line)) {
      ServiceAssignment parsed{};
      std::string error;
      Expect(ParseServiceAssignment(line, parsed, error) == error.empty());
      continue;
    }
    const SettingResult result = SetSetting(settings, line);
    Expect(DescribeRefusal(result).empty() == (result.outcome == SettingOutcome::kChanged));
  }
  Use(settings, {});
}

void FillStore(StoredBytes& store, std::string_view bytes) {
  std::vector<std::string> keys;
  for (const SettingRow& row : SettingTable()) keys.emplace_back(row.key);
  bytes = store.Fill(kSettingsRoot, keys, bytes);
  for (const char* const list : {"Favorites", "Maps"})
    bytes = store.Fill(FolderOf(list), {"Number", "0", "1", "4294967295", "01"}, bytes);
  bytes = store.Fill(FolderOf("CSV"), {"read", "write"}, bytes);
  for (const char* const service : {"Services\\google", "Services\\none", "Services"})
    bytes = store.Fill(FolderOf(service), {"url", "key", "appid", "language"}, bytes);
}

void LoadAndSave(std::string_view bytes) {
  const auto backend = std::make_shared<StoredBytes>();
  FillStore(*backend, bytes);
  const auto open = [&backend] { return storage::Storage(backend); };

  CSettings settings(open);
  settings.Load();
  MapSources maps;
  LoadMaps(open(), maps);
  Use(settings, maps);
  Expect(settings.Save() == 0);
  CSettings again(open);
  Expect(again.Load() == 0 && AreSame(settings, again));

  CGpsWaypointList favorites;
  LoadFavorites(open(), favorites);
  for (const CGpsPoint& point : favorites.points) {
    Expect(IsValidUtf8(point.name));
    Expect(std::isfinite(point.latitude) && std::isfinite(point.longitude) &&
           std::isfinite(point.altitude));
  }
  Expect(SaveFavorites(open(), favorites) == 0);
  for (const CsvUse use : {CsvUse::kRead, CsvUse::kWrite})
    CsvSeparators(LoadCsvLayout(open(), use));
  ServiceValuesByName services;
  LoadServiceValues(open(), services);
  ListServiceSettings(services);
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  LeaveHome();
  FillServiceRegistry(CServiceRegistry::Instance());
  RegisterOwnRouteProviders(CServiceRegistry::Instance());
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size == 0) return 0;
  const std::string_view text(reinterpret_cast<const char*>(data + 1), size - 1);
  if (data[0] % 2 == 0)
    Assign(text);
  else
    LoadAndSave(text);
  return 0;
}
