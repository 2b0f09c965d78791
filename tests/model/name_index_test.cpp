#include "model/name_index.h"

#include <array>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

struct NameOf {
  const std::vector<std::string>& names;
  std::string_view operator()(uint32_t number) const { return names[number]; }
};

using Index = NameIndex<NameOf>;

Index IndexOf(const std::vector<std::string>& names) {
  Index index(NameOf{names});
  for (uint32_t i = 0; i < names.size(); ++i) index.Add(i);
  return index;
}

TEST(NameIndex, FindsTheFirstThingOfAName) {
  const std::vector<std::string> names = {"Paris", "", "Lyon", "Paris", "Lyon", ""};
  const Index index = IndexOf(names);
  EXPECT_EQ(index.Find("Paris"), 0u);
  EXPECT_EQ(index.Find(""), 1u);
  EXPECT_EQ(index.Find("Lyon"), 2u);
  EXPECT_EQ(index.Find("paris"), Index::kNone);
  EXPECT_EQ(index.Find("Pari"), Index::kNone);
  EXPECT_EQ(index.Find(std::string_view("Paris\0", 6)), Index::kNone);
}

TEST(NameIndex, FindsNothingWhenEmpty) {
  const std::vector<std::string> names;
  const Index index = IndexOf(names);
  EXPECT_EQ(index.Find(""), Index::kNone);
  const std::array<std::string_view, 2> sought = {"a", ""};
  std::array<uint32_t, 2> numbers{};
  index.Find(sought, numbers.data());
  EXPECT_EQ(numbers[0], Index::kNone);
  EXPECT_EQ(numbers[1], Index::kNone);
}

TEST(NameIndex, GrowsAndKeepsEveryName) {
  constexpr uint32_t kNames = 5000;
  std::vector<std::string> names;
  for (uint32_t i = 0; i < kNames; ++i) names.push_back("stop " + std::to_string(i));
  const Index index = IndexOf(names);
  for (uint32_t i = 0; i < kNames; ++i) ASSERT_EQ(index.Find(names[i]), i);
  EXPECT_EQ(index.Find("stop 5000"), Index::kNone);
}

TEST(NameIndex, FindsManyAtOnceLikeOneByOne) {
  std::vector<std::string> names;
  for (int i = 0; i < 1000; ++i) names.push_back(std::to_string(i % 700));
  const Index index = IndexOf(names);
  std::vector<std::string> texts;
  for (size_t i = 0; i < Index::kMostAtOnce; ++i) texts.push_back(std::to_string(i * 17));
  const std::vector<std::string_view> sought(texts.begin(), texts.end());
  std::array<uint32_t, Index::kMostAtOnce> numbers{};
  index.Find(sought, numbers.data());
  for (size_t i = 0; i < sought.size(); ++i) {
    const uint32_t expected = i * 17 < 700 ? static_cast<uint32_t>(i * 17) : Index::kNone;
    EXPECT_EQ(numbers[i], expected) << i;
    EXPECT_EQ(index.Find(sought[i]), expected) << i;
  }
}

TEST(NameIndex, ReservingChangesNothingButTheRoom) {
  const std::vector<std::string> names = {"a", "b"};
  Index index(NameOf{names});
  index.Add(0);
  index.Reserve(1000);
  index.Add(1);
  index.Reserve(1);
  EXPECT_EQ(index.Find("a"), 0u);
  EXPECT_EQ(index.Find("b"), 1u);
}

TEST(HashName, DependsOnEveryByteAndOnTheLength) {
  std::set<uint64_t> hashes;
  for (size_t length = 0; length <= 20; ++length) {
    const std::string zeros(length, '\0');
    hashes.insert(HashName(zeros));
    for (size_t i = 0; i < length; ++i) {
      std::string text = zeros;
      text[i] = '\x80';
      hashes.insert(HashName(text));
    }
  }
  // 21 texts of zeros, and one for each place of each: 0 + 1 + ... + 20.
  EXPECT_EQ(hashes.size(), 21u + 210u);
  EXPECT_EQ(HashName("Corvane"), HashName(std::string("Corvane")));
}

}  // namespace
