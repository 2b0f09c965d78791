#include "formats/text/copilot.h"

#include <fstream>
#include <iterator>
#include <limits>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "core/conversion_notes.h"
#include "core/product.h"
#include "core/status.h"
#include "core/text.h"
#include "net/json.h"
#include "tests/formats/written_bytes.h"
#include "tests/list_builder.h"
#include "tests/temporary_folder.h"

namespace {

using std::string_literals::operator""s;

// Latin-1 text in UTF-16, in either byte order.
std::string Utf16(std::string_view text, bool bigEndian = false) {
  std::string units;
  for (const char c : text) {
    if (bigEndian) units.push_back('\0');
    units.push_back(c);
    if (!bigEndian) units.push_back('\0');
  }
  return units;
}

std::string Utf32(std::string_view text, bool bigEndian) {
  std::string units;
  for (const char c : text) {
    if (bigEndian) units.append(3, '\0');
    units.push_back(c);
    if (!bigEndian) units.append(3, '\0');
  }
  return units;
}

PointLists Keyed(std::string_view bytes) {
  PointLists lists;
  EXPECT_EQ(ParseCoPilot6(bytes, lists), kStatusSuccess);
  EXPECT_EQ(lists.size(), 1u);
  return lists;
}

// A stop with these lines between its first and its last.
std::string Stop(std::string_view lines) {
  return "Start Stop=Stop 3\r\n" + std::string(lines) + "End Stop\r\n";
}

std::string NameOfStop(std::string_view lines) {
  const PointLists lists = Keyed(Stop(lines));
  EXPECT_EQ(lists[0]->Count(), 1u);
  return lists[0]->At(0).name;
}

// The code with which a document is refused; `lists` is what it left.
int CodeOf(std::string_view document, PointLists& lists) {
  try {
    ParseCoPilot10(document, lists);
  } catch (const CJsonException& failure) {
    return failure.code;
  }
  return 0;
}

std::string StopInfo(std::string_view members) {
  return "{\"StopInfo\":{" + std::string(members) + "}}";
}

std::string TripOf(std::string_view stops) {
  return R"({"Trip":{"Name":"T","Stops":[)" + std::string(stops) + "]}}";
}

std::string ContentOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

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

constexpr std::string_view kKeyedSample =
    "Data Version=6.0.0.27\r\n"
    "Start Trip=Tour\r\n"
    "TollClosed=0\r\n"
    "End Trip\r\n"
    "Start Stop=Stop 0\r\n"
    "Longitude=2352220\r\n"
    "Latitude=48856610\r\n"
    "City=Paris\r\n"
    "End Stop\r\n"
    "\r\n"
    "Start Stop=Stop 1\r\n"
    "Longitude=-4500000\r\n"
    "Latitude=-500001\r\n"
    "Address=Caf\xE9\r\n"
    "Show=1\r\n"
    "End Stop\r\n";

void ExpectSample(const PointLists& lists) {
  ASSERT_EQ(lists.size(), 1u);
  EXPECT_EQ(lists[0]->GetKind(), kKindRoute);
  EXPECT_EQ(lists[0]->name, "Tour");
  ASSERT_EQ(lists[0]->Count(), 2u);
  const CGpsPoint& paris = lists[0]->At(0);
  EXPECT_EQ(paris.longitude, 2.35222);
  EXPECT_EQ(paris.latitude, 48.85661);
  EXPECT_EQ(paris.name, "Paris");
  EXPECT_EQ(paris.comment, "");
  EXPECT_EQ(paris.altitude, 0.0);
  EXPECT_EQ(paris.tolerance, kDefaultTolerance);
  EXPECT_EQ(lists[0]->At(1).longitude, -4.5);
  EXPECT_EQ(lists[0]->At(1).latitude, -0.500001);
  EXPECT_EQ(lists[0]->At(1).name, "Caf\u00e9");
}

TEST(CoPilot6Reader, ReadsEightBitText) { ExpectSample(Keyed(kKeyedSample)); }

TEST(CoPilot6Reader, ReadsEveryMarkedEncoding) {
  ExpectSample(Keyed("\xEF\xBB\xBF" + WidenToUtf8(kKeyedSample)));
  ExpectSample(Keyed("\xFF\xFE" + Utf16(kKeyedSample)));
  ExpectSample(Keyed("\xFE\xFF" + Utf16(kKeyedSample, true)));
  ExpectSample(Keyed("\xFF\xFE\x00\x00"s + Utf32(kKeyedSample, false)));
  ExpectSample(Keyed("\x00\x00\xFE\xFF"s + Utf32(kKeyedSample, true)));
}

TEST(CoPilot6Reader, GuessesTheEncodingWithoutAMark) {
  // A guess skips as many bytes as a mark would take: the first character goes, and the version
  // line that it stands in is passed over anyway.
  ExpectSample(Keyed(Utf16(kKeyedSample)));
  ExpectSample(Keyed(Utf16(kKeyedSample, true)));
  ExpectSample(Keyed(Utf32(kKeyedSample, false)));
  ExpectSample(Keyed(Utf32(kKeyedSample, true)));
}

TEST(CoPilot6Reader, KeepsCharactersOfAllPlanes) {
  const PointLists lists = Keyed("\xEF\xBB\xBFStart Trip=\u0416\n" + Stop("City=\U0001F600\n"));
  EXPECT_EQ(lists[0]->name, "\u0416");
  EXPECT_EQ(lists[0]->At(0).name, "\U0001F600");
  // U+1F600 as D83D DE00, then half of a pair
  const PointLists wide =
      Keyed("\xFF\xFE" + Utf16("Start Trip=") + "\x3D\xD8\x00\xDE\x3D\xD8"s + Utf16("\r\n"));
  EXPECT_EQ(wide[0]->name, "\U0001F600\uFFFD");
}

TEST(CoPilot6Reader, ReadsBytesThatAreNoUtf8) {
  const PointLists lists = Keyed("\xEF\xBB\xBFStart Trip=a\xC3=b\n");
  EXPECT_EQ(lists[0]->name, "a\uFFFD");
}

TEST(CoPilot6Reader, NamesStopsAfterTheirTexts) {
  EXPECT_EQ(NameOfStop("Address=Rue X\nZip=75001\nCity=Paris\nState=IdF\n"),
            "Rue X, 75001 Paris, IdF");
  EXPECT_EQ(NameOfStop("State=IdF\nCity=Paris\nZip=75001\nAddress=Rue X\n"),
            "Rue X, 75001 Paris, IdF");
  EXPECT_EQ(NameOfStop("Zip=75001\nCity=Paris\n"), "75001 Paris");
  EXPECT_EQ(NameOfStop("Address=Rue X\nCity=Paris\n"), "Rue X Paris");
  EXPECT_EQ(NameOfStop("Address=Rue X\nState=IdF\n"), "Rue X, IdF");
  EXPECT_EQ(NameOfStop("City=Paris\nState=IdF\n"), "Paris, IdF");
  EXPECT_EQ(NameOfStop("State=IdF\n"), "IdF");
  EXPECT_EQ(NameOfStop("Zip=75001\n"), "75001");
  EXPECT_EQ(NameOfStop("City=Paris\nCity=Lyon\n"), "Lyon");
}

TEST(CoPilot6Reader, AStopWithoutTextsIsNamedByItsFirstLine) {
  EXPECT_EQ(NameOfStop(""), "Stop 3");
  EXPECT_EQ(NameOfStop("Longitude=1\nAddress=\nZip=\nCity\nState=\n"), "Stop 3");
  EXPECT_EQ(Keyed("Start Stop\nEnd Stop\n")[0]->At(0).name, "");
}

TEST(CoPilot6Reader, NothingOfAStopLivesOnInTheNext) {
  const PointLists lists = Keyed(Stop("Longitude=1000000\nLatitude=2000000\nAddress=A\nZip=Z\n"
                                      "City=C\nState=S\n") +
                                 "Start Stop=Stop 4\nEnd Stop\n");
  ASSERT_EQ(lists[0]->Count(), 2u);
  EXPECT_EQ(lists[0]->At(0).name, "A, Z C, S");
  EXPECT_TRUE(lists[0]->At(1).IsNull());
  EXPECT_EQ(lists[0]->At(1).name, "Stop 4");
}

TEST(CoPilot6Reader, LooksAtTheFirstFieldBehindTheKeyOnly) {
  const PointLists lists = Keyed("Start Trip=a=b\n" + Stop("City=x=y=z\nLongitude=5000000=7\n"));
  EXPECT_EQ(lists[0]->name, "a");
  EXPECT_EQ(lists[0]->At(0).name, "x");
  EXPECT_EQ(lists[0]->At(0).longitude, 5.0);
}

TEST(CoPilot6Reader, CutsBlanksAndReturnsAtTheEndOfLines) {
  const PointLists lists = Keyed(
      "Start Trip= a  \r \r\nStart Stop=s\n  \r\n\nCity= Paris \r\nLatitude= 7000000 \nEnd Stop  ");
  EXPECT_EQ(lists[0]->name, " a");
  ASSERT_EQ(lists[0]->Count(), 1u);
  EXPECT_EQ(lists[0]->At(0).name, " Paris");
  EXPECT_EQ(lists[0]->At(0).latitude, 7.0);
  EXPECT_EQ(Keyed("Start Trip=a\t\n")[0]->name, "a\t");
}

TEST(CoPilot6Reader, TakesKeysExactly) {
  const PointLists lists =
      Keyed("start trip=a\n Start Trip=b\nStart Trip =c\nstart stop=d\n" +
            Stop("city=e\nLONGITUDE=1\n Latitude=1\nend stop\nCountry=f\nName=g\n"));
  EXPECT_EQ(lists[0]->name, "");
  ASSERT_EQ(lists[0]->Count(), 1u);
  EXPECT_EQ(lists[0]->At(0).name, "Stop 3");
  EXPECT_TRUE(lists[0]->At(0).IsNull());
}

TEST(CoPilot6Reader, ReadsHexadecimalBehindItsMark) {
  // 0x23E45C = 2352220
  const PointLists lists = Keyed(Stop("Longitude=0x23E45C\nLatitude=48x\n") +
                                 Stop("Longitude=east\nLatitude=99999999999\n"));
  EXPECT_EQ(lists[0]->At(0).longitude, 2.35222);
  EXPECT_EQ(lists[0]->At(0).latitude, 0.000048);
  EXPECT_EQ(lists[0]->At(1).longitude, 0.0);
  EXPECT_EQ(lists[0]->At(1).latitude, 2147.483647);
}

TEST(CoPilot6Reader, HexadecimalNumbersAreReadInWideTextToo) {
  const PointLists lists = Keyed("\xFF\xFE" + Utf16(Stop("Longitude=0x10\n")));
  EXPECT_EQ(lists[0]->At(0).longitude, 0.000016);
}

TEST(CoPilot6Reader, PassesOverKeysOutOfPlace) {
  const ConversionNotes notes;
  const PointLists lists = Keyed(
      "City=lost\nLongitude=5\nEnd Stop\nStart Trip=first\nStart Trip=second\n"
      "Start Stop=one\nStart Stop=two\nStart Trip=third\nEnd Trip\nCity=C\nEnd Stop\nEnd Stop\n");
  EXPECT_EQ(lists[0]->name, "second");
  ASSERT_EQ(lists[0]->Count(), 1u);
  EXPECT_EQ(lists[0]->At(0).name, "C");
  EXPECT_EQ(lists[0]->At(0).longitude, 0.0);
  // Two ends without a stop and a stop inside another.
  EXPECT_EQ(notes.Count(EConversionNote::kLinePassedOver), 3u);
}

TEST(CoPilot6Reader, AStopInsideAnotherKeepsTheOuterName) {
  EXPECT_EQ(NameOfStop("Start Stop=inner\n"), "Stop 3");
}

TEST(CoPilot6Reader, DropsAStopThatDoesNotEndAndTellsSo) {
  const ConversionNotes notes;
  EXPECT_EQ(Keyed(Stop("") + "Start Stop=x\nCity=y\n")[0]->Count(), 1u);
  EXPECT_EQ(notes.Count(EConversionNote::kLinePassedOver), 1u);
}

TEST(CoPilot6Reader, TellsNothingOfARegularFile) {
  const ConversionNotes notes;
  Keyed(kKeyedSample);
  EXPECT_EQ(notes.Count(EConversionNote::kLinePassedOver), 0u);
}

TEST(CoPilot6Reader, TakesFilesCutAnywhere) {
  const size_t firstEnd = kKeyedSample.find("End Stop") + 8;
  const size_t secondEnd = kKeyedSample.rfind("End Stop") + 8;
  for (size_t length = 0; length <= kKeyedSample.size(); ++length) {
    const size_t expected = length >= secondEnd ? 2u : length >= firstEnd ? 1u : 0u;
    EXPECT_EQ(Keyed(kKeyedSample.substr(0, length))[0]->Count(), expected) << length;
  }
  const std::string wide = "\xFF\xFE" + Utf16(kKeyedSample);
  for (size_t length = 0; length <= wide.size(); ++length) {
    const size_t expected = length >= 2 + 2 * secondEnd ? 2u : length >= 2 + 2 * firstEnd ? 1u : 0u;
    EXPECT_EQ(Keyed(wide.substr(0, length))[0]->Count(), expected) << length;
  }
}

TEST(CoPilot6Reader, TakesAnyBytes) {
  EXPECT_EQ(Keyed("")[0]->Count(), 0u);
  EXPECT_EQ(Keyed("S")[0]->Count(), 0u);
  EXPECT_EQ(Keyed("\0"s)[0]->Count(), 0u);
  EXPECT_EQ(Keyed("=\n==\n=a\n")[0]->name, "");
  EXPECT_EQ(NameOfStop("City=a\0b\n"s), "a\0b"s);
  EXPECT_EQ(Keyed(TripOf(""))[0]->Count(), 0u);
}

TEST(CoPilot6Reader, TakesLongLinesAndManyStops) {
  const std::string name(3000000, 'n');
  EXPECT_EQ(NameOfStop("City=" + name + "\n"), name);
  EXPECT_EQ(Keyed(std::string(5000000, '='))[0]->Count(), 0u);
  EXPECT_EQ(Keyed(std::string(5000000, ' '))[0]->Count(), 0u);
  std::string many;
  for (int i = 0; i < 100000; ++i) many += Stop("Longitude=1\n");
  EXPECT_EQ(Keyed(many)[0]->Count(), 100000u);
}

TEST(CoPilot6Reader, GivesOneForAMissingFile) {
  const TemporaryFolder folder;
  PointLists lists;
  EXPECT_EQ(ReadCoPilot6(folder.WidePathTo("none.trp"), lists, true), kStatusFailure);
  EXPECT_TRUE(lists.empty());
  EXPECT_EQ(ReadCoPilot6(folder.Put("empty.trp", ""), lists, true), kStatusSuccess);
  EXPECT_EQ(lists.size(), 1u);
}

TEST(CoPilot10Reader, ReadsADocument) {
  PointLists lists;
  EXPECT_EQ(ParseCoPilot10(R"({"Version":"10","Trip":{"Name":"Tour","Stops":[
      {"StopInfo":{"Name":"Paris","Address":"Rue X","Longitude":2352220,"Latitude":48856610}},
      {"Id":1,"StopInfo":{"Latitude":-500001.9,"Longitude":-4500000.5,"Address":"Rue Y","Name":""}}
      ]}})",
                           lists),
            kStatusSuccess);
  ASSERT_EQ(lists.size(), 1u);
  EXPECT_EQ(lists[0]->GetKind(), kKindRoute);
  EXPECT_EQ(lists[0]->name, "Tour");
  ASSERT_EQ(lists[0]->Count(), 2u);
  EXPECT_EQ(lists[0]->At(0).name, "Paris");
  EXPECT_EQ(lists[0]->At(0).longitude, 2.35222);
  EXPECT_EQ(lists[0]->At(0).latitude, 48.85661);
  EXPECT_EQ(lists[0]->At(0).comment, "");
  EXPECT_EQ(lists[0]->At(0).altitude, 0.0);
  EXPECT_EQ(lists[0]->At(1).name, "Rue Y");
  EXPECT_EQ(lists[0]->At(1).longitude, -4.5);
  EXPECT_EQ(lists[0]->At(1).latitude, -0.500001);
}

TEST(CoPilot10Reader, CoordinatesThatDoNotFitAreTheSmallestNumber) {
  PointLists lists;
  ParseCoPilot10(TripOf(StopInfo(R"("Name":"a","Longitude":1e300,"Latitude":2147483647.5)")),
                 lists);
  EXPECT_EQ(lists[0]->At(0).longitude, -2147.483648);
  EXPECT_EQ(lists[0]->At(0).latitude, 2147.483647);
}

TEST(CoPilot10Reader, TheAddressIsOnlyNeededForAnEmptyName) {
  PointLists lists;
  EXPECT_EQ(CodeOf(TripOf(StopInfo(R"("Name":"a","Longitude":1,"Latitude":2)")), lists), 0);
  EXPECT_EQ(CodeOf(TripOf(StopInfo(R"("Name":"","Longitude":1,"Latitude":2)")), lists), 5);
  EXPECT_EQ(CodeOf(TripOf(StopInfo(R"("Name":"","Address":1,"Longitude":1,"Latitude":2)")), lists),
            6);
}

TEST(CoPilot10Reader, AddsNothingWithoutATrip) {
  PointLists lists;
  EXPECT_EQ(CodeOf("{}", lists), 5);
  EXPECT_EQ(CodeOf(R"({"trip":{}})", lists), 5);
  EXPECT_EQ(CodeOf(R"({"Trip":[]})", lists), 9);
  EXPECT_EQ(CodeOf("[]", lists), 9);
  EXPECT_EQ(CodeOf("", lists), 9);
  EXPECT_EQ(CodeOf("x", lists), 9);
  EXPECT_EQ(CodeOf("\0"s, lists), 9);
  EXPECT_TRUE(lists.empty());
}

TEST(CoPilot10Reader, AddsTheRouteBeforeItLooksIntoTheTrip) {
  const auto expectRoute = [](std::string_view document, int code, std::string_view name) {
    PointLists lists;
    EXPECT_EQ(CodeOf(document, lists), code) << document;
    ASSERT_EQ(lists.size(), 1u) << document;
    EXPECT_EQ(lists[0]->Count(), 0u) << document;
    EXPECT_EQ(lists[0]->name, name) << document;
  };
  expectRoute(R"({"Trip":{}})", 5, "");
  expectRoute(R"({"Trip":{"Name":1,"Stops":[]}})", 6, "");
  expectRoute(R"({"Trip":{"Name":"T"}})", 5, "T");
  expectRoute(R"({"Trip":{"Name":"T","Stops":{}}})", 10, "T");
  expectRoute(R"({"Trip":{"Name":"T","Stops":[]}})", 0, "T");
}

TEST(CoPilot10Reader, KeepsTheStopsBeforeOneThatIsBroken) {
  const std::string whole = StopInfo(R"("Name":"a","Longitude":1000000,"Latitude":2000000)");
  const auto expectOne = [&whole](std::string_view broken, int code) {
    PointLists lists;
    EXPECT_EQ(CodeOf(TripOf(whole + "," + std::string(broken) + "," + whole), lists), code)
        << broken;
    ASSERT_EQ(lists.size(), 1u);
    ASSERT_EQ(lists[0]->Count(), 1u) << broken;
    EXPECT_EQ(lists[0]->At(0).name, "a");
  };
  expectOne("7", 9);
  expectOne("{}", 5);
  expectOne(R"({"StopInfo":7})", 9);
  expectOne(StopInfo(R"("Longitude":1,"Latitude":2)"), 5);
  expectOne(StopInfo(R"("Name":7,"Longitude":1,"Latitude":2)"), 6);
  expectOne(StopInfo(R"("Name":"b","Latitude":2)"), 5);
  expectOne(StopInfo(R"("Name":"b","Longitude":1)"), 5);
  expectOne(StopInfo(R"("Name":"b","Longitude":"1","Latitude":2)"), 7);
  expectOne(StopInfo(R"("Name":"b","Longitude":1,"Latitude":null)"), 7);
}

TEST(CoPilot10Reader, LooksAtTheTreeAndNotAtTheResultOfTheParse) {
  // The document is cut behind the trip, which was complete by then.
  const std::string document = TripOf(StopInfo(R"("Name":"a","Longitude":1,"Latitude":2)"));
  PointLists lists;
  EXPECT_EQ(CodeOf(document.substr(0, document.size() - 1) + ",\"Rest\":{\"a\":1", lists), 0);
  ASSERT_EQ(lists.size(), 1u);
  EXPECT_EQ(lists[0]->Count(), 1u);
}

TEST(CoPilot10Reader, ReadsBehindAMark) {
  PointLists lists;
  EXPECT_EQ(CodeOf("\xEF\xBB\xBF" + TripOf(StopInfo(R"("Name":"\"Caf\)"
                                                    "\u00e9"
                                                    R"(\"","Longitude":1,"Latitude":2)")),
                   lists),
            0);
  EXPECT_EQ(lists[0]->At(0).name, "\"Caf\u00e9\"");
}

TEST(CoPilot10Reader, ADocumentCutAnywhereIsReadOrRefused) {
  const std::string document = TripOf(StopInfo(R"("Name":"a","Longitude":1,"Latitude":2)") + "," +
                                      StopInfo(R"("Name":"b","Longitude":3,"Latitude":4)"));
  // Objects and arrays may end with the text: these two cuts leave a whole document.
  const size_t behindBracket = document.find('[') + 1;
  const size_t behindFirstStop = document.find("}},") + 3;
  for (size_t length = 0; length <= document.size(); ++length) {
    PointLists lists;
    const int code = CodeOf(document.substr(0, length), lists);
    const size_t points = lists.empty() ? 0 : lists[0]->Count();
    if (length == behindBracket) {
      EXPECT_EQ(code, 0);
      EXPECT_EQ(points, 0u);
    } else if (length == behindFirstStop) {
      EXPECT_EQ(code, 0);
      EXPECT_EQ(points, 1u);
    } else if (length + 2 >= document.size()) {  // behind the array
      EXPECT_EQ(code, 0);
      EXPECT_EQ(points, 2u);
    } else {
      EXPECT_TRUE(code == 5 || code == 9) << length;
      EXPECT_EQ(points, 0u) << length;
    }
  }
}

TEST(CoPilot10Reader, OpensTheFile) {
  const TemporaryFolder folder;
  PointLists lists;
  EXPECT_EQ(ReadCoPilot10(folder.WidePathTo("none.trp"), lists, true), kStatusFailure);
  EXPECT_TRUE(lists.empty());
  const WideString path =
      folder.Put("a.trp", TripOf(StopInfo(R"("Name":"a","Longitude":1,"Latitude":2)")));
  EXPECT_EQ(ReadCoPilot10(path, lists, true), kStatusSuccess);
  ASSERT_EQ(lists.size(), 1u);
  EXPECT_EQ(lists[0]->Count(), 1u);
  EXPECT_THROW(ReadCoPilot10(folder.Put("b.trp", ""), lists, true), CJsonException);
  EXPECT_EQ(lists.size(), 1u);
}

TEST(CoPilot, EveryWriterIsReadBackByTheKeyedReader) {
  const auto list = MakeList("Caf\u00e9", MakePoint(48.5, 2.25, "Paris"),
                             MakePoint(-50.75, -4.5, "\u00c9vian"), MakePoint(0.5, 179.5, "C"));
  for (const auto body : {WriteCoPilot6Body, WriteCoPilot8Body, WriteCoPilot10Body}) {
    const PointLists lists = Keyed(BytesOf(body, list));
    EXPECT_EQ(lists[0]->name, list.name);
    ASSERT_EQ(lists[0]->Count(), 3u);
    for (size_t i = 0; i < 3; ++i) EXPECT_EQ(lists[0]->At(i), list.At(i));
  }
}

TEST(CoPilot, TheWriterOfVersion10IsNotReadBackByItsReader) {
  PointLists lists;
  EXPECT_NE(CodeOf(BytesOf(WriteCoPilot10Body, MakeList("T", MakePoint(1, 2, "A"))), lists), 0);
  EXPECT_TRUE(lists.empty());
}

TEST(CoPilot, ABreakInANameBreaksTheStop) {
  const auto list = MakeList("", MakePoint(1, 2, "A\nEnd Stop\nB"));
  const PointLists lists = Keyed(BytesOf(WriteCoPilot6Body, list));
  ASSERT_EQ(lists[0]->Count(), 1u);
  EXPECT_EQ(lists[0]->At(0).name, "A");
}

TEST(CoPilot, ReadsTheExamples) {
  const std::string folder = CORVANE_SOURCE_FOLDER "/examples/";
  const PointLists loire = Keyed(ContentOf(folder + "loire-by-bicycle.trp"));
  EXPECT_EQ(loire[0]->name, "Loire by bicycle");
  ASSERT_EQ(loire[0]->Count(), 6u);
  EXPECT_EQ(loire[0]->At(0).name, "Place du Martroi, 45000 Orl\u00e9ans");
  EXPECT_EQ(loire[0]->At(3).name, "41000 Blois, Centre");
  EXPECT_EQ(loire[0]->At(5).longitude, 0.688891);

  PointLists harz;
  EXPECT_EQ(ParseCoPilot10(ContentOf(folder + "harz-weekend.trp"), harz), kStatusSuccess);
  EXPECT_EQ(harz[0]->name, "Weekend in the Harz");
  ASSERT_EQ(harz[0]->Count(), 6u);
  EXPECT_EQ(harz[0]->At(1).name, "Am Burgberg 1, 38667 Bad Harzburg");
  EXPECT_EQ(harz[0]->At(4).name, "Wernigerode \"Bunte Stadt\"");
  EXPECT_EQ(harz[0]->At(5).latitude, 51.78966);
}

}  // namespace
