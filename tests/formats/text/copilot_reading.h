#pragma once

#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "base/status.h"
#include "conversion/conversion_context.h"
#include "formats/text/copilot.h"
#include "markup/json.h"

namespace copilot {

/// Latin-1 text in UTF-16, in either byte order.
inline std::string Utf16(std::string_view text, bool bigEndian = false) {
  std::string units;
  for (const char c : text) {
    if (bigEndian) units.push_back('\0');
    units.push_back(c);
    if (!bigEndian) units.push_back('\0');
  }
  return units;
}

/// The one list of a file of keys and values.
inline PointLists Keyed(std::string_view bytes) {
  PointLists lists;
  EXPECT_EQ(ParseCoPilot6(bytes, lists, ContextInPlace()), kStatusSuccess);
  EXPECT_EQ(lists.size(), 1u);
  return lists;
}

/// A JSON document with these stops.
inline std::string TripOf(std::string_view stops) {
  return R"({"Trip":{"Name":"T","Stops":[)" + std::string(stops) + "]}}";
}

/// The code with which a document is refused; `lists` is what it left.
inline int CodeOf(std::string_view document, PointLists& lists) {
  try {
    ParseCoPilot10(document, lists, ContextInPlace());
  } catch (const CJsonException& failure) {
    return failure.code;
  }
  return 0;
}

}  // namespace copilot
