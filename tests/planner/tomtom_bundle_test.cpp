// What TomTom HOME fetches: the archive, byte by byte, and its description.

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "base/status.h"
#include "planner/tomtom_home.h"
#include "tests/list_builder.h"
#include "tests/stopped_clock.h"

namespace {

uint32_t Little(std::string_view bytes, size_t at, size_t width) {
  uint32_t value = 0;
  for (size_t i = width; i > 0; --i)
    value = value << 8 | static_cast<uint8_t>(bytes.at(at + i - 1));
  return value;
}

/// CRC-32 bit by bit.
uint32_t Crc32(std::string_view bytes) {
  uint32_t crc = 0xFFFFFFFF;
  for (const char byte : bytes) {
    crc ^= static_cast<uint8_t>(byte);
    for (int i = 0; i < 8; ++i) crc = (crc >> 1) ^ (crc & 1 ? 0xEDB88320 : 0);
  }
  return ~crc;
}

/// The stored files of an archive, by its central directory; fails for anything that is wrong.
std::map<std::string, std::string> FilesOf(std::string_view archive) {
  std::map<std::string, std::string> files;
  const size_t end = archive.rfind("PK\5\6");
  EXPECT_NE(end, std::string_view::npos);
  size_t at = Little(archive, end + 16, 4);
  for (uint32_t left = Little(archive, end + 10, 2); left > 0; --left) {
    EXPECT_EQ(archive.substr(at, 4), "PK\1\2");
    EXPECT_EQ(Little(archive, at + 10, 2), 0u);  // stored
    const uint32_t crc = Little(archive, at + 16, 4);
    const uint32_t size = Little(archive, at + 20, 4);
    EXPECT_EQ(Little(archive, at + 24, 4), size);
    const uint32_t nameSize = Little(archive, at + 28, 2);
    const uint32_t local = Little(archive, at + 42, 4);
    const std::string name(archive.substr(at + 46, nameSize));
    EXPECT_EQ(archive.substr(local, 4), "PK\3\4");
    const size_t start =
        local + 30 + Little(archive, local + 26, 2) + Little(archive, local + 28, 2);
    files[name] = archive.substr(start, size);
    EXPECT_EQ(Crc32(files[name]), crc) << name;
    at += 46 + nameSize + Little(archive, at + 30, 2) + Little(archive, at + 32, 2);
  }
  return files;
}

TEST(TomTomBundle, HoldsOneItinerary) {
  const StoppedClock clock("1700000000");
  const auto list =
      MakeList("Trip & more", MakePoint(48.85661, 2.35222, "Paris"), MakePoint(50.85045, 4.5, "B"));
  TomTomBundle bundle;
  ASSERT_EQ(MakeTomTomBundle("My trip", list, 0, bundle), 0u);
  EXPECT_EQ(bundle.archiveName, "My trip.zip");
  EXPECT_EQ(bundle.descriptionName, "My trip.xml");
  EXPECT_EQ(bundle.link, "tomtomhome:contentitem:http://127.0.0.1:8099/My%20trip.xml");
  const std::map<std::string, std::string> expected = {
      {"ITN/My trip.itn", "235222|4885661|Paris|4|\r\n450000|5085045|B|2|\r\n"}};
  EXPECT_EQ(FilesOf(bundle.archive), expected);
  EXPECT_EQ(bundle.description,
            "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"no\"?><item idstr=\"itinerary\" "
            "version=\"1.0\">"
            "<start/><finish/><title mimetype=\"text/plain\">Trip &amp; more</title>"
            "<description mimetype=\"text/plain\">Trip &amp; more</description>"
            "<download><url location=\"main\">http://127.0.0.1:8099/My%20trip.zip</url></download>"
            "<content size=\"" +
                std::to_string(bundle.archive.size()) +
                "\"/><targetdevice models=\"all\"/><price free=\"true\"/>"
                "<supplier name=\"Corvane Map 1.21\"/></item>");
}

TEST(TomTomBundle, SplitsALongList) {
  CGpsRoute list;
  for (int i = 0; i < 10; ++i)
    list.points.push_back(MakePoint(0, i, std::string(1, static_cast<char>('A' + i))));
  TomTomBundle bundle;
  ASSERT_EQ(MakeTomTomBundle("t", list, 4, bundle), 0u);
  const auto files = FilesOf(bundle.archive);
  ASSERT_EQ(files.size(), 3u);
  EXPECT_EQ(files.at("ITN/t_1.itn"),
            "000000|0000000|A|4|\r\n100000|0000000|B|0|\r\n200000|0000000|C|0|\r\n"
            "300000|0000000|D|2|\r\n");
  EXPECT_EQ(files.at("ITN/t_2.itn").substr(0, 20), "300000|0000000|D|4|\r");
  EXPECT_EQ(files.at("ITN/t_3.itn").substr(0, 20), "600000|0000000|G|4|\r");
  ASSERT_EQ(MakeTomTomBundle("t", list, 10, bundle), 0u);
  EXPECT_EQ(FilesOf(bundle.archive).count("ITN/t.itn"), 1u);
  EXPECT_EQ(MakeTomTomBundle("t", list, 1, bundle), static_cast<uint32_t>(kStatusInvalidParameter));
}

TEST(TomTomBundle, TakesAnEmptyList) {
  TomTomBundle bundle;
  ASSERT_EQ(MakeTomTomBundle("t", CGpsRoute(), 0, bundle), 0u);
  EXPECT_EQ(FilesOf(bundle.archive).at("ITN/t.itn"), "");
}

}  // namespace
