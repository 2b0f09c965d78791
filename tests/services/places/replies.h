#pragma once

#include <string_view>

#include "services/places/place_reply.h"

/// A complete reply of each family, all of one place or two: the first is "Colmar" at 48.08, 7.36
/// or what `name` says.
struct SampleReply {
  std::string_view family;
  std::string_view text;
  uint32_t (*read)(std::string_view reply, PlaceList& places);
  size_t places;
  std::string_view name;
  std::string_view comment;
};

extern const SampleReply kSampleReplies[14];
