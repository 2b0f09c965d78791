#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "base/status.h"
#include "conversion/read_trip.h"
#include "formats/format_rows.h"
#include "tests/temporary_folder.h"

// The search for a reader over files of sections and keys that hold no itinerary.

namespace {

constexpr std::string_view kBcrWithoutRequest =
    "[CLIENT]\r\nROUTENAME=Eifel\r\nSTATION1=Standort,999999999\r\n"
    "[COORDINATES]\r\nSTATION1=773000,6566000\r\n[DESCRIPTION]\r\nSTATION1=Monschau\r\n";

TripRead Search(const FormatTable& table, const WideString& path) {
  ConversionContext context;
  return ReadTrip(table, path, context, {.silent = true});
}

uint32_t ReadAnything(const WideString&, PointLists& lists, bool) {
  AddList<CGpsRoute>(lists).points.emplace_back();
  return kStatusSuccess;
}

TEST(SectionFileSearch, ABcrFileWithoutRequestIsNotTaken) {
  const TemporaryFolder folder;
  const TripRead result = Search(DefaultFormatTable(), folder.Put("a.bcr", kBcrWithoutRequest));
  // What Windows says of a key that is not there.
  EXPECT_EQ(result.status, kStatusFileNotFound);
  EXPECT_TRUE(result.lists.empty());
}

TEST(SectionFileSearch, ABcrFileWithoutRequestGoesToTheNextReader) {
  const TemporaryFolder folder;
  FormatTable table = DefaultFormatTable();
  table.push_back({u"bcr", 0, ReadAnything, nullptr, 0});
  const TripRead next = Search(table, folder.Put("a.bcr", kBcrWithoutRequest));
  EXPECT_EQ(next.status, kStatusSuccess);
  EXPECT_EQ(next.lists.size(), 1u);
}

TEST(SectionFileSearch, ABcrFileWithRequestIsTaken) {
  const TemporaryFolder folder;
  const std::string whole =
      "[CLIENT]\r\nREQUEST=TRUE\r\n" + std::string(kBcrWithoutRequest.substr(10));
  const TripRead taken = Search(DefaultFormatTable(), folder.Put("a.bcr", whole));
  EXPECT_EQ(taken.status, kStatusSuccess);
  EXPECT_EQ(taken.lists.size(), 1u);
}

TEST(SectionFileSearch, ATourWithoutStopsIsOfNoFormat) {
  const TemporaryFolder folder;
  for (const std::string_view bytes :
       {"", "[TOUR]\r\nName = Empty\r\n",
        "[TOUR]\r\nName = From one\r\n[1]\r\nPositionInList = 1\r\nLongitude = 1\r\n"}) {
    const TripRead result = Search(DefaultFormatTable(), folder.Put("a.tour", bytes));
    EXPECT_EQ(result.status, kStatusBadFormat) << bytes;
    EXPECT_TRUE(result.lists.empty()) << bytes;
  }
  const WideString path = folder.Put(
      "a.tour", "[0]\r\nPositionInList = 0\r\nName = A\r\nLongitude = 1000\r\nLatitude = 1000\r\n");
  EXPECT_EQ(Search(DefaultFormatTable(), path).status, kStatusSuccess);
}

}  // namespace
