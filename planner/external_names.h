#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

/// The numbers of the names that a page finds in `window.external`. Those from 100 on are our own.
enum ExternalId : int32_t {
  kExternalTrace = 1,
  kExternalMessageBox = 2,
  kExternalHttpRequest = 3,
  kExternalHttpDownload = 4,
  kExternalGetPoint = 5,
  kExternalSelectPoint = 6,
  kExternalDeletePoint = 7,
  kExternalRenamePoint = 8,
  kExternalMovePoint = 9,
  kExternalInsertPoint = 10,
  kExternalAddPoint = 11,
  kExternalAddFavorite = 12,
  kExternalCalculate = 13,
  kExternalSendToGps = 14,
  kExternalGetLocation = 15,
  kExternalGetRoadLocation = 16,
  kExternalGetStreetViewLocation = 17,
  kExternalReverseGeocoding = 18,
  kExternalGetRoutePreview = 19,
  kExternalGetElevation = 20,
  kExternalSettings = 21,
  kExternalBase64 = 22,
  kExternalUtf8 = 23,
  kExternalGetStrCoords = 24,
  kExternalSetCurrentMap = 25,
  kExternalGetCount = 100,
  kExternalGetPins = 101,
  kExternalGetTexts = 102,
  kExternalGetWays = 103,
};

struct ExternalName {
  int32_t id;
  std::string_view name;
  /// So many arguments are needed; more may be given.
  size_t needed;
  /// Works as a property too.
  bool isProperty;
};

/// All names, by rising number.
std::span<const ExternalName> ExternalNames();

/// The row of a name, compared with its case, or of a number; null without one.
const ExternalName* FindExternal(std::string_view name);
const ExternalName* FindExternal(int32_t id);
