#pragma once

#include <cstdint>
#include <string_view>

#include "base/wide_string.h"
#include "conversion/conversion_context.h"
#include "markup/xml_reader.h"

// KMZ: a KML document with its pictures in a ZIP archive, the way Google Earth saves places.

/// Whether the file at `path` begins as an archive does.
bool IsKmzFile(const WideString& path);

/// Reads the document of the archive at `path` with `reader`: "doc.kml", or else the first KML file
/// in it. 0; 1 when there is none, when it cannot be read, and when it unpacks to much more than
/// any document does.
uint32_t ReadKmzFile(CXmlReader& reader, const WideString& path, ConversionContext& context);
uint32_t ParseKmz(CXmlReader& reader, std::string_view archive, ConversionContext& context);
