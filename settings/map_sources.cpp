#include "settings/map_sources.h"

#include <utility>

#include "base/status.h"
#include "io/byte_cursor.h"
#include "io/byte_sink.h"
#include "settings/indexed_entries.h"

namespace {

constexpr std::string_view kFolder = "Maps";

// The number of a map; its name follows.
constexpr size_t kHeadSize = 4;

}  // namespace

uint32_t LoadMaps(const storage::Storage& storage, MapSources& maps, std::string_view root) {
  MapSources stored;
  const uint32_t status = storage::StatusOf([&] {
    ReadIndexedEntries(storage.OpenFolder(storage::PathOf(root, kFolder)),
                       [&stored](const std::string& bytes) {
                         if (bytes.size() <= kHeadSize) return;
                         stored[bytes.substr(kHeadSize)] = ByteCursor(bytes).Uint32();
                       });
  });
  if (status == kStatusSuccess) maps = std::move(stored);
  return status;
}

void WriteMaps(storage::Storage& storage, const MapSources& maps, std::string_view root) {
  std::vector<std::string> entries;
  for (const auto& [name, number] : maps) {
    StringSink sink;
    sink.Uint32(number);
    sink.Write(name);
    entries.push_back(sink.Bytes());
  }
  WriteIndexedEntries(storage, storage::PathOf(root, kFolder), entries);
}

uint32_t SaveMaps(storage::Storage storage, const MapSources& maps, std::string_view root) {
  return storage::StatusOf([&] {
    storage::Transaction transaction(storage);
    WriteMaps(storage, maps, root);
    transaction.Commit();
  });
}
