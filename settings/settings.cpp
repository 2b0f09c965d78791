#include "settings/settings.h"

#include <utility>

#include "base/status.h"
#include "settings/setting_table.h"

namespace {

// What the store holds for each row of the table, as this program would write it.
std::vector<std::optional<SettingsValue>> ValuesOf(const storage::SFolder& root) {
  std::vector<std::optional<SettingsValue>> values;
  SettingValues scratch;
  for (const SettingRow& row : SettingTable()) {
    values.emplace_back();
    try {
      const storage::SValue value = root.OpenValue(row.key);
      if (!value.Exists()) continue;
      DecodeSetting(scratch, row, value);
      values.back() = EncodeSetting(scratch, row);
    } catch (const storage::Exception&) {
      continue;  // of another kind: written anew
    }
  }
  return values;
}

void Write(storage::SValue value, const SettingsValue& content) {
  if (const auto* const bytes = std::get_if<std::string>(&content)) value.WriteBytes(*bytes);
  if (const auto* const number = std::get_if<uint32_t>(&content)) value.WriteNumber(*number);
  if (const auto* const text = std::get_if<WideString>(&content)) value.WriteText(*text);
}

}  // namespace

CSettings::CSettings(std::function<storage::Storage()> openStorage)
    : m_openStorage(std::move(openStorage)) {}

CSettings& CSettings::Instance() {
  static CSettings settings;
  return settings;
}

uint32_t CSettings::Load(std::string_view rootPath, const RouteProviders* providers) {
  m_rootPath = rootPath;
  static_cast<SettingValues&>(*this) = {};
  if (providers) routeProvider = providers->DefaultProvider();

  uint32_t status = kStatusSuccess;
  const storage::SFolder root = m_openStorage().OpenFolder(m_rootPath);
  m_known.clear();
  for (const SettingRow& row : SettingTable()) {
    try {
      const storage::SValue value = root.OpenValue(row.key);
      if (value.Exists()) DecodeSetting(*this, row, value);
    } catch (const storage::Exception& failure) {
      if (failure.reason == storage::Reason::kOther) status = failure.status;
    }
    m_known.push_back(EncodeSetting(*this, row));
  }
  if (providers) CheckProvider(*providers);
  return status;
}

void CSettings::CheckProvider(const RouteProviders& providers) {
  const std::optional<std::set<int32_t>> vehicles = providers.VehiclesOf(routeProvider);
  if (!vehicles) routeProvider = providers.DefaultProvider();
  if (!vehicles || !vehicles->contains(vehicleType)) vehicleType = 0;
}

bool CSettings::HasChanges() const {
  for (size_t i = 0; i < m_known.size(); ++i) {
    const SettingRow& row = SettingTable()[i];
    if (row.isSaved && EncodeSetting(*this, row) != m_known[i]) return true;
  }
  return false;
}

uint32_t CSettings::Save() {
  return storage::StatusOf([this] {
    storage::Storage storage = m_openStorage();
    storage::Transaction transaction(storage);
    Values known = m_known;
    known.resize(SettingTable().size());
    std::optional<storage::Exception> failure;
    try {
      storage::SFolder root = storage.CreateFolder(m_rootPath);
      SaveRows(root, known);
    } catch (const storage::Exception& thrown) {
      failure = thrown;  // what stands before the key that failed is kept
    }
    try {
      transaction.Commit();
      m_known = std::move(known);
    } catch (const storage::Exception&) {
      // A store that is full has given up the whole save; why is told by the write.
      if (!failure) throw;
    }
    if (failure) throw storage::Exception(*failure);
  });
}

void CSettings::SaveRows(storage::SFolder& root, Values& known) const {
  const Values present = ValuesOf(root);
  for (size_t i = 0; i < known.size(); ++i) {
    const SettingRow& row = SettingTable()[i];
    const std::optional<SettingsValue> mine = EncodeSetting(*this, row);
    const bool isOthers = present[i] && present[i] != known[i] && mine == known[i];
    if (!row.isSaved || !mine || isOthers) continue;
    Write(root.CreateValue(row.key), *mine);
    known[i] = mine;
  }
}

uint32_t CSettings::SaveChanges() { return HasChanges() ? Save() : uint32_t{kStatusSuccess}; }
