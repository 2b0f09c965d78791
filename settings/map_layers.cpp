#include "settings/map_layers.h"

#include <utility>

#include "base/status.h"
#include "base/text.h"

namespace {

constexpr std::string_view kFolder = "MapLayers";

// The read of a value that is there, but of another kind, is passed over.
template <typename Value, typename Read>
void ReadInto(Value& value, const storage::SFolder& folder, std::string_view name,
              const Read& read) {
  try {
    const storage::SValue stored = folder.OpenValue(name);
    if (stored.Exists()) value = read(stored);
  } catch (const storage::Exception& failure) {
    if (failure.reason != storage::Reason::kInvalidData) throw;
  }
}

MapLayer ReadLayer(const storage::SFolder& folder) {
  const auto text = [](const storage::SValue& value) { return WideToUtf8Lossy(value.ReadText()); };
  const auto number = [](const storage::SValue& value) { return value.ReadNumber(); };
  MapLayer layer;
  ReadInto(layer.name, folder, "Name", text);
  ReadInto(layer.address, folder, "Address", text);
  ReadInto(layer.credit, folder, "Credit", text);
  ReadInto(layer.leastZoom, folder, "LeastZoom", number);
  ReadInto(layer.greatestZoom, folder, "GreatestZoom", number);
  return layer;
}

void WriteLayer(storage::SFolder folder, const MapLayer& layer) {
  folder.CreateValue("Name").WriteText(Utf8ToWideLossy(layer.name));
  folder.CreateValue("Address").WriteText(Utf8ToWideLossy(layer.address));
  folder.CreateValue("Credit").WriteText(Utf8ToWideLossy(layer.credit));
  folder.CreateValue("LeastZoom").WriteNumber(layer.leastZoom);
  folder.CreateValue("GreatestZoom").WriteNumber(layer.greatestZoom);
}

}  // namespace

uint32_t LoadMapLayers(const storage::Storage& storage, MapLayers& layers, std::string_view root) {
  MapLayers stored;
  const uint32_t status = storage::StatusOf([&] {
    const storage::SFolder parent = storage.OpenFolder(storage::PathOf(root, kFolder));
    const size_t count = parent.FolderNames().size();
    for (size_t i = 0; i < count; ++i) {
      MapLayer layer = ReadLayer(parent.OpenFolder(std::to_string(i)));
      if (!layer.name.empty()) stored.push_back(std::move(layer));
    }
  });
  if (status == kStatusSuccess) layers = std::move(stored);
  return status;
}

uint32_t SaveMapLayers(storage::Storage storage, const MapLayers& layers, const MapSources& maps,
                       std::string_view root) {
  return storage::StatusOf([&] {
    storage::Transaction transaction(storage);
    storage.CreateFolder(root).RemoveFolder(kFolder);
    storage::SFolder parent = storage.CreateFolder(storage::PathOf(root, kFolder));
    for (size_t i = 0; i < layers.size(); ++i)
      WriteLayer(parent.CreateFolder(std::to_string(i)), layers[i]);
    WriteMaps(storage, maps, root);
    transaction.Commit();
  });
}
