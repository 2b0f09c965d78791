#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

#include <gtest/gtest.h>

#include "conversion/conversion_context.h"
#include "formats/text/csv.h"
#include "tests/formats/text/csv_reading.h"
#include "tests/list_builder.h"

namespace {

using namespace csv;
using std::string_literals::operator""s;

// The name that a line of the layout longitude, latitude, name gives to its point.
std::string NameOf(std::string_view nameField) {
  const CGpsRoute route = Parsed("1,2," + std::string(nameField));
  return route.Count() == 1 ? route.points[0].name : "no point";
}

// Counts what a reader tells it has passed over.
std::pair<uint64_t, uint64_t> NotesOf(std::string_view bytes, const CCsvLayout& layout = {}) {
  ConversionContext context;
  const ConversionScope scope(context);
  Parsed(bytes, layout);
  return {context.notes.Count(ConversionNote::kLinePassedOver),
          context.notes.Count(ConversionNote::kPointWithoutPosition)};
}

// Lines and columns

TEST(CsvReader, ReadsTheDefaultPreset) {
  const CGpsRoute route = Parsed("2.350000,48.850000,\"Paris\"");
  ASSERT_EQ(route.Count(), 1u);
  EXPECT_EQ(route.points[0].latitude, 48.85);
  EXPECT_EQ(route.points[0].longitude, 2.35);
  EXPECT_EQ(route.points[0].altitude, 0.0);
  EXPECT_EQ(route.points[0].name, "Paris");
  EXPECT_EQ(route.points[0].comment, "");
  EXPECT_EQ(route.points[0].tolerance, kDefaultTolerance);
  EXPECT_EQ(route.name, "");
}

TEST(CsvReader, ReadsEveryColumn) {
  const CGpsRoute route = Parsed("-48.5,-2.25,-12.5,Stop,why\r\n10,20,30,,\n", AllColumns());
  ASSERT_EQ(route.Count(), 2u);
  EXPECT_EQ(route.points[0].latitude, -48.5);
  EXPECT_EQ(route.points[0].longitude, -2.25);
  EXPECT_EQ(route.points[0].altitude, -12.5);
  EXPECT_EQ(route.points[0].name, "Stop");
  EXPECT_EQ(route.points[0].comment, "why");
  EXPECT_EQ(route.points[1].altitude, 30.0);
  EXPECT_EQ(route.points[1].name, "");
  EXPECT_EQ(route.points[1].comment, "");
}

TEST(CsvReader, ReadsTheColumnsOfAPreset) {
  const CGpsRoute route = Parsed("id,x,2.5,48.5,z,Name,Comment,more", kDestinator);
  ASSERT_EQ(route.Count(), 1u);
  EXPECT_EQ(route.points[0], MakePoint(48.5, 2.5, "Name", "Comment"));
}

TEST(CsvReader, OneColumnMayServeTwice) {
  const CCsvLayout layout{kManualCsvPreset, 1, 1, 1, 1, 1, false, ".", ","};
  const CGpsRoute route = Parsed("7.5", layout);
  ASSERT_EQ(route.Count(), 1u);
  EXPECT_EQ(route.points[0], MakePoint(7.5, 7.5, "7.5", "7.5"));
  EXPECT_EQ(route.points[0].altitude, 7.5);
}

TEST(CsvReader, MissingFieldsStayAtTheirDefaults) {
  const CGpsRoute route = Parsed("48.5,2.5\n48.5,2.5,7\n", AllColumns());
  ASSERT_EQ(route.Count(), 2u);
  EXPECT_EQ(route.points[0].altitude, 0.0);
  EXPECT_EQ(route.points[0].name, "");
  EXPECT_EQ(route.points[1].altitude, 7.0);
}

TEST(CsvReader, ALineTooShortForItsLatitudeIsDroppedWithoutALongitude) {
  // Latitude in column 4, longitude in column 3.
  EXPECT_EQ(Parsed("a,b", kDestinator).Count(), 0u);
  EXPECT_EQ(Parsed("", kDestinator).Count(), 0u);
  // With a longitude the point has a position, be it on the equator.
  const CGpsRoute route = Parsed("a,b,2.5", kDestinator);
  ASSERT_EQ(route.Count(), 1u);
  EXPECT_EQ(route.points[0].latitude, 0.0);
  EXPECT_EQ(route.points[0].longitude, 2.5);
}

TEST(CsvReader, NoColumnForTheLatitudeLeavesItAtZero) {
  const CCsvLayout layout{kManualCsvPreset, 0, 1, 0, 2, 0, false, ".", ","};
  const CGpsRoute route = Parsed("2.5,a\n0,b\n", layout);
  ASSERT_EQ(route.Count(), 1u);
  EXPECT_EQ(route.points[0], MakePoint(0, 2.5, "a"));
}

TEST(CsvReader, WithoutAnyColumnThereIsNoPoint) {
  const CCsvLayout layout{kManualCsvPreset, 0, 0, 0, 0, 0, false, ".", ","};
  EXPECT_EQ(Parsed("1,2,3\n4,5,6\n", layout).Count(), 0u);
}

TEST(CsvReader, ColumnsBeyondEveryLineAreNone) {
  const CCsvLayout layout{kManualCsvPreset, 1, 2, 0xFFFFFFFF, 0x80000000, 5, false, ".", ","};
  const CGpsRoute route = Parsed("1,2,3,4", layout);
  ASSERT_EQ(route.Count(), 1u);
  EXPECT_EQ(route.points[0], MakePoint(1, 2));
}

TEST(CsvReader, AHeaderLineDisappearsByItself) {
  const CGpsRoute route = Parsed("Longitude,Latitude,Name\r\n2.5,48.5,a\r\n");
  ASSERT_EQ(route.Count(), 1u);
  EXPECT_EQ(route.points[0].name, "a");
}

TEST(CsvReader, APointAtZeroZeroDisappears) {
  EXPECT_EQ(Parsed("0,0,a\n0.0,-0,b\n0,0.000001,c\n").Count(), 1u);
}

TEST(CsvReader, TakesEveryLineEnd) {
  for (const char* const bytes :
       {"1,2,a\n3,4,b\n", "1,2,a\r\n3,4,b\r\n", "1,2,a\r\n3,4,b", "1,2,a\r\r\n\r\n\n3,4,b\r\r"}) {
    const CGpsRoute route = Parsed(bytes);
    ASSERT_EQ(route.Count(), 2u) << bytes;
    EXPECT_EQ(route.points[0].name, "a") << bytes;
    EXPECT_EQ(route.points[1].name, "b") << bytes;
  }
}

// Separators and quotes

TEST(CsvReader, SeparatorsInsideQuotesDoNotSplit) {
  const CGpsRoute route = Parsed("48,5;\"2,5\";\"a;b\"", kInforad);
  ASSERT_EQ(route.Count(), 1u);
  EXPECT_EQ(route.points[0], MakePoint(48.5, 2.5, "a;b"));
}

TEST(CsvReader, AnOddNumberOfQuotesAnywhereInTheFieldHoldsItTogether) {
  EXPECT_EQ(NameOf("a\"b,c\"d"), "a\"b,c\"d");
  EXPECT_EQ(NameOf("\"a\"\"b,c\""), "a\"\"b,c");
  EXPECT_EQ(NameOf("\"\"a,b"), "a");
  EXPECT_EQ(NameOf("\"\"\"a,b"), "a,b");
}

TEST(CsvReader, TheCountOfQuotesBeginsAnewWithEachField) {
  const CGpsRoute route =
      Parsed("1,\"2\",a\"b,c\"d,\"e,f\"", {kManualCsvPreset, 1, 2, 0, 3, 4, false, ".", ","});
  ASSERT_EQ(route.Count(), 1u);
  EXPECT_EQ(route.points[0].name, "a\"b,c\"d");
  EXPECT_EQ(route.points[0].comment, "e,f");
}

TEST(CsvReader, AQuoteThatStaysOpenTakesTheRestOfItsLine) {
  const CGpsRoute route = Parsed("1,2,\"a,b,c\n3,4,d\n");
  ASSERT_EQ(route.Count(), 2u);
  EXPECT_EQ(route.points[0].name, "a,b,c");
  EXPECT_EQ(route.points[1].name, "d");
}

TEST(CsvReader, EachCharacterOfTheSeparatorSeparates) {
  const CGpsRoute route = Parsed("1;2|7\tname/comment;more", AllColumns(".", ";|\t/"));
  ASSERT_EQ(route.Count(), 1u);
  EXPECT_EQ(route.points[0], MakePoint(1, 2, "name", "comment"));
  EXPECT_EQ(route.points[0].altitude, 7.0);
}

TEST(CsvReader, WithoutASeparatorALineIsOneField) {
  const CGpsRoute route = Parsed("1,2", {kManualCsvPreset, 1, 2, 0, 0, 0, false, ".", ""});
  ASSERT_EQ(route.Count(), 1u);
  EXPECT_EQ(route.points[0], MakePoint(1, 0));
}

TEST(CsvReader, AQuoteAmongTheSeparatorsStaysAQuote) {
  const CGpsRoute route = Parsed("1,\"2\",\"a,b\"", {0, 2, 1, 0, 3, 0, false, ".", "\","});
  ASSERT_EQ(route.Count(), 1u);
  EXPECT_EQ(route.points[0].name, "a,b");
}

TEST(CsvReader, CleansTheEndsOfFields) {
  EXPECT_EQ(NameOf(" \" a b \" \r"), "a b");
  EXPECT_EQ(NameOf("\"\"quoted\"\""), "quoted");
  EXPECT_EQ(NameOf("\t a\t"), "\t a\t");
  EXPECT_EQ(NameOf("\ra"), "\ra");
  EXPECT_EQ(NameOf("a\r\r"), "a");
  EXPECT_EQ(NameOf("\" \""), "");
  EXPECT_EQ(NameOf("a\rb"), "a\rb");
}

// Numbers

TEST(CsvReader, ReplacesEveryDecimalSeparator) {
  // "1,5,9" becomes "1.5.9", of which "1.5" is read.
  const CGpsRoute route = Parsed("1,5,9;2,25;x", kInforad);
  ASSERT_EQ(route.Count(), 1u);
  EXPECT_EQ(route.points[0], MakePoint(1.5, 2.25, "x"));
}

TEST(CsvReader, TheDecimalSeparatorMayBeLong) {
  const CGpsRoute route = Parsed("1<>5<>9;2<2", {4, 1, 2, 0, 0, 0, false, "<>", ";"});
  ASSERT_EQ(route.Count(), 1u);
  EXPECT_EQ(route.points[0], MakePoint(1.5, 2));
}

TEST(CsvReader, PointsStayDecimalPointsBesideAnotherSeparator) {
  const CGpsRoute route = Parsed("1.5;2,5", kInforad);
  ASSERT_EQ(route.Count(), 1u);
  EXPECT_EQ(route.points[0], MakePoint(1.5, 2.5));
}

TEST(CsvReader, WithoutADecimalSeparatorNumbersAreReadAsTheyAre) {
  const CGpsRoute route = Parsed("1.5;2,5", {4, 1, 2, 0, 0, 0, false, "", ";"});
  ASSERT_EQ(route.Count(), 1u);
  EXPECT_EQ(route.points[0], MakePoint(1.5, 2));
}

TEST(CsvReader, ReadsTheNumberAtTheStartOfAField) {
  const auto altitudeOf = [](const std::string& field) {
    return Parsed("1,2," + field, AllColumns()).points.at(0).altitude;
  };
  EXPECT_EQ(altitudeOf("12.5 m"), 12.5);
  EXPECT_EQ(altitudeOf("0x12.5"), 12.5);
  EXPECT_EQ(altitudeOf("\"0x-3\""), -3.0);
  EXPECT_EQ(altitudeOf("\t 7"), 7.0);
  EXPECT_EQ(altitudeOf("+7e1"), 70.0);
  EXPECT_EQ(altitudeOf(".5"), 0.5);
  EXPECT_EQ(altitudeOf("m 12"), 0.0);
  EXPECT_EQ(altitudeOf("--1"), 0.0);
  EXPECT_EQ(altitudeOf("nan"), 0.0);
  EXPECT_EQ(altitudeOf("inf"), 0.0);
  EXPECT_EQ(altitudeOf(""), 0.0);
}

// Encodings

TEST(CsvReader, TextWithoutAMarkIs8Bit) {
  const CGpsRoute route = Parsed("1,2,Caf\xE9\n3,4,Caf\xC3\xA9\n");
  ASSERT_EQ(route.Count(), 2u);
  EXPECT_EQ(route.points[0].name, "Caf\xC3\xA9");
  EXPECT_EQ(route.points[1].name, "Caf\xC3\x83\xC2\xA9");
}

TEST(CsvReader, TextWithAMarkIsUtf8) {
  const CGpsRoute route = Parsed(
      "\xEF\xBB\xBF"
      "1,2,Caf\xC3\xA9 \xF0\x9F\x98\x80\n3,4,a\xFF"
      "b\n");
  ASSERT_EQ(route.Count(), 2u);
  EXPECT_EQ(route.points[0].longitude, 1.0);
  EXPECT_EQ(route.points[0].name, "Caf\u00e9 \U0001F600");
  EXPECT_EQ(route.points[1].name, "a\uFFFDb");
}

// UTF-16 of `text`, with or without its mark.
std::string Utf16(std::u16string_view text, bool bigEndian, bool mark) {
  std::string bytes;
  const auto append = [&bytes, bigEndian](char16_t unit) {
    const char low = static_cast<char>(unit & 0xFF);
    const char high = static_cast<char>(unit >> 8);
    bytes += bigEndian ? high : low;
    bytes += bigEndian ? low : high;
  };
  if (mark) append(u'\uFEFF');
  for (const char16_t unit : text) append(unit);
  return bytes;
}

TEST(CsvReader, ReadsUtf16BothWays) {
  for (const bool bigEndian : {false, true}) {
    for (const bool mark : {false, true}) {
      // A guessed encoding skips the size of its mark, which here is the first digit.
      const std::u16string_view text = mark ? u"1,2,\u0141\u00f3d\u017a \U0001F600\r\n3,4,b"
                                            : u"51,2,\u0141\u00f3d\u017a \U0001F600\r\n3,4,b";
      const CGpsRoute route = Parsed(Utf16(text, bigEndian, mark));
      ASSERT_EQ(route.Count(), 2u);
      EXPECT_EQ(route.points[0], MakePoint(2, 1, "\u0141\u00f3d\u017a \U0001F600"));
      EXPECT_EQ(route.points[1], MakePoint(4, 3, "b"));
    }
  }
}

TEST(CsvReader, SeparatorsAbove7FAreCharactersInEveryEncoding) {
  // "§" separates columns, "·" is the decimal mark; "ç" begins with the same byte in UTF-8.
  const CCsvLayout layout{kManualCsvPreset, 1, 2, 0, 3, 0, false, "\xB7", "\xA7"};
  const CGpsPoint expected = MakePoint(1.5, 2, "\u00a5\u00e7");
  const CGpsRoute narrow = Parsed(
      "1\xB7"
      "5\xA7"
      "2\xA7\xA5\xE7\xA7"
      "x",
      layout);
  ASSERT_EQ(narrow.Count(), 1u);
  EXPECT_EQ(narrow.points[0], expected);
  const CGpsRoute utf8 = Parsed(
      "\xEF\xBB\xBF"
      "1\u00b7"
      "5\u00a7"
      "2\u00a7\u00a5\u00e7\u00a7x",
      layout);
  ASSERT_EQ(utf8.Count(), 1u);
  EXPECT_EQ(utf8.points[0], expected);
  const CGpsRoute utf16 =
      Parsed(Utf16(u"1\u00b75\u00a72\u00a7\u00a5\u00e7\u00a7x", true, true), layout);
  ASSERT_EQ(utf16.Count(), 1u);
  EXPECT_EQ(utf16.points[0], expected);
}

// What is told

TEST(CsvReader, TellsOfLinesThatFitNot) {
  using Notes = std::pair<uint64_t, uint64_t>;
  EXPECT_EQ(NotesOf("1,2,a\n3,4,b\n"), Notes(0, 0));
  EXPECT_EQ(NotesOf("Longitude,Latitude,Name\n1,2,a\n"), Notes(0, 0));
  EXPECT_EQ(NotesOf("Longitude,Latitude,Name\nx,y,z\n1,2,a\nshort\n"), Notes(2, 0));
  EXPECT_EQ(NotesOf("1,2,a\nLongitude,Latitude,Name\n"), Notes(1, 0));
  EXPECT_EQ(NotesOf("0,0,nowhere\n1,2,a\n0,,b\n"), Notes(0, 2));
  EXPECT_EQ(NotesOf("\n  \r\n\"\"\n,,,,\n, \" ,\n1,2,a\n"), Notes(0, 0));
  EXPECT_EQ(NotesOf("\n,,\nheader\n1,2,a\nfooter"), Notes(1, 0));
  EXPECT_EQ(NotesOf("\xEF\xBB\xBFheader\n1\u00a7\u00a7\n\u00a7 \u00a7\n\u00a5",
                    {4, 1, 2, 0, 0, 0, false, ".", "\xA7"}),
            Notes(1, 0));
}

// Odd and hostile bytes

TEST(CsvReader, GivesAnEmptyRouteForNoTable) {
  for (const std::string& bytes : {""s, "x"s, "\0"s, "1"s, "\"\n"s, "\xEF\xBB\xBF"s, "\xFF\xFE"s,
                                   "\x89PNG\r\n\x1A\n"s, "no table\n"s})
    EXPECT_EQ(Parsed(bytes).Count(), 0u);
}

TEST(CsvReader, KeepsZeroBytesInNames) { EXPECT_EQ(NameOf("a\0b"s), "a\0b"s); }

TEST(CsvReader, TakesASampleCutAnywhere) {
  const std::string sample = "Longitude,Latitude,Name\r\n2.5,48.5,\"Par,is\"\r\n-1.25,3,b\r\n";
  for (size_t length = 0; length <= sample.size(); ++length) {
    const CGpsRoute route = Parsed(sample.substr(0, length));
    // A first digit makes a point: the "2" behind 25 bytes of header, the "1" behind 45 bytes.
    EXPECT_EQ(route.Count(), length < 26 ? 0u : length < 46 ? 1u : 2u) << length;
  }
}

TEST(CsvReader, TakesAQuoteThatNeverCloses) {
  const std::string bytes = "1,2,\"" + std::string(10'000'000, ',');
  const CGpsRoute route = Parsed(bytes);
  ASSERT_EQ(route.Count(), 1u);
  EXPECT_EQ(route.points[0].name.size(), 10'000'000u);
}

TEST(CsvReader, TakesMillionsOfColumns) {
  const CCsvLayout last{kManualCsvPreset, 1, 2, 0, 5'000'001, 0, false, ".", ","};
  const CGpsRoute route = Parsed("1,2" + std::string(4'999'999, ',') + "last", last);
  ASSERT_EQ(route.Count(), 1u);
  EXPECT_EQ(route.points[0].name, "last");
  EXPECT_EQ(Parsed(std::string(5'000'000, ',')).Count(), 0u);
}

TEST(CsvReader, TakesALongNumber) {
  const CGpsRoute route = Parsed("1;2," + std::string(1'000'000, '5') + std::string(1'000'000, ','),
                                 {4, 1, 2, 0, 0, 0, false, ",", ";"});
  ASSERT_EQ(route.Count(), 1u);
  EXPECT_NEAR(route.points[0].longitude, 2.5555555555555555, 1e-15);
}

}  // namespace
