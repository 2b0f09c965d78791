#include <cstdlib>
#include <string>

#include <gtest/gtest.h>

#include "base/localized_text.h"
#include "formats/text/csv.h"
#include "tests/formats/text/csv_reading.h"
#include "tests/formats/written_bytes.h"
#include "tests/list_builder.h"

namespace {

using namespace csv;

std::string Written(const CGpsPointArray& list, const CCsvLayout& layout = {}) {
  return BytesOf(WriteCsvBody, list, layout);
}

TEST(CsvWriter, WritesTheDefaultPreset) {
  const auto route = MakeList("ignored", MakePoint(48.85, 2.35, "Paris", "lost", 35),
                              MakePoint(-0.0000005, -120.1234565, ""));
  EXPECT_EQ(Written(route),
            "Longitude,Latitude,Name\r\n"
            "2.350000,48.850000,\"Paris\"\r\n"
            "-120.123457,-0.000000,\"\"\r\n");
}

TEST(CsvWriter, WritesADecimalComma) {
  EXPECT_EQ(Written(MakeList("", MakePoint(48.85, 2.35, "Paris")), kInforad),
            "Latitude;Longitude;Name\r\n"
            "48,850000;2,350000;\"Paris\"\r\n");
}

TEST(CsvWriter, UnusedColumnsKeepTheirSeparators) {
  EXPECT_EQ(Written(MakeList("", MakePoint(48.5, 2.5, "a", "b")), kDestinator),
            ",,Longitude,Latitude,,Name,Comment\r\n"
            ",,2.500000,48.500000,,\"a\",\"b\"\r\n");
}

TEST(CsvWriter, WritesEveryColumn) {
  EXPECT_EQ(Written(MakeList("", MakePoint(48.5, 2.5, "a", "", -12.25)), AllColumns()),
            "Latitude,Longitude,Elevation,Name,Comment\r\n"
            "48.500000,2.500000,-12.250000,\"a\",\"\"\r\n");
}

TEST(CsvWriter, AnEmptyListIsAHeader) {
  EXPECT_EQ(Written(CGpsRoute()), "Longitude,Latitude,Name\r\n");
}

TEST(CsvWriter, WithoutColumnsLinesAreEmpty) {
  EXPECT_EQ(Written(MakeList("", MakePoint(1, 2)), {4, 0, 0, 0, 0, 0, false, ".", ","}),
            "\r\n\r\n");
}

TEST(CsvWriter, OfTwoContentsInOneColumnTheLaterStands) {
  EXPECT_EQ(Written(MakeList("", MakePoint(1, 2, "name")), {4, 1, 2, 0, 2, 0, false, ".", ","}),
            "Latitude,Name\r\n1.000000,\"name\"\r\n");
}

TEST(CsvWriter, TextIs8BitAndQuotesAreNotDoubled) {
  const auto route =
      MakeList("", MakePoint(1, 2, "say \"hi\", caf\u00e9 \u0141\U0001F600", "a;b|c=d,e\n\"f\""));
  EXPECT_EQ(Written(route, {4, 0, 0, 0, 1, 2, false, ".", ","}),
            "Name,Comment\r\n\"say \"hi\", caf\xE9 ???\",\"a;b|c=d,e\n\"f\"\"\r\n");
}

TEST(CsvWriter, LabelsAreUtf8InTheCurrentLanguage) {
  SetLanguage(Language::kGerman);
  const std::string german =
      Written(MakeList("", MakePoint(1, 2, "H\u00f6he", "", 3)), AllColumns(".", "\xA7"));
  SetLanguage(Language::kEnglish);
  EXPECT_EQ(german,
            "Breitengrad\xA7L\xC3\xA4ngengrad\xA7H\xC3\xB6he\xA7Name\xA7Kommentar\r\n"
            "1.000000\xA7"
            "2.000000\xA7"
            "3.000000\xA7\"H\xF6he\"\xA7\"\"\r\n");
}

TEST(CsvWriter, SeparatorsMayBeLongOrEmpty) {
  EXPECT_EQ(Written(MakeList("", MakePoint(1.5, 2, "a")), {4, 1, 2, 0, 3, 0, false, "<>", " ; "}),
            "Latitude ; Longitude ; Name\r\n1<>500000 ; 2<>000000 ; \"a\"\r\n");
  EXPECT_EQ(Written(MakeList("", MakePoint(1.5, 2)), {4, 1, 2, 0, 0, 0, false, "", ""}),
            "LatitudeLongitude\r\n15000002000000\r\n");
}

TEST(CsvWriter, TakesSeparatorsFromTheLocale) {
  const char* const former = std::getenv("LC_ALL");
  const std::string kept = former ? former : "";
  setenv("LC_ALL", "C", 1);
  const CCsvLayout layout{kManualCsvPreset, 1, 2, 0, 3, 0, true, "!", "|"};
  const std::string written = Written(MakeList("", MakePoint(1.5, 2, "a")), layout);
  const CGpsRoute route = Parsed("1.5,2,a", layout);
  if (former) {
    setenv("LC_ALL", kept.c_str(), 1);
  } else {
    unsetenv("LC_ALL");
  }
  EXPECT_EQ(written, "Latitude,Longitude,Name\r\n1.500000,2.000000,\"a\"\r\n");
  ASSERT_EQ(route.Count(), 1u);
  EXPECT_EQ(route.points[0], MakePoint(1.5, 2, "a"));
}

}  // namespace
