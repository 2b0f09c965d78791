#include "formats/text/csv.h"

#include <cstdlib>
#include <filesystem>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/conversion_notes.h"
#include "core/csv_layout_question.h"
#include "core/localized_text.h"
#include "core/status.h"
#include "tests/formats/written_bytes.h"
#include "tests/list_builder.h"
#include "tests/settings_home.h"
#include "tests/temporary_folder.h"

namespace {

using std::string_literals::operator""s;

const CCsvLayout kInforad = CsvPresets()[1].layout;
const CCsvLayout kDestinator = CsvPresets()[3].layout;

// Latitude, longitude, elevation, name and comment in columns 1 to 5.
CCsvLayout AllColumns(const char* decimal = ".", const char* column = ",") {
  return {kManualCsvPreset, 1, 2, 3, 4, 5, false, decimal, column};
}

CGpsRoute Parsed(std::string_view bytes, const CCsvLayout& layout = {}) {
  PointLists lists;
  EXPECT_EQ(ParseCsv(bytes, lists, layout), kStatusSuccess);
  EXPECT_EQ(lists.size(), 1u);
  EXPECT_EQ(lists[0]->GetKind(), kKindRoute);
  return CGpsRoute(*lists[0]);
}

// The name that a line of the layout longitude, latitude, name gives to its point.
std::string NameOf(std::string_view nameField) {
  const CGpsRoute route = Parsed("1,2," + std::string(nameField));
  return route.Count() == 1 ? route.points[0].name : "no point";
}

std::string Written(const CGpsPointArray& list, const CCsvLayout& layout = {}) {
  return BytesOf(WriteCsvBody, list, layout);
}

// Counts what a reader tells it has passed over.
std::pair<uint64_t, uint64_t> NotesOf(std::string_view bytes, const CCsvLayout& layout = {}) {
  const ConversionNotes notes;
  Parsed(bytes, layout);
  return {notes.Count(EConversionNote::kLinePassedOver),
          notes.Count(EConversionNote::kPointWithoutPosition)};
}

// Reading: lines and columns

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

// Reading: separators and quotes

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

// Reading: numbers

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

// Reading: encodings

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

// Reading: what is told

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

// Reading: odd and hostile bytes

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

// Writing

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
  SetLanguage(ELanguage::kGerman);
  const std::string german =
      Written(MakeList("", MakePoint(1, 2, "H\u00f6he", "", 3)), AllColumns(".", "\xA7"));
  SetLanguage(ELanguage::kEnglish);
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

// Files and layouts

class CsvFile : public testing::Test {
 protected:
  ~CsvFile() override {
    SetCsvLayoutAsker(nullptr);
    SetCsvLayoutForRun(ECsvUse::kRead, std::nullopt);
    SetCsvLayoutForRun(ECsvUse::kWrite, std::nullopt);
  }

  SettingsHome m_home;
  TemporaryFolder m_folder;
};

TEST_F(CsvFile, SilentUsesTheStoredLayouts) {
  storage::Storage user = storage::OpenUserStorage();
  StoreCsvLayout(user, ECsvUse::kRead, kInforad);
  StoreCsvLayout(user, ECsvUse::kWrite, kDestinator);
  bool wasAsked = false;
  SetCsvLayoutAsker([&wasAsked](ECsvUse, CCsvLayout&) { return wasAsked = true; });

  PointLists lists;
  EXPECT_EQ(ReadCsv(m_folder.Put("a.csv", "48,5;2,5;a"), lists, true), kStatusSuccess);
  ASSERT_EQ(lists.size(), 1u);
  ASSERT_EQ(lists[0]->Count(), 1u);
  EXPECT_EQ(lists[0]->points[0], MakePoint(48.5, 2.5, "a"));
  EXPECT_EQ(WriteCsv(m_folder.WidePathTo("b.csv"), *lists[0], 0, true), kStatusSuccess);
  EXPECT_EQ(m_folder.Get("b.csv"),
            ",,Longitude,Latitude,,Name,Comment\r\n,,2.500000,48.500000,,\"a\",\"\"\r\n");
  EXPECT_FALSE(wasAsked);
}

TEST_F(CsvFile, TheUserIsAskedForTheLayout) {
  SetCsvLayoutAsker([](ECsvUse use, CCsvLayout& layout) {
    layout = use == ECsvUse::kRead ? kInforad : AllColumns(".", ";");
    return true;
  });
  PointLists lists;
  EXPECT_EQ(ReadCsv(m_folder.Put("a.csv", "48,5;2,5;a"), lists, false), kStatusSuccess);
  ASSERT_EQ(lists[0]->Count(), 1u);
  EXPECT_EQ(WriteCsv(m_folder.WidePathTo("b.csv"), *lists[0], 0, false), kStatusSuccess);
  EXPECT_EQ(m_folder.Get("b.csv"),
            "Latitude;Longitude;Elevation;Name;Comment\r\n"
            "48.500000;2.500000;0.000000;\"a\";\"\"\r\n");
}

TEST_F(CsvFile, CancellingTheQuestionEndsBoth) {
  SetCsvLayoutAsker([](ECsvUse, CCsvLayout&) { return false; });
  PointLists lists;
  EXPECT_EQ(ReadCsv(m_folder.Put("a.csv", "1,2,a"), lists, false), kStatusCancelled);
  EXPECT_TRUE(lists.empty());
  EXPECT_EQ(WriteCsv(m_folder.WidePathTo("b.csv"), CGpsRoute(), 0, false), kStatusCancelled);
  EXPECT_FALSE(m_folder.Has("b.csv"));
}

TEST_F(CsvFile, ALayoutForTheRunGoesBeforeTheStoredOne) {
  SetCsvLayoutForRun(ECsvUse::kRead, kInforad);
  PointLists lists;
  EXPECT_EQ(ReadCsv(m_folder.Put("a.csv", "48,5;2,5;a"), lists, true), kStatusSuccess);
  ASSERT_EQ(lists[0]->Count(), 1u);
  EXPECT_EQ(WriteCsv(m_folder.WidePathTo("b.csv"), *lists[0], 0, true), kStatusSuccess);
  EXPECT_EQ(m_folder.Get("b.csv"), "Longitude,Latitude,Name\r\n2.500000,48.500000,\"a\"\r\n");
  EXPECT_FALSE(m_home.HasFile());
}

TEST_F(CsvFile, AFileThatCannotBeOpenedHasThePlatformsCode) {
  PointLists lists;
  EXPECT_EQ(ReadCsv(m_folder.WidePathTo("none.csv"), lists, true), kStatusFileNotFound);
  EXPECT_EQ(ReadCsv(WidePath(m_folder.Path().string()), lists, true), kStatusAccessDenied);
  EXPECT_TRUE(lists.empty());
  EXPECT_EQ(WriteCsv(m_folder.WidePathTo("none/b.csv"), CGpsRoute(), 0, true), kStatusFileNotFound);
  EXPECT_EQ(WriteCsv(WidePath(m_folder.Path().string()), CGpsRoute(), 0, true),
            kStatusAccessDenied);
}

TEST_F(CsvFile, AnEmptyFileIsAnEmptyRoute) {
  PointLists lists;
  EXPECT_EQ(ReadCsv(m_folder.Put("a.csv", ""), lists, true), kStatusSuccess);
  ASSERT_EQ(lists.size(), 1u);
  EXPECT_EQ(lists[0]->Count(), 0u);
}

TEST_F(CsvFile, AnAbsurdLayoutWritesNothing) {
  CCsvLayout layout;
  layout.commentColumn = kMostCsvColumns + 1;
  SetCsvLayoutForRun(ECsvUse::kWrite, layout);
  EXPECT_EQ(WriteCsv(m_folder.WidePathTo("a.csv"), CGpsRoute(), 0, true), kStatusInvalidParameter);
  EXPECT_FALSE(m_folder.Has("a.csv"));
  layout.commentColumn = kMostCsvColumns;
  SetCsvLayoutForRun(ECsvUse::kWrite, layout);
  EXPECT_EQ(WriteCsv(m_folder.WidePathTo("a.csv"), CGpsRoute(), 0, true), kStatusSuccess);
  EXPECT_EQ(m_folder.Get("a.csv"),
            "Longitude,Latitude,Name" + std::string(997, ',') + "Comment\r\n");
}

TEST_F(CsvFile, RoundTripsInEveryPreset) {
  const auto route = MakeList("", MakePoint(48.85661, 2.35222, "Paris, \"centre\" of all"),
                              MakePoint(-33.868820, -151.209290, "Caf\u00e9; 2|3"),
                              MakePoint(0, 0.000001, ""), MakePoint(90, 180, "\"quoted\""));
  for (const CsvPreset& preset : CsvPresets().first(kManualCsvPreset)) {
    SetCsvLayoutForRun(ECsvUse::kRead, preset.layout);
    SetCsvLayoutForRun(ECsvUse::kWrite, preset.layout);
    PointLists lists;
    ASSERT_EQ(WriteCsv(m_folder.WidePathTo("a.csv"), route, 0, true), kStatusSuccess);
    ASSERT_EQ(ReadCsv(m_folder.WidePathTo("a.csv"), lists, true), kStatusSuccess);
    ASSERT_EQ(lists[0]->Count(), 4u) << preset.name;
    for (size_t i = 0; i < 3; ++i) {
      EXPECT_EQ(lists[0]->points[i].name, route.points[i].name) << preset.name;
      EXPECT_EQ(lists[0]->points[i].latitude, route.points[i].latitude) << preset.name;
      EXPECT_EQ(lists[0]->points[i].longitude, route.points[i].longitude) << preset.name;
    }
    // The name's own outer quotes go with those of the format.
    EXPECT_EQ(lists[0]->points[3].name, "quoted") << preset.name;
  }
}

TEST_F(CsvFile, TheExampleIsATrip) {
  PointLists lists;
  const std::string path = std::string(CORVANE_SOURCE_FOLDER) + "/examples/pyrenees_passes.csv";
  ASSERT_EQ(ReadCsv(WidePath(path), lists, true), kStatusSuccess);
  ASSERT_EQ(lists[0]->Count(), 9u);
  EXPECT_EQ(lists[0]->points[0], MakePoint(43.163106, -1.237322, "Saint-Jean-Pied-de-Port"));
  EXPECT_EQ(lists[0]->points[4], MakePoint(42.908333, 0.145000, "Col du Tourmalet"));
  EXPECT_EQ(lists[0]->points[8].name, "Collioure, port de p\u00eache");
}

}  // namespace
