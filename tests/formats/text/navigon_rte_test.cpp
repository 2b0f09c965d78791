#include "formats/text/navigon_rte.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "base/status.h"
#include "conversion/geocoder.h"
#include "tests/formats/text/reading.h"
#include "tests/formats/written_bytes.h"
#include "tests/list_builder.h"
#include "tests/temporary_folder.h"

namespace {

using std::string_literals::operator""s;

Reading Parse(std::string_view bytes) { return ReadBytes(ParseNavigonRte, bytes); }

CGpsRoute SampleRoute() {
  return MakeList("Ignored", MakePoint(48.85661, 2.352219, "Paris", "lost", 35.0),
                  MakePoint(-33.85678, 151.2153, "Sydney"), MakePoint(51.47782, -0.00148, ""));
}

// Answers from a list of addresses, and remembers what it was asked.
struct FakeService {
  std::map<std::string, std::vector<CGpsNamedPoint>> places;
  uint32_t status = kServiceSuccess;
  std::vector<std::string> questions;
};

class FakeGeocoder : public CGeocoder {
 public:
  explicit FakeGeocoder(FakeService& service) : m_service(service) {}

  uint32_t Search(const std::string& query) override {
    m_service.questions.push_back(query);
    m_results = m_service.places[query];
    return m_status = m_service.status;
  }
  int32_t GetId() const override { return kProviderGoogle; }

 private:
  FakeService& m_service;
};

class NavigonLookUp : public testing::Test {
 protected:
  Reading Parse(std::string_view bytes) {
    Lookups lookups;
    lookups.makeGeocoder = [this](int32_t id) {
      EXPECT_EQ(id, kProviderGoogle);
      return std::make_unique<FakeGeocoder>(service);
    };
    lookups.isOffline = isOffline;
    return ReadBytes(ParseNavigonRte, bytes, lookups);
  }

  FakeService service;
  bool isOffline = false;
};

TEST(NavigonWriter, WritesMn5Lines) {
  EXPECT_EQ(BytesOf(WriteNavigonMn5Body, SampleRoute()),
            "-|-|16|-|-|Paris|-|-|-|-|-|2.35222|48.85661|-|-|\r\n"
            "-|-|16|-|-|Sydney|-|-|-|-|-|151.21530|-33.85678|-|-|\r\n"
            "-|-|16|-|-||-|-|-|-|-|-0.00148|51.47782|-|-|\r\n");
}

TEST(NavigonWriter, WritesMn6Lines) {
  EXPECT_EQ(BytesOf(WriteNavigonMn6Body, SampleRoute()),
            "[Paris|][0][10]|||2.35222|48.85661\r\n"
            "[Sydney|][0][10]|||151.21530|-33.85678\r\n"
            "[|][0][10]|||-0.00148|51.47782\r\n");
}

TEST(NavigonWriter, WritesBeckerLines) {
  EXPECT_EQ(BytesOf(WriteBeckerBody, SampleRoute()),
            "[Paris||][0][10]|||2.35222|48.85661\r\n"
            "[Sydney||][0][10]|||151.21530|-33.85678\r\n"
            "[||][0][10]|||-0.00148|51.47782\r\n");
}

TEST(NavigonWriter, NarrowsNamesAndCleansNothing) {
  const auto route =
      MakeList("", MakePoint(1, -1, "Caf\u00e9|\u0141\u00f3d\u017a, \"a\"=[b] \U0001F600"));
  EXPECT_EQ(BytesOf(WriteNavigonMn6Body, route),
            "[Caf\xE9|?\xF3"
            "d?, \"a\"=[b] ??|][0][10]|||-1.00000|1.00000\r\n");
}

TEST(NavigonWriter, WritesNothingForAnEmptyList) {
  EXPECT_EQ(BytesOf(WriteNavigonMn5Body, CGpsRoute()), "");
  EXPECT_EQ(BytesOf(WriteNavigonMn6Body, CGpsRoute()), "");
  EXPECT_EQ(BytesOf(WriteBeckerBody, CGpsRoute()), "");
}

TEST(NavigonWriter, WritesFilesWithoutMarkWhateverTheLimit) {
  const TemporaryFolder folder;
  const CGpsRoute route = SampleRoute();
  EXPECT_EQ(WriteNavigonMn5(folder.WidePathTo("5.rte"), route, 1, true), kStatusSuccess);
  EXPECT_EQ(WriteNavigonMn6(folder.WidePathTo("6.rte"), route, 2, true), kStatusSuccess);
  EXPECT_EQ(WriteBecker(folder.WidePathTo("b.rte"), route, 3, true), kStatusSuccess);
  EXPECT_EQ(folder.Get("5.rte"), BytesOf(WriteNavigonMn5Body, route));
  EXPECT_EQ(folder.Get("6.rte"), BytesOf(WriteNavigonMn6Body, route));
  EXPECT_EQ(folder.Get("b.rte"), BytesOf(WriteBeckerBody, route));
}

TEST(NavigonWriter, ReportsAFileThatCannotBeWritten) {
  const TemporaryFolder folder;
  const WideString path = folder.WidePathTo("missing/a.rte");
  EXPECT_EQ(WriteNavigonMn5(path, SampleRoute(), 0, true), kStatusFailure);
  EXPECT_EQ(WriteNavigonMn6(path, SampleRoute(), 0, true), kStatusFailure);
  EXPECT_EQ(WriteBecker(path, SampleRoute(), 0, true), kStatusFailure);
}

TEST(NavigonReader, ReadsAllShapesMixed) {
  const Reading reading = Parse(
      "-|-|16|-|-|Paris|-|-|-|-|-|2.35222|48.85661|-|-|\r\n"
      "[Lyon|][0][10]|||4.83566|45.76404\r\n"
      "\r\n"
      "[Nice||][0][10]|||7.26195|43.71017\n"
      "-|-|16|-|Old|-|-|-|-|-|-1.5|-2.5|-|-|");
  EXPECT_EQ(reading.status, kStatusSuccess);
  ASSERT_EQ(reading.lists.size(), 1u);
  EXPECT_EQ(reading.lists[0]->GetKind(), kKindRoute);
  EXPECT_EQ(reading.lists[0]->name, "");
  ASSERT_EQ(reading.Count(), 4u);
  EXPECT_EQ(reading[0].name, "Paris");
  EXPECT_EQ(reading[0].longitude, 2.35222);
  EXPECT_EQ(reading[0].latitude, 48.85661);
  EXPECT_EQ(reading[0].altitude, 0.0);
  EXPECT_EQ(reading[0].comment, "");
  EXPECT_EQ(reading[1].name, "Lyon");
  EXPECT_EQ(reading[1].longitude, 4.83566);
  EXPECT_EQ(reading[1].latitude, 45.76404);
  EXPECT_EQ(reading[2].name, "Nice");
  EXPECT_EQ(reading[2].longitude, 7.26195);
  EXPECT_EQ(reading[2].latitude, 43.71017);
  EXPECT_EQ(reading[3].name, "Old");
  EXPECT_EQ(reading[3].longitude, -1.5);
  EXPECT_EQ(reading[3].latitude, -2.5);
  EXPECT_EQ(reading.passedOver, 0u);
}

TEST(NavigonReader, SixteenFieldsDecideBetweenThePlainShapes) {
  // 15 fields: the name is field 4 and the position 10 and 11; with 16 all stand one further.
  const Reading reading = Parse(
      "0|1|2|3|n4|n5|6|7|8|9|10|11|12|13|14\n"
      "0|1|2|3|n4|n5|6|7|8|9|10|11|12|13|14|15\n"
      "0|1|2|3|n4|n5|6|7|8|9|10|11|12|13|14|15|16\n"
      "0|1|2|3|n4|n5|6|7|8|9|10|11\n");
  ASSERT_EQ(reading.Count(), 4u);
  EXPECT_EQ(reading[0].name, "n4");
  EXPECT_EQ(reading[0].longitude, 10.0);
  EXPECT_EQ(reading[0].latitude, 11.0);
  EXPECT_EQ(reading[1].name, "n5");
  EXPECT_EQ(reading[1].longitude, 11.0);
  EXPECT_EQ(reading[1].latitude, 12.0);
  EXPECT_EQ(reading[2].name, "n5");
  EXPECT_EQ(reading[3].name, "n4");
  EXPECT_EQ(reading[3].latitude, 11.0);
}

TEST(NavigonReader, TakesTheNameOfABareBracketFromBehindIt) {
  const Reading reading = Parse(
      "[|][0][10]|One||1.5|2.5\n"
      "[||][0][10]|Two||3.5|4.5\n"
      "[|][0][10]|||5.5|6.5\n"
      "[||][0][10]|||7.5|8.5\n"
      "[X|][0][10]|other||9.5|1.5\n");
  ASSERT_EQ(reading.Count(), 5u);
  EXPECT_EQ(reading[0].name, "One");
  EXPECT_EQ(reading[0].longitude, 1.5);
  EXPECT_EQ(reading[0].latitude, 2.5);
  EXPECT_EQ(reading[1].name, "Two");
  EXPECT_EQ(reading[1].longitude, 3.5);
  EXPECT_EQ(reading[1].latitude, 4.5);
  EXPECT_EQ(reading[2].name, "");
  EXPECT_EQ(reading[3].name, "");
  EXPECT_EQ(reading[4].name, "X");
}

TEST(NavigonReader, PassesOverLinesWithTooFewFields) {
  const Reading reading = Parse(
      "no separator\n"
      "[A|][0][10]|||1.5\n"
      "[B||][0][10]|||1.5\n"
      "\n"
      "[C|][0][10]|||1.5|2.5\n"
      "[D||][0][10]|||1.5|2.5\n");
  ASSERT_EQ(reading.Count(), 2u);
  EXPECT_EQ(reading[0].name, "C");
  EXPECT_EQ(reading[1].name, "D");
  EXPECT_EQ(reading.passedOver, 3u);
  EXPECT_EQ(reading.withoutPosition, 0u);
}

TEST(NavigonReader, DropsStopsWithoutAPosition) {
  const Reading reading = Parse(
      "[A|][0][10]|||0.00000|0.00000\n"
      "[B|][0][10]|||-|-\n"
      "[C||][0][10]|||0|-0.5\n");
  ASSERT_EQ(reading.Count(), 1u);
  EXPECT_EQ(reading[0].name, "C");
  EXPECT_EQ(reading[0].latitude, -0.5);
  EXPECT_EQ(reading.withoutPosition, 2u);
  EXPECT_EQ(reading.lookedUp, 0u);
}

TEST(NavigonReader, KeepsUtf8BehindAMarkAndWidensTheRest) {
  const std::string line = "[Caf\xC3\xA9|][0][10]|||1.5|2.5\n";
  EXPECT_EQ(Parse("\xEF\xBB\xBF" + line)[0].name, "Caf\u00e9");
  EXPECT_EQ(Parse(line)[0].name, "Caf\u00c3\u00a9");
  EXPECT_EQ(Parse("[Caf\xE9||][0][10]|||1.5|2.5\n")[0].name, "Caf\u00e9");
  EXPECT_EQ(Parse("\xEF\xBB\xBF-|-|16|-|-|\xC5\x81|-|-|-|-|-|1|2|-|-|\n")[0].name, "\u0141");
}

TEST(NavigonReader, DropsPlainStopsWithoutAGeocoder) {
  const Reading reading = Parse(
      "-|-|16|-|Rue de Rivoli|Paris|-|-|-|-|-|-|-|-|-|\n"
      "-|-|16|-|-|Lyon|-|-|-|-|-|4.83566|45.76404|-|-|\n");
  EXPECT_EQ(reading.status, kStatusSuccess);
  ASSERT_EQ(reading.Count(), 1u);
  EXPECT_EQ(reading[0].name, "Lyon");
  EXPECT_EQ(reading.withoutPosition, 1u);
  EXPECT_EQ(reading.lookedUp, 0u);
  EXPECT_EQ(reading.notFound, 0u);
}

TEST_F(NavigonLookUp, AsksForPlainStopsWithoutAPosition) {
  auto place = MakePoint(48.85661, 2.35222, "Rue de Rivoli, 75001 Paris, France", "", 35.0);
  place.tolerance = 0.5;
  service.places["Rue de Rivoli Paris"] = {place, MakePoint(1, 1, "second")};
  service.places["Bellecour Lyon"] = {MakePoint(45.75779, 4.83201, "Lyon")};
  const Reading reading = Parse(
      "-|-|16|-|Rue de Rivoli|Paris|-|-|-|-|-|-|-|-|-|\r\n"
      "-|-|16|Bellecour|Lyon|-|-|-|-|-|-|-|-|-|\r\n");
  ASSERT_EQ(reading.Count(), 2u);
  EXPECT_EQ(reading[0].name, "Paris");
  EXPECT_EQ(reading[0].latitude, 48.85661);
  EXPECT_EQ(reading[0].longitude, 2.35222);
  EXPECT_EQ(reading[0].altitude, 35.0);
  EXPECT_EQ(reading[0].tolerance, 0.5);
  EXPECT_EQ(reading[0].GetRouteLeg(), nullptr);
  EXPECT_EQ(reading[1].name, "Lyon");
  EXPECT_EQ(reading[1].latitude, 45.75779);
  EXPECT_EQ(service.questions, (std::vector<std::string>{"Rue de Rivoli Paris", "Bellecour Lyon"}));
  EXPECT_EQ(reading.lookedUp, 2u);
  EXPECT_EQ(reading.notFound, 0u);
  EXPECT_EQ(reading.withoutPosition, 0u);
}

TEST_F(NavigonLookUp, AsksWithTheBytesOfTheFile) {
  Parse(
      "-|-|16|-|Stra\xDF"
      "e|K\xF6ln|-|-|-|-|-|-|-|-|-|\n");
  EXPECT_EQ(service.questions, std::vector<std::string>{"Stra\xDF"
                                                        "e K\xF6ln"});
}

TEST_F(NavigonLookUp, DropsWhatIsNotFound) {
  service.places["nowhere in the sea"] = {MakePoint(0, 0, "Gulf of Guinea")};
  const Reading reading = Parse(
      "-|-|16|-|Unknown|Street|-|-|-|-|-|-|-|-|-|\n"
      "-|-|16|-|nowhere|in the sea|-|-|-|-|-|-|-|-|-|\n"
      "[A|][0][10]|||0|0\n"
      "[B|][0][10]|||1|2\n");
  ASSERT_EQ(reading.Count(), 1u);
  EXPECT_EQ(reading[0].name, "B");
  EXPECT_EQ(reading.lookedUp, 2u);
  EXPECT_EQ(reading.notFound, 2u);
  EXPECT_EQ(reading.withoutPosition, 1u);
}

TEST_F(NavigonLookUp, TakesNoPlaceFromAnAnswerThatFailed) {
  service.places["Rue de Rivoli Paris"] = {MakePoint(48.85661, 2.35222)};
  service.status = kServiceOverLimit;
  const Reading reading = Parse("-|-|16|-|Rue de Rivoli|Paris|-|-|-|-|-|-|-|-|-|\n");
  EXPECT_EQ(reading.status, kStatusSuccess);
  EXPECT_EQ(reading.Count(), 0u);
  EXPECT_EQ(reading.lookedUp, 1u);
  EXPECT_EQ(reading.notFound, 1u);
}

TEST_F(NavigonLookUp, TakesMissingFieldsOfShortLinesAsEmpty) {
  Parse("a|b\n0|1|2|three\n0|1|2|three|four\n0|1|2|3|n|5|6|7|8|9|7.5\n");
  // The last line has a longitude, which is position enough.
  EXPECT_EQ(service.questions, (std::vector<std::string>{" ", "three ", "three four"}));
}

TEST_F(NavigonLookUp, AsksEachDistinctQuestionOnce) {
  service.places["x Paris"] = {MakePoint(48.5, 2.5)};
  const Reading reading = Parse(
      "-|-|16|-|x|Paris|-|-|-|-|-|-|-|-|-|\n"
      "-|-|16|-|x|nowhere|-|-|-|-|-|-|-|-|-|\n"
      "-|-|16|-|x|Paris|-|-|-|-|-|-|-|-|-|\n"
      "-|-|16|-|x|nowhere|-|-|-|-|-|-|-|-|-|\n");
  EXPECT_EQ(service.questions, (std::vector<std::string>{"x Paris", "x nowhere"}));
  ASSERT_EQ(reading.Count(), 2u);
  EXPECT_EQ(reading[1].latitude, 48.5);
  EXPECT_EQ(reading.lookedUp, 4u);
  EXPECT_EQ(reading.notFound, 2u);
}

TEST_F(NavigonLookUp, AsksNothingOffline) {
  isOffline = true;
  const Reading reading = Parse("-|-|16|-|x|Paris|-|-|-|-|-|-|-|-|-|\n");
  EXPECT_TRUE(service.questions.empty());
  EXPECT_EQ(reading.Count(), 0u);
  EXPECT_EQ(reading.withoutPosition, 1u);
  EXPECT_EQ(reading.lookedUp, 0u);
}

TEST_F(NavigonLookUp, NeverAsksForBracketLinesOrKnownPositions) {
  const Reading reading = Parse(
      "[A|][0][10]|||-|-\n"
      "[B||][0][10]|||-|-\n"
      "-|-|16|-|x|C|-|-|-|-|-|0|0.00001|-|-|\n");
  EXPECT_EQ(reading.Count(), 1u);
  EXPECT_TRUE(service.questions.empty());
  EXPECT_EQ(reading.withoutPosition, 2u);
}

TEST(NavigonReader, ReadsWhatTheWritersWrite) {
  const TemporaryFolder folder;
  const auto route = MakeList("", MakePoint(48.85661, 2.35222, "Orl\u00e9ans"),
                              MakePoint(-33.85678, 151.2153, ""), MakePoint(51.4, -0.00148, "C"));
  WriteNavigonMn5(folder.WidePathTo("5.rte"), route, 0, true);
  WriteNavigonMn6(folder.WidePathTo("6.rte"), route, 0, true);
  WriteBecker(folder.WidePathTo("b.rte"), route, 0, true);
  for (const char* const name : {"5.rte", "6.rte", "b.rte"}) {
    PointLists lists;
    EXPECT_EQ(ReadNavigonRte(folder.WidePathTo(name), lists, true), kStatusSuccess);
    ASSERT_EQ(lists.size(), 1u);
    ASSERT_EQ(lists[0]->Count(), 3u) << name;
    for (size_t i = 0; i < 3; ++i) {
      EXPECT_EQ(lists[0]->points[i].name, route.points[i].name) << name;
      EXPECT_EQ(lists[0]->points[i].latitude, route.points[i].latitude) << name;
      EXPECT_EQ(lists[0]->points[i].longitude, route.points[i].longitude) << name;
    }
  }
}

TEST(NavigonReader, BarInANameMovesTheFields) {
  const Reading reading = Parse("[A|B|][0][10]|||2.5|3.5\n");
  // Field 1 is "B": the line counts as one with two bars, and its position is where that has it.
  ASSERT_EQ(reading.Count(), 1u);
  EXPECT_EQ(reading[0].name, "A");
  EXPECT_EQ(reading[0].longitude, 2.5);
  EXPECT_EQ(reading[0].latitude, 3.5);
}

TEST(NavigonReader, GivesOneForAMissingFileAndAnEmptyRouteForAnEmptyOne) {
  const TemporaryFolder folder;
  PointLists lists;
  EXPECT_EQ(ReadNavigonRte(folder.WidePathTo("none.rte"), lists, true), kStatusFailure);
  EXPECT_TRUE(lists.empty());
  EXPECT_EQ(ReadNavigonRte(folder.Put("a.rte", ""), lists, true), kStatusSuccess);
  ASSERT_EQ(lists.size(), 1u);
  EXPECT_EQ(lists[0]->Count(), 0u);
}

TEST(NavigonReader, ReadsDamagedFiles) {
  const std::string sample =
      "[Lyon|][0][10]|||4.83566|45.76404\r\n"
      "[Nice||][0][10]|||7.26195|43.71017\r\n"
      "-|-|16|-|-|Paris|-|-|-|-|-|2.35222|48.85661|-|-|\r\n";
  ExpectCutsToBeRead(ParseNavigonRte, sample);
  EXPECT_EQ(Parse("[").Count(), 0u);
  EXPECT_EQ(Parse("[|").passedOver, 1u);
  const Reading withZero = Parse("[Ly\0on|][0][10]|||4.5|45.5"s);
  ASSERT_EQ(withZero.Count(), 1u);
  EXPECT_EQ(withZero[0].name, "Ly\0on"s);
  const std::string longName(1 << 20, 'x');
  const Reading longLine = Parse("[" + longName + "|][0][10]|||4.5|45.5");
  ASSERT_EQ(longLine.Count(), 1u);
  EXPECT_EQ(longLine[0].name, longName);
  EXPECT_EQ(Parse(std::string(1 << 20, '|')).Count(), 0u);
}

TEST(NavigonReader, FindsAStopAmongManyWithoutAPosition) {
  std::string bars;
  for (int i = 0; i < 100000; ++i) bars += "|\n[||||||\n";
  const Reading reading = Parse(bars + "[A|][0][10]|||1.5|2.5\n" + bars);
  ASSERT_EQ(reading.Count(), 1u);
  EXPECT_EQ(reading[0].name, "A");
  EXPECT_EQ(reading.withoutPosition, 400000u);
}

TEST(NavigonReader, ReadsTheExample) {
  PointLists lists;
  const WideString path = WidePath(CORVANE_SOURCE_FOLDER "/examples/strasbourg-to-colmar.rte");
  EXPECT_EQ(ReadNavigonRte(path, lists, true), kStatusSuccess);
  ASSERT_EQ(lists.size(), 1u);
  ASSERT_EQ(lists[0]->Count(), 8u);
  EXPECT_EQ(lists[0]->points[0].name, "Strasbourg, cath\u00e9drale Notre-Dame");
  EXPECT_EQ(lists[0]->points[0].latitude, 48.58187);
  EXPECT_EQ(lists[0]->points[0].longitude, 7.75103);
}

}  // namespace
