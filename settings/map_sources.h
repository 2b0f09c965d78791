#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#include "settings/storage.h"

/// The user's map sources: name in UTF-8 to number.
using MapSources = std::map<std::string, uint32_t>;

/// Replaces `maps` by the stored ones; entries without a name are passed over. Returns 0 or the
/// platform's error code: then `maps` stays as it is.
uint32_t LoadMaps(const storage::Storage& storage, MapSources& maps,
                  std::string_view root = kSettingsRoot);

/// Writes the maps in a transaction of the caller's. Throws storage::Exception.
void WriteMaps(storage::Storage& storage, const MapSources& maps,
               std::string_view root = kSettingsRoot);

/// Returns 0 or the platform's error code.
uint32_t SaveMaps(storage::Storage storage, const MapSources& maps,
                  std::string_view root = kSettingsRoot);
