#pragma once

#include <initializer_list>
#include <string>

#include "formats/binary/autoroute.h"
#include "resources/compound_file_builder.h"

namespace autoroute {

/// The stream that tells the version of the program.
inline constexpr char kMapProperties[] = "\005Olhud5yvVwudb10uAaq5ezn4Ac";

/// Numbers of 32 bits, one behind the other.
inline std::string Words(std::initializer_list<int64_t> words) {
  StringSink sink;
  for (const int64_t word : words) sink.Uint32(static_cast<uint32_t>(word));
  return sink.Bytes();
}

/// Map properties with one property besides the code page.
inline std::string Properties(int64_t id, int64_t type, int64_t value) {
  return std::string(44, '\0') + Words({48, 40, 2, 1, 24, id, 32, 2, 1200, type, value});
}

/// A stream of stops.
inline std::string JourneyOf(int32_t count, const std::string& records) {
  return Words({600}) + "MASM" + Words({800, 0, count, 6, 0, 48}) + records + "the rest";
}

/// A file of a map program.
inline std::string MapFile(int64_t version, const std::string& journey) {
  CompoundFileBuilder builder;
  builder.AddStream("Contents", "map");
  builder.AddStream("Journey", journey);
  builder.AddStream(kMapProperties, Properties(0x60002, 3, version));
  return builder.Build();
}

}  // namespace autoroute
