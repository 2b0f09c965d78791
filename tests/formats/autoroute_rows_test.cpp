#include <gtest/gtest.h>

#include "formats/binary/autoroute.h"
#include "formats/format_rows.h"

namespace {

TEST(AutoRouteRows, ShareOneReaderAndHaveAWriterEachButTheBritishOne) {
  const FormatTable table = DefaultFormatTable();
  for (size_t i = 5; i <= 8; ++i) EXPECT_EQ(table[i].read, ReadAutoRoute) << i;
  EXPECT_EQ(table[5].write, WriteAutoRoute);
  EXPECT_EQ(table[6].write, nullptr);
  EXPECT_EQ(table[7].write, WriteStreetsTrips);
  EXPECT_EQ(table[8].write, WriteMapPoint);
}

}  // namespace
