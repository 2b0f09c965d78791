#include "model/point_queue.h"

#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "model/point_list.h"
#include "tests/list_builder.h"

namespace {

// What allocates may throw.
static_assert(std::is_nothrow_default_constructible_v<PointQueue>);
static_assert(std::is_nothrow_move_constructible_v<PointQueue>);
static_assert(std::is_nothrow_move_assignable_v<PointQueue>);
// A file may have a list in every six of its bytes.
static_assert(sizeof(CGpsRoute) <= sizeof(CGpsPoint));

CGpsPoint Named(const std::string& name) { return MakePoint(1, 1, name); }

std::string Names(const PointQueue& queue) {
  std::string names;
  for (const CGpsPoint& point : queue) names += point.name;
  return names;
}

PointQueue QueueOf(const std::string& names) {
  PointQueue queue;
  for (const char name : names) queue.push_back(Named(std::string(1, name)));
  return queue;
}

TEST(PointQueue, AnEmptyOneIsAnEmptyRange) {
  PointQueue queue;
  const PointQueue& same = queue;
  EXPECT_TRUE(queue.empty());
  EXPECT_EQ(queue.size(), 0u);
  EXPECT_EQ(queue.begin(), queue.end());
  EXPECT_EQ(same.end() - same.begin(), 0);
  EXPECT_EQ(queue.rbegin(), queue.rend());
  EXPECT_EQ(same.rbegin(), same.rend());
  EXPECT_THROW(queue.at(0), std::out_of_range);
  EXPECT_THROW(same.at(0), std::out_of_range);
  queue.clear();
  queue.resize(0);
  EXPECT_EQ(queue.erase(queue.begin(), queue.end()), queue.end());
  EXPECT_EQ(erase_if(queue, [](const CGpsPoint&) { return true; }), 0u);
  EXPECT_TRUE(PointQueue(queue).empty());
}

TEST(PointQueue, TakesPointsAtBothEnds) {
  PointQueue queue;
  queue.push_front(Named("b"));
  const CGpsPoint& first = queue.front();
  for (int i = 0; i < 100; ++i) queue.push_back(Named("-"));
  for (int i = 0; i < 100; ++i) queue.push_front(Named("-"));
  EXPECT_EQ(first.name, "b");
  EXPECT_EQ(&queue[100], &first);
  EXPECT_EQ(queue.size(), 201u);
  queue.emplace_back(Named("z"));
  const CGpsPoint a = Named("a");
  queue.push_front(a);
  queue.push_back(a);
  EXPECT_EQ(queue.front().name, "a");
  EXPECT_EQ(queue.back().name, "a");
  queue.pop_back();
  queue.pop_front();
  EXPECT_EQ(queue.back().name, "z");
  EXPECT_EQ(queue.at(100).name, "b");
  EXPECT_THROW(queue.at(202), std::out_of_range);
}

TEST(PointQueue, InsertsIntoAnEmptyOneAndInBetween) {
  PointQueue queue;
  EXPECT_EQ(queue.insert(queue.end(), Named("c"))->name, "c");
  queue.insert(queue.begin(), Named("a"));
  queue.insert(queue.begin() + 1, Named("b"));
  EXPECT_EQ(Names(queue), "abc");
  const PointQueue more = QueueOf("xy");
  queue.insert(queue.begin() + 1, more.begin(), more.end());
  EXPECT_EQ(Names(queue), "axybc");

  PointQueue into;
  const PointQueue none;
  EXPECT_EQ(into.insert(into.end(), none.begin(), none.end()), into.end());
  into.insert(into.end(), more.begin(), more.end());
  EXPECT_EQ(Names(into), "xy");
  into.assign(queue.begin(), queue.begin() + 2);
  EXPECT_EQ(Names(into), "ax");
  into.assign(none.begin(), none.end());
  EXPECT_TRUE(into.empty());
}

TEST(PointQueue, Erases) {
  PointQueue queue = QueueOf("abcdef");
  EXPECT_EQ(queue.erase(queue.begin() + 1)->name, "c");
  EXPECT_EQ(queue.erase(queue.begin() + 1, queue.begin() + 3)->name, "e");
  EXPECT_EQ(Names(queue), "aef");
  EXPECT_EQ(erase_if(queue, [](const CGpsPoint& point) { return point.name == "e"; }), 1u);
  EXPECT_EQ(Names(queue), "af");
  queue.resize(1);
  EXPECT_EQ(Names(queue), "a");
  queue.resize(3, Named("n"));
  EXPECT_EQ(Names(queue), "ann");
  queue.resize(4);
  EXPECT_EQ(queue.back().name, "");
  queue.clear();
  EXPECT_EQ(queue.begin(), queue.end());
  queue.push_back(Named("new"));
  EXPECT_EQ(Names(queue), "new");
}

TEST(PointQueue, CopiesOwnTheirPoints) {
  PointQueue queue = QueueOf("ab");
  PointQueue copy = queue;
  copy[0].name = "c";
  EXPECT_EQ(Names(queue), "ab");
  EXPECT_EQ(Names(copy), "cb");
  const PointQueue& same = queue;
  queue = same;
  EXPECT_EQ(Names(queue), "ab");
  copy = queue;
  EXPECT_EQ(Names(copy), "ab");
  copy = PointQueue();
  EXPECT_TRUE(copy.empty());
  copy.swap(queue);
  EXPECT_EQ(Names(copy), "ab");
  EXPECT_TRUE(queue.empty());
}

TEST(PointQueue, MovesLeaveAnEmptyOne) {
  PointQueue queue = QueueOf("ab");
  const CGpsPoint* const first = &queue.front();
  PointQueue moved = std::move(queue);
  EXPECT_EQ(&moved.front(), first);
  EXPECT_EQ(queue.size(), 0u);  // NOLINT(bugprone-use-after-move): this is what is tested
  queue = std::move(moved);
  EXPECT_EQ(Names(queue), "ab");
}

}  // namespace
