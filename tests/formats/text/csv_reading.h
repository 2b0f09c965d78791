#pragma once

#include <string_view>

#include <gtest/gtest.h>

#include "base/status.h"
#include "formats/text/csv.h"

namespace csv {

inline const CCsvLayout kInforad = CsvPresets()[1].layout;
inline const CCsvLayout kDestinator = CsvPresets()[3].layout;

/// Latitude, longitude, elevation, name and comment in columns 1 to 5.
inline CCsvLayout AllColumns(const char* decimal = ".", const char* column = ",") {
  return {kManualCsvPreset, 1, 2, 3, 4, 5, false, decimal, column};
}

/// The route that a reader gives for these bytes.
inline CGpsRoute Parsed(std::string_view bytes, const CCsvLayout& layout = {}) {
  PointLists lists;
  EXPECT_EQ(ParseCsvTable(bytes, lists, layout, ContextInPlace()), kStatusSuccess);
  EXPECT_EQ(lists.size(), 1u);
  EXPECT_EQ(lists[0]->GetKind(), kKindRoute);
  return CGpsRoute(*lists[0]);
}

}  // namespace csv
