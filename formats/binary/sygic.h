#pragma once

#include <cstdint>
#include <string_view>

#include "base/wide_string.h"
#include "io/byte_sink.h"
#include "model/point_list.h"

// `.itf`, the itineraries of Sygic's programs, in three generations: McGuider, a list of stops, and
// those of 11 and of 13, lists of the ways from stop to stop.

/// Reads a McGuider itinerary into one new route. 0; 1 when the file cannot be opened, and
/// kStatusBadFormat when it is no such file.
uint32_t ReadSygic(const WideString& path, PointLists& lists, bool silent);
uint32_t ParseSygic(std::string_view bytes, PointLists& lists);

/// Writes a McGuider itinerary. 0; 1 when it cannot be written, and kStatusInvalidParameter for
/// more than 65535 points, which it cannot hold.
uint32_t WriteSygicMcGuider(const WideString& path, const CGpsPointArray& list, uint32_t splitLimit,
                            bool silent);
void WriteSygicMcGuiderBody(ByteSink& sink, const CGpsPointArray& list);

/// Writes the itinerary of versions 11 and 12. 0, or 1 when it cannot be written.
uint32_t WriteSygic11(const WideString& path, const CGpsPointArray& list, uint32_t splitLimit,
                      bool silent);
void WriteSygic11Body(ByteSink& sink, const CGpsPointArray& list);

/// Writes the itinerary of version 13 and later. 0, or 1 when it cannot be written.
uint32_t WriteSygic13(const WideString& path, const CGpsPointArray& list, uint32_t splitLimit,
                      bool silent);
void WriteSygic13Body(ByteSink& sink, const CGpsPointArray& list);
