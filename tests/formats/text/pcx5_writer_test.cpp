#include <cstdlib>
#include <string>
#include <string_view>
#include <utility>

#include <gtest/gtest.h>

#include "base/status.h"
#include "formats/text/pcx5.h"
#include "tests/formats/text/pcx5_samples.h"
#include "tests/list_builder.h"
#include "tests/temporary_folder.h"

namespace {

using namespace pcx5;

constexpr std::string_view kStamp = " 09-SEP-23 08:05:07 ";
constexpr std::string_view kTail = " 0.00000e+000  00018\r\n";

// A text cut or padded to a column's width.
std::string Padded(std::string text, size_t width) {
  text.resize(width, ' ');
  return text;
}

// The bytes of a file of one point, as far as its "W" line tells it from others.
std::string WaypointLine(const CGpsPoint& point) {
  const std::string bytes = Bytes(MakeList("", point));
  return bytes.substr(bytes.find("W  WPT"));
}

TEST(Pcx5Writer, WritesHeadersAndOneLineAPoint) {
  const auto route =
      MakeList("Tour", MakePoint(48.5734053, 7.7521113, "Strasbourg", "lost", 142.6),
               MakePoint(-33.8567844, -151.2152967, "Sydney"), MakePoint(0.0, 0.0, "", "", -5.0));
  EXPECT_EQ(Bytes(route), Head("Tour") +
                              "W  WPT00001 N48.5734053 E007.7521113 09-SEP-23 08:05:07 00143 "
                              "Strasbourg                               0.00000e+000  00018\r\n"
                              "W  WPT00002 S33.8567844 W151.2152967 09-SEP-23 08:05:07 -9999 "
                              "Sydney                                   0.00000e+000  00018\r\n"
                              "W  WPT00003 N00.0000000 E000.0000000 09-SEP-23 08:05:07 -0005 "
                              "                                         0.00000e+000  00018\r\n");
}

TEST(Pcx5Writer, WritesOnlyTheHeadersOfAnEmptyList) { EXPECT_EQ(Bytes(CGpsRoute()), Head("")); }

TEST(Pcx5Writer, WritesAltitudesInFiveColumns) {
  const std::pair<double, std::string> cases[] = {
      {5.0, "00005"}, {-5.0, "-0005"}, {0.0, "-9999"},    {-0.0, "-9999"},      {0.4, "00000"},
      {2.5, "00002"}, {3.5, "00004"},  {-430.5, "-0430"}, {123456.4, "123456"}, {8848.86, "08849"}};
  for (const auto& [altitude, text] : cases) {
    EXPECT_EQ(WaypointLine(MakePoint(1, 2, "A", "", altitude)),
              "W  WPT00001 N01.0000000 E002.0000000" + std::string(kStamp) + text + " " +
                  Padded("A", 40) + std::string(kTail));
  }
}

TEST(Pcx5Writer, CutsAndPadsNamesToFortyBytes) {
  const std::string fifty = "12345678901234567890123456789012345678901234567890";
  std::string accents;
  for (int i = 0; i < 41; ++i) accents += "\u00e9";
  const std::pair<std::string, std::string> cases[] = {
      {fifty, fifty.substr(0, 40)},
      {fifty.substr(0, 41), fifty.substr(0, 40)},
      {fifty.substr(0, 40), fifty.substr(0, 40)},
      {fifty.substr(0, 39), fifty.substr(0, 39) + " "},
      {accents, std::string(40, '\xE9')},
      {"\u0141\u00f3d\u017a, |\"=\"| \U0001F600", Padded("?\xF3"
                                                         "d?, |\"=\"| ??",
                                                         40)}};
  for (const auto& [name, text] : cases) {
    EXPECT_EQ(WaypointLine(MakePoint(1, 2, name, "", 5)), "W  WPT00001 N01.0000000 E002.0000000" +
                                                              std::string(kStamp) + "00005 " +
                                                              text + std::string(kTail));
  }
}

TEST(Pcx5Writer, NarrowsTheNameOfTheList) {
  EXPECT_EQ(Bytes(MakeList("\u00c9tapes, \u041c")), Head("\xC9tapes, ?"));
}

TEST(Pcx5Writer, NumbersBeyondFiveDigitsPushTheColumns) {
  CGpsRoute route;
  route.points.resize(100000);
  const std::string bytes = Bytes(route);
  const size_t last = bytes.rfind("W  WPT");
  EXPECT_EQ(bytes.substr(last, 24), "W  WPT100000 N00.0000000");
  EXPECT_EQ(bytes.substr(bytes.rfind("W  WPT", last - 1), 23), "W  WPT99999 N00.0000000");
}

TEST(Pcx5Writer, StampsWithMonthNamesAndYearsOfTwoDigits) {
  const std::string_view months[] = {"JAN", "FEB", "MAR", "APR", "MAY", "JUN",
                                     "JUL", "AUG", "SEP", "OCT", "NOV", "DEC"};
  for (int month = 1; month <= 12; ++month) {
    const std::string bytes =
        Bytes(MakeList("", MakePoint(1, 2)), {1999 + month, month, 31, 23, 59, 1});
    const std::string year = (month < 11 ? "0" : "") + std::to_string(month - 1);
    EXPECT_NE(bytes.find(" 31-" + std::string(months[month - 1]) + "-" + year + " 23:59:01 "),
              std::string::npos)
        << month;
  }
}

TEST(Pcx5Writer, TakesTheMomentFromTheClockAndIgnoresTheLimit) {
  const TemporaryFolder folder;
  const auto route = MakeList("A", MakePoint(1, 2, "a"), MakePoint(3, 4, "b"), MakePoint(5, 6));
  // 2023-09-09 08:05:07 UTC
  ASSERT_EQ(setenv("SOURCE_DATE_EPOCH", "1694246707", 1), 0);
  const uint32_t status = WritePcx5(folder.WidePathTo("a.rte"), route, 2, true);
  ASSERT_EQ(unsetenv("SOURCE_DATE_EPOCH"), 0);
  EXPECT_EQ(status, kStatusSuccess);
  EXPECT_EQ(folder.Get("a.rte"), Bytes(route));
  EXPECT_FALSE(folder.Has("a_1.rte"));
  EXPECT_EQ(WritePcx5(folder.WidePathTo("missing/a.rte"), route, 0, true), kStatusFailure);
}

}  // namespace
