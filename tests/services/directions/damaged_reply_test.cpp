// Replies that are cut short or hold nonsense end with a status, never otherwise.

#include <string_view>

#include "base/text.h"
#include "tests/services/directions/router_asked.h"
#include "tests/services/directions/sample_replies.h"

namespace {

using Legs = CRouteProvider::Legs;

void ExpectSoundText(const std::string& text, const std::string& reply) {
  EXPECT_TRUE(IsValidUtf8(text)) << reply;
  EXPECT_EQ(text.find('\0'), std::string::npos) << reply;
}

TEST(DamagedReplies, EndWithAStatusWhereverTheyAreCut) {
  for (const SampleReply& sample : SampleReplies()) {
    const auto router = RouterOf(sample.id);
    for (size_t length = 0; length < sample.text.size(); ++length) {
      Legs legs;
      const std::string cut(sample.text, 0, length);  // ends where memory ends
      const uint32_t status = router->ParseResponse(cut, kCar, {}, legs);
      EXPECT_LT(status, 200u);
      EXPECT_TRUE(status == 0 || legs.empty()) << sample.id << " at " << length;
    }
  }
}

// Puts `replacement` into the place of each number in turn.
void ExpectStatusWithNumbers(const SampleReply& sample, const std::string& replacement) {
  constexpr std::string_view kDigits = "0123456789.-";
  const auto router = RouterOf(sample.id);
  size_t position = sample.text.find_first_of(kDigits);
  while (position != std::string::npos) {
    const size_t end = sample.text.find_first_not_of(kDigits, position);
    const std::string reply = sample.text.substr(0, position) + replacement +
                              (end == std::string::npos ? "" : sample.text.substr(end));
    Legs legs;
    const uint32_t status = router->ParseResponse(reply, kCar, {}, legs);
    EXPECT_TRUE(status == 0 || legs.empty()) << sample.id << ": " << reply;
    position = end == std::string::npos ? end : sample.text.find_first_of(kDigits, end);
  }
}

TEST(DamagedReplies, EndWithAStatusWhateverTheirNumbersAre) {
  for (const SampleReply& sample : SampleReplies()) {
    for (const char* const number : {"", "x", "-1", "1e999", "99999999999999999999", "null", "[]",
                                     "{}", "\"1\"", "4294967296"})
      ExpectStatusWithNumbers(sample, number);
  }
}

// Whatever a service puts into a text, the stops and instructions that come of it can be shown and
// stored.
TEST(DamagedReplies, LeaveValidTextInTheLegs) {
  for (const SampleReply& sample : SampleReplies()) {
    const auto router = RouterOf(sample.id);
    for (const char* const bytes : {"\xC3", "\xED\xA0\x80", "\\u0000", "\\u00e9"}) {
      for (size_t position = 0; position < sample.text.size(); ++position) {
        std::string reply = sample.text;
        Legs legs;
        static_cast<void>(router->ParseResponse(reply.insert(position, bytes), kCar, {}, legs));
        for (const CRouteData& leg : legs) {
          for (const auto& point : leg.path.points) ExpectSoundText(point->name, reply);
          for (const CGpsRouteStep& step : leg.steps)
            ExpectSoundText(step.name + step.comment + step.instruction, reply);
        }
      }
    }
  }
}

TEST(DamagedReplies, WithoutNumbersAreNoSuccess) {
  // A position, a measure: what is there must be readable.
  const auto status = [](int32_t id, const std::string& from, const std::string& to) {
    std::string reply = SampleReplyOf(id);
    reply.replace(reply.find(from), from.size(), to);
    Legs legs;
    return RouterOf(id)->ParseResponse(reply, kCar, {}, legs);
  };
  EXPECT_EQ(status(provider::kGoogle, "61.5", "\"long\""), 6u);
  EXPECT_EQ(status(provider::kGoogle, "38.5", "north"), 6u);
  EXPECT_EQ(status(provider::kHere, "1800.4", "null"), 4u);
  EXPECT_EQ(status(provider::kTomTom, "48.55", "[]"), 4u);
  EXPECT_EQ(status(provider::kBing, "[48.5, 7.1]", "[48.5]"), 6u);
  EXPECT_EQ(status(provider::kOsrm, "1234.4", "true"), 6u);
  EXPECT_EQ(status(provider::kWazeUs, "30.5", "soon"), 4u);
}

TEST(DamagedReplies, TurnHugeNumbersIntoNone) {
  std::string reply = SampleReplyOf(provider::kOsrm);
  reply.replace(reply.find("1234.4"), 6, "4294967296");
  reply.replace(reply.find("61.5"), 4, "-1");
  Legs legs;
  ASSERT_EQ(RouterOf(provider::kOsrm)->ParseResponse(reply, kCar, {}, legs), 0u);
  EXPECT_EQ(legs[0].measure.distance, 0u);
  EXPECT_EQ(legs[0].measure.duration, 0u);
}

// Puts `replacement` behind `mark`, in the place of what stands there up to `end`.
std::string With(int32_t id, std::string_view mark, std::string_view end,
                 const std::string& replacement) {
  std::string reply = SampleReplyOf(id);
  const size_t start = reply.find(mark) + mark.size();
  return reply.replace(start, reply.find(end, start) - start, replacement);
}

// A point costs a server two bytes of a packed line, and us a hundred times as much.
TEST(DamagedReplies, HoldNoMoreThanAMillionPoints) {
  const std::string points(2'000'000, '?');
  const std::string flexible = "BF" + std::string(2'000'000, 'A');
  const struct {
    int32_t id;
    std::string_view mark;
    const std::string& line;
    std::string more;  // the two bytes that are too many
    uint32_t status;
  } kReplies[] = {
      {provider::kGoogle, "\"points\": \"", points, "??", 6},
      {provider::kGoogleRoutes, "\"encodedPolyline\": \"", points, "??", 4},
      {provider::kViaMichelin, "\"itineraryTrace\": \"xy", points, "??", 4},
      {provider::kOsrm, "\"geometry\": \"", points, "??", 6},
      {provider::kOrs, "\"geometry\": \"", points, "??", 4},
      {provider::kValhalla, "\"shape\": \"", points, "??", 6},
      {provider::kHereV8, "\"polyline\": \"", flexible, "AA", 4},
  };
  for (const auto& [id, mark, line, more, status] : kReplies) {
    Legs legs;
    const std::string reply = With(id, mark, "\"", line + more);
    EXPECT_EQ(RouterOf(id)->ParseResponse(reply, kCar, {}, legs), status) << id;
    EXPECT_TRUE(legs.empty()) << id;
  }
  Legs legs;
  const std::string reply = With(provider::kOsrm, "\"geometry\": \"", "\"", points);
  EXPECT_EQ(RouterOf(provider::kOsrm)->ParseResponse(reply, kCar, {}, legs), 0u);
  ASSERT_EQ(legs.size(), 1u);
  EXPECT_EQ(legs[0].shape.points.points.size(), 1'000'000u);
}

// Two lines that are not too long by themselves.
TEST(DamagedReplies, HoldNoMoreThanAMillionPointsInAllTheirLines) {
  const std::string line(1'000'002, '?');
  const std::string reply = R"({"routes": [{"legs": [{"polyline": {"encodedPolyline": ")" + line +
                            R"("}, "startLocation": {"latLng": {}}, "endLocation": {"latLng": {}},)"
                            R"( "duration": "1s"}, {"polyline": {"encodedPolyline": ")" +
                            line +
                            R"("}, "startLocation": {"latLng": {}}, "endLocation": {"latLng": {}},)"
                            R"( "duration": "1s"}]}]})";
  Legs legs;
  EXPECT_EQ(RouterOf(provider::kGoogleRoutes)->ParseResponse(reply, kCar, {}, legs), 4u);
  EXPECT_TRUE(legs.empty());
}

// Ten thousand legs that each lead along the whole line.
TEST(DamagedReplies, DoNotRepeatALineForEver) {
  std::string reply = R"({"routes": [{"segments": [)";
  for (int i = 0; i < 10'000; ++i)
    reply += std::string(i == 0 ? "" : ",") +
             R"({"steps": [{"instruction": "", "way_points": [0, 9999]}]})";
  reply += R"(], "geometry": ")" + std::string(20'000, '?') + "\"}]}";
  Legs legs;
  EXPECT_EQ(RouterOf(provider::kOrs)->ParseResponse(reply, kCar, {}, legs), 4u);
  EXPECT_TRUE(legs.empty());
}

TEST(DamagedReplies, HoldNoMoreThanAMillionElements) {
  for (const std::string element : {"<trkpt/>", "<wpt/>"}) {
    std::string reply = "<gpx><trkseg><trkpt/>";
    for (int i = 0; i < 1'000'000; ++i) reply += element;
    reply += "</trkseg></gpx>";
    Legs legs;
    EXPECT_EQ(RouterOf(provider::kTripy)->ParseResponse(reply, kCar, {}, legs), 4u);
    EXPECT_TRUE(legs.empty());
  }
}

TEST(DamagedReplies, MayBeNothingButBrackets) {
  for (const SampleReply& sample : SampleReplies()) {
    for (const char bracket : {'[', '{', '"', '}', '<'}) {
      Legs legs;
      EXPECT_NE(RouterOf(sample.id)->ParseResponse(std::string(50000, bracket), kCar, {}, legs),
                0u);
    }
  }
}

}  // namespace
