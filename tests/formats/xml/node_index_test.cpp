#include "formats/xml/node_index.h"

#include <cstdint>
#include <limits>
#include <vector>

#include <gtest/gtest.h>

namespace {

TEST(NodeIndex, FindsNothingInAnEmptyOne) {
  const NodeIndex index;
  EXPECT_EQ(index.Find(0), nullptr);
  EXPECT_EQ(index.Find(1), nullptr);
}

TEST(NodeIndex, FindsEveryIdAndNoOther) {
  constexpr uint64_t kLargest = std::numeric_limits<uint64_t>::max();
  const CGpsPoint zero, one, largest;
  NodeIndex index;
  index.Set(0, zero);
  index.Set(1, one);
  index.Set(kLargest, largest);
  EXPECT_EQ(index.Find(0), &zero);
  EXPECT_EQ(index.Find(1), &one);
  EXPECT_EQ(index.Find(kLargest), &largest);
  EXPECT_EQ(index.Find(2), nullptr);
  EXPECT_EQ(index.Find(uint64_t{1} << 32), nullptr);
}

TEST(NodeIndex, FindsManyAtOnce) {
  const CGpsPoint one, two;
  const std::vector<uint64_t> ids = {2, 1, 3, 2, 0};
  const CGpsPoint none;
  std::vector<const CGpsPoint*> nodes(ids.size(), &none);
  NodeIndex index;
  index.Find(ids, nodes.data());
  EXPECT_EQ(nodes, (std::vector<const CGpsPoint*>(ids.size(), nullptr)));

  index.Set(1, one);
  index.Set(2, two);
  index.Find(ids, nodes.data());
  EXPECT_EQ(nodes, (std::vector<const CGpsPoint*>{&two, &one, nullptr, &two, nullptr}));
  index.Find({}, nullptr);
}

TEST(NodeIndex, TheLastOfEqualIdsCounts) {
  const CGpsPoint first, second;
  NodeIndex index;
  for (int i = 0; i < 100; ++i) index.Set(7, first);
  index.Set(7, second);
  EXPECT_EQ(index.Find(7), &second);
}

TEST(NodeIndex, GrowsWithWhateverIds) {
  const std::vector<CGpsPoint> nodes(10'000);
  for (const uint64_t step : {uint64_t{1}, uint64_t{1} << 32, uint64_t{1} << 48, ~uint64_t{0}}) {
    NodeIndex index;
    for (size_t i = 0; i < nodes.size(); ++i) index.Set(i * step, nodes[i]);
    for (size_t i = 0; i < nodes.size(); ++i) ASSERT_EQ(index.Find(i * step), &nodes[i]) << step;
    EXPECT_EQ(index.Find(nodes.size() * step), nullptr);
  }
}

}  // namespace
