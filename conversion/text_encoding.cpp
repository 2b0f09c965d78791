#include "conversion/text_encoding.h"

#include <algorithm>
#include <string_view>

#include "base/text.h"
#include "platform/text_decoder.h"
#include "platform/text_encoder.h"

namespace {

// Characters that numbers, keys and frames of files are made of.
constexpr std::string_view kFrameCharacters =
    "0123456789+-.,;:|=*\"'<>[]()$# \t\r\nABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";

bool IsAscii(std::string_view text) {
  return std::all_of(text.begin(), text.end(),
                     [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

// Calls `change` for the list's name and for all texts of its points that are more than ASCII.
template <typename Change>
void ChangeTexts(CGpsPointArray& list, Change change) {
  const auto take = [&change](std::string& text) {
    if (!IsAscii(text)) change(text);
  };
  take(list.name);
  for (CGpsPoint& point : list.points) {
    take(point.name);
    take(point.comment);
  }
}

}  // namespace

bool IsFileEncoding(const std::string& name) {
  TextEncoder encoder;
  TextDecoder decoder;
  return encoder.Open(name) && decoder.Open(name) &&
         encoder.Encode(kFrameCharacters) == kFrameCharacters;
}

void DecodeTexts(const std::string& encoding, CGpsPointArray& list) {
  TextDecoder decoder;
  if (!decoder.Open(encoding)) return;
  ChangeTexts(list, [&decoder](std::string& text) {
    const std::string bytes = NarrowUtf8(text);
    text.clear();
    decoder.Decode(bytes, text);
    decoder.Finish(text);
  });
}

CGpsWaypointList EncodedTexts(const std::string& encoding, const CGpsPointArray& list) {
  CGpsWaypointList encoded(list);
  TextEncoder encoder;
  if (encoder.Open(encoding)) {
    ChangeTexts(encoded,
                [&encoder](std::string& text) { text = WidenToUtf8(encoder.Encode(text)); });
  }
  return encoded;
}
