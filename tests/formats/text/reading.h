#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "conversion/conversion_context.h"
#include "model/point_list.h"

/// What a reader made of some bytes.
struct Reading {
  uint32_t status = 0;
  PointLists lists;
  uint64_t passedOver = 0;
  uint64_t withoutPosition = 0;
  uint64_t lookedUp = 0;
  uint64_t notFound = 0;

  size_t Count() const { return lists.empty() ? 0 : lists[0]->Count(); }
  /// A point of the first list; throws when it isn't there.
  const CGpsPoint& operator[](size_t index) const { return lists.at(0)->At(index); }
};

/// Gives `bytes` to `parse` in memory of just their size, so that a sanitizer sees a read behind
/// the end.
template <typename Parse>
Reading ReadBytes(Parse parse, std::string_view bytes, const Lookups& lookups = {}) {
  const std::vector<char> memory(bytes.begin(), bytes.end());
  ConversionContext context;
  context.lookups = lookups;
  Reading reading;
  reading.status = parse({memory.data(), memory.size()}, reading.lists, context);
  reading.passedOver = context.notes.Count(ConversionNote::kLinePassedOver);
  reading.withoutPosition = context.notes.Count(ConversionNote::kPointWithoutPosition);
  reading.lookedUp = context.notes.Count(ConversionNote::kStopLookedUp);
  reading.notFound = context.notes.Count(ConversionNote::kStopNotFound);
  return reading;
}

/// Reads `sample` cut at every byte: it must give one list, which grows with the bytes.
template <typename Parse>
void ExpectCutsToBeRead(Parse parse, std::string_view sample) {
  size_t before = 0;
  for (size_t length = 0; length <= sample.size(); ++length) {
    const Reading reading = ReadBytes(parse, sample.substr(0, length));
    EXPECT_EQ(reading.status, 0u) << length;
    ASSERT_EQ(reading.lists.size(), 1u) << length;
    EXPECT_GE(reading.Count(), before) << length;
    before = reading.Count();
  }
  EXPECT_GT(before, 0u);
}
