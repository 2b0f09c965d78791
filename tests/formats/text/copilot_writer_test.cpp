#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "base/product.h"
#include "base/status.h"
#include "formats/text/copilot.h"
#include "tests/formats/text/copilot_reading.h"
#include "tests/formats/written_bytes.h"
#include "tests/list_builder.h"
#include "tests/temporary_folder.h"

namespace {

using namespace copilot;
using std::string_literals::operator""s;

TEST(CoPilot6Writer, WritesHeadAndStops) {
  const auto list =
      MakeList("Trip", MakePoint(48.5, 2.25, "Paris", "lost", 35.0), MakePoint(50.75, -4.5, ""));
  EXPECT_EQ(BytesOf(WriteCoPilot6Body, list),
            "Data Version=6.0.0.27\r\n"
            "Start Trip=Trip\r\n"
            "Creator=" +
                std::string(kCreatorTag) +
                "\r\n"
                "TollClosed=0\r\n"
                "End Trip\r\n"
                "Start Stop=Stop 0\r\n"
                "Longitude=2250000\r\n"
                "Latitude=48500000\r\n"
                "City=Paris\r\n"
                "End Stop\r\n"
                "Start Stop=Stop 1\r\n"
                "Longitude=-4500000\r\n"
                "Latitude=50750000\r\n"
                "City=\r\n"
                "End Stop\r\n");
}

TEST(CoPilot6Writer, WritesTheHeadAloneForAnEmptyList) {
  EXPECT_EQ(BytesOf(WriteCoPilot6Body, CGpsRoute()),
            "Data Version=6.0.0.27\r\nStart Trip=\r\nCreator=" + std::string(kCreatorTag) +
                "\r\nTollClosed=0\r\nEnd Trip\r\n");
}

TEST(CoPilot6Writer, NarrowsNamesAndCleansNothing) {
  const auto list =
      MakeList("Caf\u00e9 \u0141", MakePoint(0, 0, "a=b|\"c\",\r\n\u00e9\u0416\U0001F600"));
  const std::string bytes = BytesOf(WriteCoPilot6Body, list);
  EXPECT_NE(bytes.find("\r\nStart Trip=Caf\xE9 ?\r\n"), std::string::npos);
  EXPECT_NE(bytes.find("\r\nCity=a=b|\"c\",\r\n\xE9???\r\nEnd Stop\r\n"), std::string::npos);
}

TEST(CoPilot8Writer, WritesUtf16WithAMark) {
  const auto list = MakeList("Trip", MakePoint(48.5, 2.25, "Paris"), MakePoint(-50.75, 4.5, "B"));
  EXPECT_EQ(BytesOf(WriteCoPilot8Body, list), "\xFF\xFE" + Utf16("Data Version:1.9.1.1\r\n"
                                                                 "Start Trip=Trip\r\n"
                                                                 "End Trip\r\n"
                                                                 "\r\n"
                                                                 "Start Stop=Stop 0\r\n"
                                                                 "Longitude=2250000\r\n"
                                                                 "Latitude=48500000\r\n"
                                                                 "City=Paris\r\n"
                                                                 "End Stop\r\n"
                                                                 "\r\n"
                                                                 "Start Stop=Stop 1\r\n"
                                                                 "Longitude=4500000\r\n"
                                                                 "Latitude=-50750000\r\n"
                                                                 "City=B\r\n"
                                                                 "End Stop\r\n"
                                                                 "\r\n"));
}

TEST(CoPilot10Writer, WritesAddressAndShow) {
  const auto list =
      MakeList("Trip", MakePoint(1, 2, "A"), MakePoint(3, 4, "B"), MakePoint(5, 6, "C"));
  EXPECT_EQ(BytesOf(WriteCoPilot10Body, list), "\xFF\xFE" + Utf16("Data Version:3.4.1.2\r\n"
                                                                  "Start Trip=Trip\r\n"
                                                                  "End Trip\r\n"
                                                                  "\r\n"
                                                                  "Start Stop=Stop 0\r\n"
                                                                  "Longitude=2000000\r\n"
                                                                  "Latitude=1000000\r\n"
                                                                  "Address=A\r\n"
                                                                  "Show=1\r\n"
                                                                  "End Stop\r\n"
                                                                  "\r\n"
                                                                  "Start Stop=Stop 1\r\n"
                                                                  "Longitude=4000000\r\n"
                                                                  "Latitude=3000000\r\n"
                                                                  "Address=B\r\n"
                                                                  "Show=0\r\n"
                                                                  "End Stop\r\n"
                                                                  "\r\n"
                                                                  "Start Stop=Stop 2\r\n"
                                                                  "Longitude=6000000\r\n"
                                                                  "Latitude=5000000\r\n"
                                                                  "Address=C\r\n"
                                                                  "Show=1\r\n"
                                                                  "End Stop\r\n"
                                                                  "\r\n"));
}

TEST(CoPilot10Writer, ShowsTheOnlyStop) {
  EXPECT_EQ(BytesOf(WriteCoPilot10Body, MakeList("", MakePoint(0, 0, "A"))),
            "\xFF\xFE" + Utf16("Data Version:3.4.1.2\r\nStart Trip=\r\nEnd Trip\r\n\r\n"
                               "Start Stop=Stop 0\r\nLongitude=0\r\nLatitude=0\r\n"
                               "Address=A\r\nShow=1\r\nEnd Stop\r\n\r\n"));
}

TEST(CoPilot10Writer, ShowsBothOfTwoStops) {
  const std::string bytes =
      BytesOf(WriteCoPilot10Body, MakeList("", MakePoint(0, 0, "A"), MakePoint(0, 0, "B")));
  EXPECT_EQ(bytes.find(Utf16("Show=0")), std::string::npos);
}

TEST(CoPilotWideWriters, WriteTheHeadAloneForAnEmptyList) {
  EXPECT_EQ(BytesOf(WriteCoPilot8Body, CGpsRoute()),
            "\xFF\xFE" + Utf16("Data Version:1.9.1.1\r\nStart Trip=\r\nEnd Trip\r\n\r\n"));
  EXPECT_EQ(BytesOf(WriteCoPilot10Body, CGpsRoute()),
            "\xFF\xFE" + Utf16("Data Version:3.4.1.2\r\nStart Trip=\r\nEnd Trip\r\n\r\n"));
}

TEST(CoPilotWideWriters, KeepEveryCharacterOfNames) {
  const auto list = MakeList("\u0416", MakePoint(0, 0, "\u00e9\u20ac\U0001F600=\n"));
  // U+0416; U+00E9, U+20AC, U+1F600 as D83D DE00
  const std::string name = "\xE9\x00\xAC\x20\x3D\xD8\x00\xDE"s + Utf16("=\n\r\n");
  const std::string version8 = BytesOf(WriteCoPilot8Body, list);
  EXPECT_NE(version8.find(Utf16("Start Trip=") + "\x16\x04" + Utf16("\r\n")), std::string::npos);
  EXPECT_NE(version8.find(Utf16("City=") + name + Utf16("End Stop")), std::string::npos);
  const std::string version10 = BytesOf(WriteCoPilot10Body, list);
  EXPECT_NE(version10.find(Utf16("Address=") + name + Utf16("Show=1")), std::string::npos);
}

TEST(CoPilotWideWriters, ReplaceBytesThatStartNoCharacter) {
  const std::string bytes = BytesOf(WriteCoPilot8Body, MakeList("", MakePoint(0, 0, "a\xE9z\xC3")));
  EXPECT_NE(bytes.find(Utf16("City=a") + "\xFD\xFFz" + "\0\xFD\xFF"s + Utf16("\r\n")),
            std::string::npos);
}

TEST(CoPilotWriters, TruncateCoordinatesTowardZero) {
  const auto list = MakeList("", MakePoint(2.3522229, -0.1277587, "a"),
                             MakePoint(1e10, std::numeric_limits<double>::quiet_NaN(), "b"));
  const std::string narrow = BytesOf(WriteCoPilot6Body, list);
  EXPECT_NE(narrow.find("Longitude=-127758\r\nLatitude=2352222\r\n"), std::string::npos);
  EXPECT_NE(narrow.find("Longitude=-2147483648\r\nLatitude=-2147483648\r\n"), std::string::npos);
  for (const auto body : {WriteCoPilot8Body, WriteCoPilot10Body}) {
    const std::string wide = BytesOf(body, list);
    EXPECT_NE(wide.find(Utf16("Longitude=-127758\r\nLatitude=2352222\r\n")), std::string::npos);
  }
}

TEST(CoPilotWriters, WriteFilesAndReportThoseThatCannotBe) {
  const TemporaryFolder folder;
  const auto list = MakeList("T", MakePoint(1, 2, "A"), MakePoint(3, 4, "B"));
  EXPECT_EQ(WriteCoPilot6(folder.WidePathTo("6.trp"), list, 1, true), kStatusSuccess);
  EXPECT_EQ(WriteCoPilot8(folder.WidePathTo("8.trp"), list, 1, true), kStatusSuccess);
  EXPECT_EQ(WriteCoPilot10(folder.WidePathTo("10.trp"), list, 1, true), kStatusSuccess);
  EXPECT_EQ(folder.Get("6.trp"), BytesOf(WriteCoPilot6Body, list));
  EXPECT_EQ(folder.Get("8.trp"), BytesOf(WriteCoPilot8Body, list));
  EXPECT_EQ(folder.Get("10.trp"), BytesOf(WriteCoPilot10Body, list));
  for (const auto write : {WriteCoPilot6, WriteCoPilot8, WriteCoPilot10})
    EXPECT_EQ(write(folder.WidePathTo("missing/a.trp"), list, 0, true), kStatusFailure);
}

}  // namespace
