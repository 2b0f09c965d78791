#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "base/text.h"

namespace {

using Fields = std::vector<std::string_view>;

Fields FirstFields(std::string_view text, size_t limit) {
  Fields fields{"left", "over"};
  SplitFirstFields(text, ',', limit, fields);
  return fields;
}

TEST(SplitFirstFields, GivesAllFieldsOfAShorterText) {
  EXPECT_EQ(FirstFields("a,,b,", 9), (Fields{"a", "", "b", ""}));
  EXPECT_EQ(FirstFields("a,,b,", 4), (Fields{"a", "", "b", ""}));
  EXPECT_EQ(FirstFields("", 9), (Fields{""}));
}

TEST(SplitFirstFields, LeavesOutWhatFollowsTheLimit) {
  EXPECT_EQ(FirstFields("a,,b,c,d", 3), (Fields{"a", "", "b"}));
  EXPECT_EQ(FirstFields("a,b", 1), (Fields{"a"}));
  EXPECT_EQ(FirstFields("a,b", 0), Fields());
}

TEST(SplitFields, HasNoLimit) {
  Fields fields;
  SplitFields("a,,b,c,d", ',', fields);
  EXPECT_EQ(fields, (Fields{"a", "", "b", "c", "d"}));
}

}  // namespace
