#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "base/wide_string.h"
#include "conversion/conversion_context.h"
#include "conversion/conversion_driver.h"
#include "model/point_list.h"

// Links of web planners as itineraries. Stops that a link tells by their address only are looked up
// by the finder of the context; what is not found is noted and left out.

/// Reads a link of Google Maps, HERE, ViaMichelin or MyDrive.
uint32_t ParseMapLink(std::string_view link, PointLists& lists, ConversionContext& context);

/// Reads the bytes of a shortcut to one of them, as browsers and Windows store it.
uint32_t ParseUrlFile(std::string_view bytes, PointLists& lists, ConversionContext& context);

/// The reader of the format row: the path of a shortcut, or a link itself.
uint32_t ReadUrlFile(const WideString& path, PointLists& lists, bool silent);

/// The readers of links that somebody types, in the order in which they are tried.
std::vector<LinkReader> MapLinkReaders();
