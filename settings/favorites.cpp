#include "settings/favorites.h"

#include <bit>
#include <cmath>
#include <limits>
#include <optional>
#include <string>

#include "base/status.h"
#include "base/text.h"
#include "io/byte_cursor.h"
#include "io/byte_sink.h"
#include "settings/indexed_entries.h"

namespace {

constexpr std::string_view kFolder = "Favorites";

// Longitude, latitude and altitude as 32-bit floats; the name follows.
constexpr size_t kHeadSize = 12;

uint32_t FloatBits(double value) {
  // Beyond a float's range the conversion itself would be undefined.
  constexpr double kLargest = std::numeric_limits<float>::max();
  if (std::abs(value) > kLargest) value = std::copysign(kLargest, value);
  return std::bit_cast<uint32_t>(static_cast<float>(value));
}

double FloatOf(uint32_t bits) { return static_cast<double>(std::bit_cast<float>(bits)); }

std::string Encode(const CGpsPoint& point) {
  StringSink sink;
  sink.Uint32(FloatBits(point.longitude));
  sink.Uint32(FloatBits(point.latitude));
  sink.Uint32(FloatBits(point.altitude));
  sink.Write(point.name);
  return sink.Bytes();
}

// Nothing for an entry without a name, or with a position that no program stores.
std::optional<CGpsPoint> Decode(const std::string& bytes) {
  if (bytes.size() <= kHeadSize) return std::nullopt;
  ByteCursor cursor(bytes);
  CGpsPoint point;
  point.longitude = FloatOf(cursor.Uint32());
  point.latitude = FloatOf(cursor.Uint32());
  point.altitude = FloatOf(cursor.Uint32());
  if (!std::isfinite(point.longitude) || !std::isfinite(point.latitude)) return std::nullopt;
  if (!std::isfinite(point.altitude)) point.altitude = 0.0;
  point.name = MendUtf8(std::string_view(bytes).substr(kHeadSize));
  return point;
}

}  // namespace

uint32_t LoadFavorites(const storage::Storage& storage, CGpsPointArray& list,
                       std::string_view root) {
  CGpsWaypointList favorites;
  const uint32_t status = storage::StatusOf([&] {
    ReadIndexedEntries(storage.OpenFolder(storage::PathOf(root, kFolder)),
                       [&favorites](const std::string& bytes) {
                         if (auto point = Decode(bytes)) favorites.points.push_back(*point);
                       });
  });
  if (status != kStatusSuccess) return status;
  favorites.SortByName();
  list.points.clear();
  list.TakePoints(favorites);
  return kStatusSuccess;
}

uint32_t SaveFavorites(storage::Storage storage, const CGpsPointArray& list,
                       std::string_view root) {
  std::vector<std::string> entries;
  for (const CGpsPoint& point : list.points) entries.push_back(Encode(point));
  return storage::StatusOf([&] {
    storage::Transaction transaction(storage);
    WriteIndexedEntries(storage, storage::PathOf(root, kFolder), entries);
    transaction.Commit();
  });
}
