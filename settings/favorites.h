#pragma once

#include <cstdint>
#include <string_view>

#include "model/point_list.h"
#include "settings/storage.h"

/// Replaces the points of `list` by the user's favourites, sorted by name; entries without a name,
/// or with a position that is no number, are passed over. Returns 0 or the platform's error code:
/// then `list` stays as it is, so that nobody saves an empty one over the favourites.
uint32_t LoadFavorites(const storage::Storage& storage, CGpsPointArray& list,
                       std::string_view root = kSettingsRoot);

/// Stores all points as the favourites. Positions pass through 32-bit floats. Returns 0 or the
/// platform's error code.
uint32_t SaveFavorites(storage::Storage storage, const CGpsPointArray& list,
                       std::string_view root = kSettingsRoot);
