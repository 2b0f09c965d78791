#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "base/status.h"
#include "base/text.h"
#include "conversion/conversion_context.h"
#include "formats/text/copilot.h"
#include "tests/formats/text/copilot_reading.h"
#include "tests/temporary_folder.h"

namespace {

using namespace copilot;
using std::string_literals::operator""s;

std::string Utf32(std::string_view text, bool bigEndian) {
  std::string units;
  for (const char c : text) {
    if (bigEndian) units.append(3, '\0');
    units.push_back(c);
    if (!bigEndian) units.append(3, '\0');
  }
  return units;
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
  ConversionContext context;
  const ConversionScope scope(context);
  const PointLists lists = Keyed(
      "City=lost\nLongitude=5\nEnd Stop\nStart Trip=first\nStart Trip=second\n"
      "Start Stop=one\nStart Stop=two\nStart Trip=third\nEnd Trip\nCity=C\nEnd Stop\nEnd Stop\n");
  EXPECT_EQ(lists[0]->name, "second");
  ASSERT_EQ(lists[0]->Count(), 1u);
  EXPECT_EQ(lists[0]->At(0).name, "C");
  EXPECT_EQ(lists[0]->At(0).longitude, 0.0);
  // Two ends without a stop and a stop inside another.
  EXPECT_EQ(context.notes.Count(ConversionNote::kLinePassedOver), 3u);
}

TEST(CoPilot6Reader, AStopInsideAnotherKeepsTheOuterName) {
  EXPECT_EQ(NameOfStop("Start Stop=inner\n"), "Stop 3");
}

TEST(CoPilot6Reader, DropsAStopThatDoesNotEndAndTellsSo) {
  ConversionContext context;
  const ConversionScope scope(context);
  EXPECT_EQ(Keyed(Stop("") + "Start Stop=x\nCity=y\n")[0]->Count(), 1u);
  EXPECT_EQ(context.notes.Count(ConversionNote::kLinePassedOver), 1u);
}

TEST(CoPilot6Reader, TellsNothingOfARegularFile) {
  ConversionContext context;
  const ConversionScope scope(context);
  Keyed(kKeyedSample);
  EXPECT_EQ(context.notes.Count(ConversionNote::kLinePassedOver), 0u);
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

}  // namespace
