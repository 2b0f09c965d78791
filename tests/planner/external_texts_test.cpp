// What the page gets in one text: pins, ways and its words.

#include <cctype>
#include <fstream>
#include <limits>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/localized_text.h"
#include "markup/json.h"
#include "tests/planner/bridge_fixture.h"

namespace {

class ExternalTexts : public BridgeTest {
 protected:
  ExternalTexts() { BringUp(); }
};

TEST_F(ExternalTexts, PinsComeInOneText) {
  EXPECT_EQ(Call("GetCount", {0}).AsInteger(), 3);
  EXPECT_EQ(Call("GetPins", {3, 0, 10}).AsText(),
            R"([{"lat": 51, "lng": 9, "alt": 12.5, "address": "P", "snippet": "cafe"}])");
  lists[0].points[1].name = "a \"quote\"\nline";
  lists[0].points[1].altitude = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(
      Call("GetPins", {0, 1, 1}).AsText(),
      R"([{"lat": 48.1, "lng": 7.1, "alt": null, "address": "a \"quote\"\u000aline", "snippet": ""}])");
  lists[0].points[2].SetRouteLeg(CRouteLeg());
  EXPECT_TRUE(Call("GetPins", {0, 2, 1}).AsText().ends_with(", \"route\": true}]"));
  EXPECT_EQ(Call("GetPins", {0, 3, 1}).AsText(), "[]");
  EXPECT_EQ(Call("GetPins", {0, 0, 0}).AsText(), "[]");
  EXPECT_EQ(Failure("GetPins", {0, 4, 1}), 0x8002000B);
  EXPECT_EQ(Failure("GetPins", {0, -1, 1}), 0x8002000B);
  EXPECT_EQ(Failure("GetPins", {0, 0, -1}), 0x8002000B);
}

CRouteLeg LegOf(std::initializer_list<CGpsPoint> shape) {
  CRouteLeg leg;
  leg.route.measure.distance = 1500;
  leg.route.measure.duration = 90;
  leg.route.travelMode = 2;
  leg.route.color = 0x0a666b;
  for (const CGpsPoint& point : shape)
    leg.route.shape.points.points.push_back(std::make_unique<CGpsNamedPoint>(point));
  return leg;
}

TEST_F(ExternalTexts, WaysComeInOneText) {
  EXPECT_EQ(Call("GetWays", {0, 0, 9}).AsText(), "[null, null, null]");
  lists[0].points[1].SetRouteLeg(LegOf({MakePoint(48.5, 7.25), MakePoint(48, -7)}));
  EXPECT_EQ(Call("GetWays", {0, 0, 2}).AsText(),
            R"([null, {"distance": 1500, "duration": 90, "driving": 2, "color": 681579, )"
            R"("shape": [48.5, 7.25, 48, -7]}])");
  EXPECT_EQ(Call("GetWays", {0, 3, 1}).AsText(), "[]");
  EXPECT_EQ(Failure("GetWays", {0, 4, 1}), 0x8002000B);
  EXPECT_EQ(Failure("GetWays", {0, 0, -1}), 0x8002000B);
}

TEST_F(ExternalTexts, LongWaysComeInSeveralTexts) {
  CRouteLeg leg = LegOf({});
  for (int i = 0; i < 20'000; ++i)
    leg.route.shape.points.points.push_back(std::make_unique<CGpsNamedPoint>());
  lists[0].points[1].SetRouteLeg(leg);
  lists[0].points[2].SetRouteLeg(LegOf({MakePoint(1, 2)}));
  EXPECT_TRUE(Call("GetWays", {0, 1, 2}).AsText().ends_with("0, 0]}]"));
  EXPECT_TRUE(Call("GetWays", {0, 2, 2}).AsText().ends_with("[1, 2]}]"));
}

TEST_F(ExternalTexts, TextsComeInTheProgramsLanguage) {
  const std::string texts = Call("GetTexts").AsText();
  EXPECT_NE(texts.find(R"("zoomIn": "Zoom in")"), std::string::npos);
  SetLanguage(Language::kGerman);
  EXPECT_NE(Call("GetTexts").AsText().find(R"("showAll": "Alles zeigen")"), std::string::npos);
  SetLanguage(Language::kEnglish);
}

// The page's own tests take its texts from the string tables by the same rule.
TEST_F(ExternalTexts, TextsAreAllThoseOfThePage) {
  CJsonDocument texts;
  ASSERT_EQ(texts.Parse(Call("GetTexts").AsText()), 0);
  std::ifstream names(CORVANE_SOURCE_FOLDER "/resources/strings/names.tsv");
  size_t count = 0;
  for (std::string line; std::getline(names, line);) {
    const size_t tab = line.find('\t');
    if (line.compare(tab + 1, 5, "OnMap") != 0) continue;
    std::string name = line.substr(tab + 6);
    name[0] = static_cast<char>(std::tolower(name[0]));
    const CJsonValue* const text = texts.AsObject().Find(name);
    ASSERT_TRUE(text) << name;
    EXPECT_EQ(text->AsString(), LoadTextUtf8(static_cast<uint32_t>(std::stoul(line)))) << name;
    ++count;
  }
  EXPECT_GT(count, 40u);
  EXPECT_EQ(texts.AsObject().Count(), count);
}

// The page calls back while it is being called.
}  // namespace
