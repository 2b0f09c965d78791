#pragma once

#include <cstddef>

/// A hole in a file, as a copy that was cut off may leave it, reads as zeros, and formats without a
/// header see a record in every few of them. So many empty records in a row are no itinerary.
inline constexpr size_t kRecordsOfAHole = 1000000;
