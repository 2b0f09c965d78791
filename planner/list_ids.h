#pragma once

#include <cstdint>

/// The four lists of the window, by the numbers under which the page knows them.
enum PlannerList : int32_t {
  kListItinerary = 0,
  kListSearchResults = 1,
  kListFavorites = 2,
  kListPois = 3,
};

/// What a list holds; the page draws the pins by it.
enum class PinKind : int32_t {
  kSearchResults = 5,
  kFavorites = 6,
  kPois = 8,
  kItinerary = 9,
};

/// Whether the map may edit the points of a list.
constexpr bool IsEditable(PinKind kind) {
  return kind == PinKind::kPois || kind == PinKind::kItinerary;
}
