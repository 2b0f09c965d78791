#include "planner/external_names.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr ExternalName kNames[] = {
    {kExternalTrace, "Trace", 1, false},
    {kExternalMessageBox, "MessageBox", 1, false},
    {kExternalHttpRequest, "HttpRequest", 1, false},
    {kExternalHttpDownload, "HttpDownload", 1, false},
    {kExternalGetPoint, "GetPoint", 2, false},
    {kExternalSelectPoint, "SelectPoint", 2, false},
    {kExternalDeletePoint, "DeletePoint", 2, false},
    {kExternalRenamePoint, "RenamePoint", 3, false},
    {kExternalMovePoint, "MovePoint", 3, false},
    {kExternalInsertPoint, "InsertPoint", 5, false},
    {kExternalAddPoint, "AddPoint", 2, false},
    {kExternalAddFavorite, "AddFavorite", 1, false},
    {kExternalCalculate, "Calculate", 1, false},
    {kExternalSendToGps, "SendToGps", 3, false},
    {kExternalGetLocation, "GetLocation", 1, false},
    {kExternalGetRoadLocation, "GetRoadLocation", 1, false},
    {kExternalGetStreetViewLocation, "GetStreetViewLocation", 1, false},
    {kExternalReverseGeocoding, "ReverseGeocoding", 1, false},
    {kExternalGetRoutePreview, "GetRoutePreview", 4, false},
    {kExternalGetElevation, "GetElevation", 1, false},
    {kExternalSettings, "Settings", 0, true},
    {kExternalBase64, "Base64", 0, true},
    {kExternalUtf8, "Utf8", 0, true},
    {kExternalGetStrCoords, "GetStrCoords", 1, false},
    {kExternalSetCurrentMap, "SetCurrentMap", 2, false},
    {kExternalGetCount, "GetCount", 1, false},
    {kExternalGetPins, "GetPins", 3, false},
    {kExternalGetTexts, "GetTexts", 0, false},
    {kExternalGetWays, "GetWays", 3, false},
};

template <typename Predicate>
const ExternalName* FindRow(Predicate predicate) {
  const auto* const found = std::find_if(std::begin(kNames), std::end(kNames), predicate);
  return found == std::end(kNames) ? nullptr : found;
}

}  // namespace

std::span<const ExternalName> ExternalNames() { return kNames; }

const ExternalName* FindExternal(std::string_view name) {
  return FindRow([name](const ExternalName& row) { return row.name == name; });
}

const ExternalName* FindExternal(int32_t id) {
  return FindRow([id](const ExternalName& row) { return row.id == id; });
}
