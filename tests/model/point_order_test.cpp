#include "model/point_order.h"

#include <string>

#include <gtest/gtest.h>

#include "model/point_list.h"
#include "tests/list_builder.h"

namespace {

// Pseudo-random numbers that are the same everywhere.
class Numbers {
 public:
  double Below(double limit) {
    m_state = m_state * 6364136223846793005u + 1442695040888963407u;
    return limit * static_cast<double>(m_state >> 40) / static_cast<double>(1 << 24);
  }

 private:
  uint64_t m_state = 1;
};

// Points so close together that the tolerance makes the order intransitive.
CGpsWaypointList CrowdedPoints(int count) {
  CGpsWaypointList list;
  Numbers numbers;
  for (int i = 0; i < count; ++i) {
    list.points.push_back(
        MakePoint(numbers.Below(0.002), numbers.Below(0.002), "P" + std::to_string(i)));
    if (i % 7 == 0) list.points.back().tolerance = 0.0003;
  }
  return list;
}

std::string NamesOf(const std::vector<const CGpsPoint*>& points) {
  std::string names;
  for (const CGpsPoint* point : points) names += point->name + " ";
  return names;
}

TEST(MergeSort, KeepsTheOrderOfEquals) {
  std::vector<int> entries;
  for (int i = 0; i < 1000; ++i) entries.push_back(i * 37 % 1000);
  MergeSort(entries, [](int left, int right) { return left / 10 < right / 10; });
  for (size_t i = 1; i < entries.size(); ++i) {
    ASSERT_LE(entries[i - 1] / 10, entries[i] / 10) << i;
  }
  // The number n stands at place 973 n modulo 1000 before: 0 first, then 9 at 757, 8 at 784 ...
  const std::vector<int> firstTens(entries.begin(), entries.begin() + 10);
  EXPECT_EQ(firstTens, (std::vector<int>{0, 9, 8, 7, 6, 5, 4, 3, 2, 1}));
}

TEST(SortedUniquePoints, SortsByLatitudeThenLongitudeAndKeepsTheFirst) {
  const auto list = MakeList<CGpsWaypointList>(
      "", MakePoint(2, 5, "north east"), MakePoint(2.00005, 1, "north west"), MakePoint(1, 9, "a"),
      MakePoint(1.00005, 9.00005, "b"), MakePoint(-1, 0, "south"));
  EXPECT_EQ(NamesOf(SortedUniquePoints(list.points)), "south a north west north east ");
  EXPECT_EQ(list.points[0].name, "north east");
}

TEST(SortedUniquePoints, LooksAtPointersOnly) {
  const CGpsWaypointList list = MakeList<CGpsWaypointList>("", MakePoint(1, 1, "a"));
  EXPECT_EQ(SortedUniquePoints(list.points)[0], &list.points[0]);
  EXPECT_TRUE(SortedUniquePoints(CGpsWaypointList().points).empty());
}

TEST(SortedUniquePoints, GivesWhatSortAndUniqueLeaves) {
  for (const int count : {0, 1, 2, 31, 32, 33, 64, 65, 1000}) {
    const CGpsWaypointList list = CrowdedPoints(count);
    CGpsWaypointList copy = list;
    copy.SortAndUnique();
    std::string names;
    for (const CGpsPoint& point : copy.points) names += point.name + " ";
    EXPECT_EQ(NamesOf(SortedUniquePoints(list.points)), names) << count;
  }
}

// Insertion up to 32 by `operator<`, then runs against the kept point by `IsNear`, on the points.
TEST(SortedUniquePoints, ComparesAsThePointsThemselvesDo) {
  const CGpsWaypointList list = CrowdedPoints(32);
  std::vector<const CGpsPoint*> expected;
  for (const CGpsPoint& point : list.points) {
    size_t place = expected.size();
    while (place > 0 && point < *expected[place - 1]) --place;
    expected.insert(expected.begin() + static_cast<std::ptrdiff_t>(place), &point);
  }
  size_t kept = 0;
  for (size_t i = 1; i < expected.size(); ++i) {
    if (!expected[kept]->IsNear(*expected[i])) expected[++kept] = expected[i];
  }
  expected.resize(kept + 1);
  EXPECT_EQ(NamesOf(SortedUniquePoints(list.points)), NamesOf(expected));
}

}  // namespace
