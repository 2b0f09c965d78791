#include "settings/settings.h"

#include <bit>
#include <charconv>
#include <cmath>
#include <limits>
#include <new>
#include <string>
#include <type_traits>
#include <utility>

#include "base/status.h"
#include "io/byte_cursor.h"
#include "io/byte_sink.h"
#include "settings/setting_table.h"

namespace {

constexpr std::string_view kFavorites = "Favorites";
constexpr std::string_view kMaps = "Maps";
constexpr std::string_view kNumber = "Number";

// A favourite: longitude, latitude and altitude as 32-bit floats, then the name. A map source: a
// number, then the name.
constexpr size_t kFavoriteHeadSize = 12;
constexpr size_t kMapHeadSize = 4;

void SetDefaults(CSettings& settings) {
  for (const SettingRow& row : SettingTable()) {
    std::visit(
        [&settings, &row](auto field) {
          using Value = std::remove_reference_t<decltype(settings.*field)>;
          if constexpr (std::is_arithmetic_v<Value>) {
            settings.*field = static_cast<Value>(row.defaultValue);
          } else {
            settings.*field = Value();
          }
        },
        row.field);
  }
}

uint32_t FloatBits(double value) {
  // Beyond a float's range the conversion itself would be undefined.
  constexpr double kLargest = std::numeric_limits<float>::max();
  if (std::abs(value) > kLargest) value = std::copysign(kLargest, value);
  return std::bit_cast<uint32_t>(static_cast<float>(value));
}

double FloatOf(uint32_t bits) { return static_cast<double>(std::bit_cast<float>(bits)); }

// The number that a value's name writes, when it is one written by `WriteIndexed`.
std::optional<uint32_t> IndexOf(const std::string& name) {
  uint32_t index = 0;
  const auto parsed = std::from_chars(name.data(), name.data() + name.size(), index);
  if (parsed.ec != std::errc() || std::to_string(index) != name) return std::nullopt;
  return index;
}

// Calls `read` with the bytes of the values "0", "1" and so on below "Number", in this order. Goes
// by what the folder holds, since the count is only a number in a file.
template <typename Read>
void ReadIndexed(const storage::SFolder& folder, Read read) {
  uint32_t count = 0;
  try {
    count = folder.OpenValue(kNumber).ReadNumber();
  } catch (const storage::Exception& failure) {
    if (failure.reason == storage::Reason::kNotFound) return;
    throw;
  }
  std::set<uint32_t> indices;
  for (const std::string& name : folder.ValueNames()) {
    const std::optional<uint32_t> index = IndexOf(name);
    if (index && *index < count) indices.insert(*index);
  }
  for (const uint32_t index : indices) {
    try {
      read(folder.OpenValue(std::to_string(index)).ReadBytes());
    } catch (const storage::Exception& failure) {
      // An entry of another kind is none of ours.
      if (failure.reason != storage::Reason::kInvalidData) throw;
    }
  }
}

// Writes the entries that `encode` turns into bytes, and their count. Entries of a longer list
// before stay behind; the count decides.
template <typename Entries, typename Encode>
void WriteIndexed(storage::Storage& storage, const std::string& path, const Entries& entries,
                  Encode encode) {
  storage::Transaction transaction(storage);
  storage::SFolder folder = storage.CreateFolder(path);
  folder.CreateValue(kNumber).WriteNumber(static_cast<uint32_t>(entries.size()));
  uint32_t index = 0;
  for (const auto& entry : entries) {
    StringSink sink;
    encode(sink, entry);
    folder.CreateValue(std::to_string(index++)).WriteBytes(sink.Bytes());
  }
  transaction.Commit();
}

// What the store holds for each row of the table, as this program would write it.
std::vector<std::optional<SettingsValue>> ValuesOf(const storage::SFolder& root) {
  std::vector<std::optional<SettingsValue>> values;
  CSettings scratch;
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

std::string SubFolder(const std::string& root, std::string_view name) {
  return root + kSettingsPathSeparator + std::string(name);
}

}  // namespace

CSettings::CSettings(std::function<storage::Storage()> openStorage)
    : m_openStorage(std::move(openStorage)) {
  SetDefaults(*this);
}

CSettings::~CSettings() {
  // The windows save by themselves and tell of a failure; nobody is left to be told here.
  try {
    if (HasChanges()) Save();
  } catch (const std::bad_alloc&) {
  }
}

CSettings& CSettings::Instance() {
  static CSettings settings;
  return settings;
}

uint32_t CSettings::WithStorage(const std::function<void(storage::Storage&)>& action) const {
  try {
    storage::Storage storage = m_openStorage();
    action(storage);
    return kStatusSuccess;
  } catch (const storage::Exception& failure) {
    return failure.status;
  }
}

uint32_t CSettings::Load(std::string_view rootPath, const RouteProviders* providers) {
  m_rootPath = rootPath;
  SetDefaults(*this);
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
  return WithStorage([this](storage::Storage& storage) {
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

uint32_t CSettings::LoadFavorites(CGpsPointArray& list) const {
  CGpsWaypointList favorites;
  const uint32_t status = WithStorage([this, &favorites](storage::Storage& storage) {
    ReadIndexed(storage.OpenFolder(SubFolder(m_rootPath, kFavorites)),
                [&favorites](const std::string& bytes) {
                  if (bytes.size() <= kFavoriteHeadSize) return;
                  ByteCursor cursor(bytes);
                  CGpsPoint& point = favorites.points.emplace_back();
                  point.longitude = FloatOf(cursor.Uint32());
                  point.latitude = FloatOf(cursor.Uint32());
                  point.altitude = FloatOf(cursor.Uint32());
                  point.name = bytes.substr(kFavoriteHeadSize);
                });
  });
  if (status != kStatusSuccess) return status;
  favorites.SortByName();
  list.points.clear();
  list.TakePoints(favorites);
  return kStatusSuccess;
}

uint32_t CSettings::SaveFavorites(const CGpsPointArray& list) const {
  return WithStorage([this, &list](storage::Storage& storage) {
    WriteIndexed(storage, SubFolder(m_rootPath, kFavorites), list.points,
                 [](ByteSink& sink, const CGpsPoint& point) {
                   sink.Uint32(FloatBits(point.longitude));
                   sink.Uint32(FloatBits(point.latitude));
                   sink.Uint32(FloatBits(point.altitude));
                   sink.Write(point.name);
                 });
  });
}

uint32_t CSettings::LoadMaps(MapSources& maps) const {
  MapSources stored;
  const uint32_t status = WithStorage([this, &stored](storage::Storage& storage) {
    ReadIndexed(storage.OpenFolder(SubFolder(m_rootPath, kMaps)),
                [&stored](const std::string& bytes) {
                  if (bytes.size() <= kMapHeadSize) return;
                  stored[bytes.substr(kMapHeadSize)] = ByteCursor(bytes).Uint32();
                });
  });
  if (status == kStatusSuccess) maps = std::move(stored);
  return status;
}

uint32_t CSettings::SaveMaps(const MapSources& maps) const {
  return WithStorage([this, &maps](storage::Storage& storage) {
    WriteIndexed(storage, SubFolder(m_rootPath, kMaps), maps,
                 [](ByteSink& sink, const MapSources::value_type& map) {
                   sink.Uint32(map.second);
                   sink.Write(map.first);
                 });
  });
}
