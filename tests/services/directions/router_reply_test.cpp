// What the providers make of replies.

#include "services/service_table.h"
#include "tests/services/directions/router_asked.h"
#include "tests/services/directions/sample_replies.h"

namespace {

using Legs = CRouteProvider::Legs;
using Positions = std::vector<std::pair<double, double>>;
using Names = std::vector<std::string>;

uint32_t Read(int32_t id, const std::string& text, Legs& legs) {
  return RouterOf(id)->ParseResponse(text, kCar, OfType(2), legs);
}

Legs ReadSample(int32_t id) {
  Legs legs;
  EXPECT_EQ(Read(id, SampleReplyOf(id), legs), 0u) << id;
  return legs;
}

uint32_t StatusOf(int32_t id, const std::string& text) {
  Legs legs;
  const uint32_t status = Read(id, text, legs);
  EXPECT_TRUE(legs.empty());
  return status;
}

void ExpectMeasure(const CRouteMeasure& measure, uint32_t distance, uint32_t duration) {
  EXPECT_EQ(measure.distance, distance);
  EXPECT_EQ(measure.duration, duration);
  EXPECT_EQ(measure.flag, 1);
}

void ExpectStep(const CGpsRouteStep& step, double latitude, double longitude, uint32_t distance,
                uint32_t duration, const std::string& instruction) {
  EXPECT_DOUBLE_EQ(step.latitude, latitude);
  EXPECT_DOUBLE_EQ(step.longitude, longitude);
  EXPECT_EQ(step.measure.distance, distance);
  EXPECT_EQ(step.measure.duration, duration);
  EXPECT_EQ(step.instruction, instruction);
}

// The line of all samples with an encoded polyline.
const Positions kThreePoints = {{38.5, -120.2}, {40.7, -120.95}, {43.252, -126.453}};

TEST(GoogleReply, BecomesLegs) {
  const Legs legs = ReadSample(provider::kGoogle);
  ASSERT_EQ(legs.size(), 1u);
  const CRouteData& leg = legs[0];
  EXPECT_EQ(leg.travelMode, 1u);
  EXPECT_EQ(leg.options->mode, 2u);
  EXPECT_EQ(leg.color, 255u);
  EXPECT_EQ(PositionsOf(leg.path), (Positions{{38.5, -120.2}, {43.252, -126.453}}));
  EXPECT_EQ(NamesOf(leg.path), (Names{"Start", "End"}));
  ExpectMeasure(leg.measure, 1234, 62);
  ASSERT_EQ(leg.steps.size(), 2u);
  ExpectStep(leg.steps[0], 38.5, -120.2, 400, 20, "Head <b>north</b>");
  ExpectStep(leg.steps[1], 40.7, -120.95, 834, 41, "Turn left");
  // Each step has a line of its own; the second begins where the first has ended.
  EXPECT_EQ(PositionsOf(leg.shape.points),
            (Positions{{38.5, -120.2}, {40.7, -120.95}, {40.7, -120.95}, {43.252, -126.453}}));
}

TEST(GoogleReply, AddsToTheLegsThatAreThere) {
  Legs legs(1);
  EXPECT_EQ(Read(provider::kGoogle, SampleReplyOf(provider::kGoogle), legs), 0u);
  EXPECT_EQ(legs.size(), 2u);
}

TEST(GoogleReply, TellsItsStatusByAWord) {
  const std::pair<const char*, uint32_t> kWords[] = {{"ZERO_RESULTS", 1},
                                                     {"OVER_QUERY_LIMIT", 2},
                                                     {"REQUEST_DENIED", 3},
                                                     {"INVALID_REQUEST", 4},
                                                     {"NOT_FOUND", 5},
                                                     {"MAX_WAYPOINTS_EXCEEDED", 7},
                                                     {"UNKNOWN_ERROR", 6},
                                                     {"", 6},
                                                     {"ok", 6}};
  for (const auto& [word, status] : kWords)
    EXPECT_EQ(StatusOf(provider::kGoogle, std::string("{\"status\":\"") + word + "\"}"), status);
}

TEST(GoogleReply, TellsWhatItLacks) {
  EXPECT_EQ(StatusOf(provider::kGoogle, ""), 4u);
  EXPECT_EQ(StatusOf(provider::kGoogle, "<html>busy</html>"), 4u);
  EXPECT_EQ(StatusOf(provider::kGoogle, "{\"routes\":[]}"), 4u);
  EXPECT_EQ(StatusOf(provider::kGoogle, "{\"status\":\"OK\"}"), 6u);
  EXPECT_EQ(StatusOf(provider::kGoogle, "{\"status\":\"OK\",\"routes\":[]}"), 6u);
  EXPECT_EQ(StatusOf(provider::kGoogle, "{\"status\":\"OK\",\"routes\":[{\"legs\":[{}]}]}"), 6u);
}

TEST(GoogleReply, HasNoLegsInARouteWithoutLegs) {
  EXPECT_EQ(StatusOf(provider::kGoogle, "{\"status\":\"OK\",\"routes\":[{\"legs\":[]}]}"), 0u);
}

TEST(HereReply, BecomesOneLeg) {
  const Legs legs = ReadSample(provider::kHere);
  ASSERT_EQ(legs.size(), 1u);
  EXPECT_EQ(PositionsOf(legs[0].path), (Positions{{48.5, 7.25}, {48.75, 7.5}}));
  EXPECT_EQ(NamesOf(legs[0].path), (Names{"Rue A", "Rue B"}));
  EXPECT_EQ(PositionsOf(legs[0].shape.points),
            (Positions{{48.5, 7.25}, {48.625, 7.375}, {48.75, 7.5}}));
  ExpectMeasure(legs[0].measure, 33451, 1800);
  EXPECT_TRUE(legs[0].steps.empty());
  EXPECT_EQ(StatusOf(provider::kHere, "{\"response\":{\"route\":[]}}"), 4u);
  EXPECT_EQ(StatusOf(provider::kHere, "{\"type\":\"ApplicationError\"}"), 4u);
}

TEST(TomTomReply, BecomesALegForEachOfItsLegs) {
  const Legs legs = ReadSample(provider::kTomTom);
  ASSERT_EQ(legs.size(), 2u);
  ExpectMeasure(legs[0].measure, 1000, 100);
  ExpectMeasure(legs[1].measure, 2000, 200);
  EXPECT_EQ(PositionsOf(legs[0].shape.points),
            (Positions{{48.5, 7.25}, {48.55, 7.3}, {48.6, 7.35}}));
  EXPECT_EQ(PositionsOf(legs[0].path), (Positions{{48.5, 7.25}, {48.6, 7.35}}));
  EXPECT_EQ(PositionsOf(legs[1].path), (Positions{{48.6, 7.35}, {48.7, 7.4}}));
  EXPECT_EQ(StatusOf(provider::kTomTom, "{\"error\":{\"description\":\"no\"}}"), 4u);
  EXPECT_EQ(StatusOf(provider::kTomTom, "<h1>Developer Inactive</h1>"), 4u);
}

TEST(BingReply, CutsTheLineOfTheRouteIntoLegs) {
  const Legs legs = ReadSample(provider::kBing);
  ASSERT_EQ(legs.size(), 2u);
  EXPECT_EQ(PositionsOf(legs[0].path), (Positions{{48.5, 7.1}, {48.7, 7.3}}));
  EXPECT_EQ(PositionsOf(legs[0].shape.points), (Positions{{48.5, 7.1}, {48.6, 7.2}, {48.7, 7.3}}));
  EXPECT_EQ(PositionsOf(legs[1].shape.points), (Positions{{48.7, 7.3}, {48.8, 7.4}, {48.9, 7.5}}));
  ExpectMeasure(legs[0].measure, 1235, 90);
  ExpectMeasure(legs[1].measure, 2000, 121);
  ASSERT_EQ(legs[0].steps.size(), 2u);
  EXPECT_EQ(legs[0].steps[1].instruction, "Turn");
  EXPECT_DOUBLE_EQ(legs[0].steps[1].latitude, 48.6);
  EXPECT_DOUBLE_EQ(legs[0].steps[1].longitude, 7.2);
}

TEST(BingReply, SurvivesIndicesOutsideTheLine) {
  for (const char* const index : {"-3", "1e300", "77"}) {
    std::string reply = SampleReplyOf(provider::kBing);
    reply.replace(reply.find("[4]"), 3, std::string("[") + index + "]");
    Legs legs;
    EXPECT_EQ(Read(provider::kBing, reply, legs), 0u);
    EXPECT_EQ(legs.size(), 2u);
    EXPECT_EQ(PositionsOf(legs[1].shape.points).front(), std::make_pair(48.7, 7.3));
  }
}

TEST(BingReply, FailsUnlessItsStatusIs200) {
  EXPECT_EQ(StatusOf(provider::kBing, "{\"statusCode\":401,\"resourceSets\":[]}"), 6u);
  EXPECT_EQ(StatusOf(provider::kBing, "{\"statusCode\":200,\"resourceSets\":[]}"), 6u);
  EXPECT_EQ(StatusOf(provider::kBing, "{\"resourceSets\":[]}"), 4u);
  EXPECT_EQ(StatusOf(provider::kBing, "{\"statusCode\":\"200\"}"), 4u);
}

TEST(ViaMichelinReply, BecomesOneLeg) {
  const Legs legs = ReadSample(provider::kViaMichelin);
  ASSERT_EQ(legs.size(), 1u);
  const CRouteData& leg = legs[0];
  ASSERT_EQ(leg.steps.size(), 2u);
  ExpectStep(leg.steps[0], 48.5, 7.25, 100, 13, "Turn left, towards B, Rue C");
  ExpectStep(leg.steps[1], 48.5, 7.5, 50, 7, "Arrive, 35.5");
  ExpectMeasure(leg.measure, 150, 20);
  EXPECT_EQ(PositionsOf(leg.shape.points), (Positions{{48.5, 7.25}, {48.5, 7.75}}));
  EXPECT_EQ(PositionsOf(leg.path), (Positions{{48.5, 7.25}, {48.5, 7.75}}));
}

TEST(ViaMichelinReply, MustBeTheCallThatWasAskedFor) {
  for (const char* const text : {"", "HTTPResponse", "HTTPResponseLoaded", "{\"header\":{}}",
                                 "Other({\"header\":{}})", "HTTPResponseLoaded({\"a\":1})"})
    EXPECT_EQ(StatusOf(provider::kViaMichelin, text), 4u) << text;
}

TEST(ViaMichelinReply, TellsTheServicesErrors) {
  EXPECT_EQ(StatusOf(provider::kViaMichelin, R"(HTTPResponseLoaded({"error":{"errorCode":21}}))"),
            121u);
  EXPECT_EQ(StatusOf(provider::kViaMichelin, R"(HTTPResponseLoaded({"error":{"text":"x"}}))"), 4u);
}

TEST(OsrmReply, BecomesOneLeg) {
  const Legs legs = ReadSample(provider::kOsrm);
  ASSERT_EQ(legs.size(), 1u);
  EXPECT_EQ(PositionsOf(legs[0].shape.points), kThreePoints);
  EXPECT_EQ(PositionsOf(legs[0].path), (Positions{{38.5, -120.2}, {43.252, -126.453}}));
  EXPECT_EQ(NamesOf(legs[0].path), (Names{"First", ""}));
  ExpectMeasure(legs[0].measure, 1234, 62);
  EXPECT_EQ(StatusOf(provider::kOsrm, "{\"code\":\"NoRoute\"}"), 6u);
  EXPECT_EQ(StatusOf(provider::kOsrm, "{\"code\":\"Ok\"}"), 6u);
  EXPECT_EQ(StatusOf(provider::kOsrm, "{\"message\":\"x\"}"), 4u);
}

TEST(IgnReply, BecomesOneLeg) {
  const Legs legs = ReadSample(provider::kIgn);
  ASSERT_EQ(legs.size(), 1u);
  EXPECT_EQ(PositionsOf(legs[0].shape.points),
            (Positions{{48.5, 7.25}, {48.625, 7.375}, {48.75, 7.5}}));
  EXPECT_EQ(PositionsOf(legs[0].path), (Positions{{48.5, 7.25}, {48.75, 7.5}}));
  ExpectMeasure(legs[0].measure, 1234, 62);
  EXPECT_EQ(StatusOf(provider::kIgn, "{\"status\":\"ERROR\"}"), 6u);
  EXPECT_EQ(StatusOf(provider::kIgn, "{\"status\":\"OK\"}"), 6u);
  EXPECT_EQ(StatusOf(provider::kIgn, "{}"), 4u);
}

TEST(IgnReply, SurvivesEveryKindOfLine) {
  for (const char* const wkt : {"", "LINESTRING", "LINESTRING (", "LINESTRING )(", "POINT (1 2)",
                                "LINESTRING ()", "LINESTRING (1)", "LINESTRING (a b, , 1 2)"}) {
    Legs legs;
    EXPECT_EQ(Read(provider::kIgn,
                   std::string(R"({"status":"OK","durationSeconds":"x","distanceMeters":"",)") +
                       R"("geometryWkt":")" + wkt + "\"}",
                   legs),
              0u);
    ASSERT_EQ(legs.size(), 1u);
    ExpectMeasure(legs[0].measure, 0, 0);
  }
}

TEST(WazeReply, BecomesOneLeg) {
  const Legs legs = ReadSample(provider::kWazeUs);
  ASSERT_EQ(legs.size(), 1u);
  EXPECT_EQ(PositionsOf(legs[0].shape.points), (Positions{{48.5, 7.25}, {48.75, 7.5}}));
  ASSERT_EQ(legs[0].steps.size(), 2u);
  ExpectStep(legs[0].steps[0], 48.5, 7.25, 300, 20, "");
  ExpectStep(legs[0].steps[1], 48.625, 7.375, 400, 31, "");
  ExpectMeasure(legs[0].measure, 700, 51);
  EXPECT_EQ(StatusOf(provider::kWazeUs, R"({"error":{"code":1}})"), 4u);
  EXPECT_EQ(StatusOf(provider::kWazeUs, R"({"coords":[]})"), 4u);
}

TEST(OpenRouteReply, IsNeverRead) {
  for (const char* const text : {"", "{}", "<xls/>", "anything"})
    EXPECT_EQ(StatusOf(provider::kOpenRouteService, text), 4u);
}

TEST(TripyReply, BecomesOneLeg) {
  const Legs legs = ReadSample(provider::kTripy);
  ASSERT_EQ(legs.size(), 1u);
  EXPECT_EQ(PositionsOf(legs[0].shape.points), (Positions{{48.5, 7.25}, {48.75, 7.5}}));
  ASSERT_EQ(legs[0].steps.size(), 1u);
  EXPECT_EQ(legs[0].steps[0].name, "Turn left");
  ExpectStep(legs[0].steps[0], 48.6, 7.3, 0, 0, "Turn left");
  EXPECT_EQ(StatusOf(provider::kTripy, "<gpx></gpx>"), 1u);
  EXPECT_EQ(StatusOf(provider::kTripy, "<gpx>"), 4u);
  EXPECT_EQ(StatusOf(provider::kTripy, ""), 4u);
}

TEST(OrsReply, BecomesALegForEachSegment) {
  const Legs legs = ReadSample(provider::kOrs);
  ASSERT_EQ(legs.size(), 2u);
  ExpectMeasure(legs[0].measure, 100, 11);
  ExpectMeasure(legs[1].measure, 200, 20);
  EXPECT_EQ(PositionsOf(legs[0].shape.points), (Positions{kThreePoints[0], kThreePoints[1]}));
  EXPECT_EQ(PositionsOf(legs[1].shape.points), (Positions{kThreePoints[1], kThreePoints[2]}));
  EXPECT_EQ(PositionsOf(legs[1].path), (Positions{kThreePoints[1], kThreePoints[2]}));
  ASSERT_EQ(legs[0].steps.size(), 2u);
  ExpectStep(legs[0].steps[0], 38.5, -120.2, 100, 11, "Head north");
  ExpectStep(legs[0].steps[1], 40.7, -120.95, 0, 0, "Arrive");
}

TEST(OrsReply, TellsTheServicesErrors) {
  const auto coded = [](int code) {
    return StatusOf(provider::kOrs, "{\"error\":{\"code\":" + std::to_string(code) + "}}");
  };
  EXPECT_EQ(coded(2009), 1u);
  EXPECT_EQ(coded(2010), 5u);
  EXPECT_EQ(coded(2004), 7u);
  EXPECT_EQ(coded(2001), 4u);
  EXPECT_EQ(coded(2099), 6u);
  EXPECT_EQ(StatusOf(provider::kOrs, R"({"error":"Rate limit exceeded"})"), 2u);
  EXPECT_EQ(StatusOf(provider::kOrs, R"({"error":"Access to this API has been disallowed"})"), 3u);
  EXPECT_EQ(StatusOf(provider::kOrs, "{}"), 4u);
}

TEST(HereV8Reply, BecomesALegForEachSection) {
  const Legs legs = ReadSample(provider::kHereV8);
  ASSERT_EQ(legs.size(), 1u);
  EXPECT_EQ(
      PositionsOf(legs[0].shape.points),
      (Positions{
          {50.10228, 8.69821}, {50.10201, 8.69567}, {50.10063, 8.69150}, {50.09878, 8.68752}}));
  ExpectMeasure(legs[0].measure, 900, 60);
  ASSERT_EQ(legs[0].steps.size(), 2u);
  ExpectStep(legs[0].steps[0], 50.10228, 8.69821, 500, 40, "Head west");
  ExpectStep(legs[0].steps[1], 50.10063, 8.69150, 400, 20, "Turn left");
}

TEST(HereV8Reply, TellsTheServicesErrors) {
  const auto noted = [](const char* code) {
    return StatusOf(provider::kHereV8,
                    std::string(R"({"routes":[],"notices":[{"code":")") + code + "\"}]}");
  };
  EXPECT_EQ(noted("noRouteFound"), 1u);
  EXPECT_EQ(noted("couldNotMatchOrigin"), 5u);
  EXPECT_EQ(noted("couldNotMatchDestination"), 5u);
  EXPECT_EQ(StatusOf(provider::kHereV8, R"({"routes":[]})"), 1u);
  EXPECT_EQ(StatusOf(provider::kHereV8, R"({"error":"Unauthorized"})"), 3u);
  EXPECT_EQ(StatusOf(provider::kHereV8, R"({"title":"x","status":400})"), 4u);
  EXPECT_EQ(StatusOf(provider::kHereV8, R"({"title":"x","status":403})"), 3u);
  EXPECT_EQ(StatusOf(provider::kHereV8, R"({"title":"x","status":429})"), 2u);
  EXPECT_EQ(StatusOf(provider::kHereV8, R"({"title":"x","status":500})"), 6u);
}

TEST(GoogleRoutesReply, BecomesLegs) {
  const Legs legs = ReadSample(provider::kGoogleRoutes);
  ASSERT_EQ(legs.size(), 1u);
  EXPECT_EQ(PositionsOf(legs[0].shape.points), kThreePoints);
  EXPECT_EQ(PositionsOf(legs[0].path), (Positions{kThreePoints[0], kThreePoints[2]}));
  ExpectMeasure(legs[0].measure, 1234, 62);
  ASSERT_EQ(legs[0].steps.size(), 2u);
  // A longitude of 0 is left out by the service.
  ExpectStep(legs[0].steps[0], 38.5, 0.0, 400, 20, "Head north");
  ExpectStep(legs[0].steps[1], 40.7, -120.95, 0, 0, "");
}

TEST(GoogleRoutesReply, TellsTheServicesErrors) {
  const auto worded = [](const char* word) {
    return StatusOf(provider::kGoogleRoutes,
                    std::string(R"({"error":{"code":400,"status":")") + word + "\"}}");
  };
  EXPECT_EQ(worded("INVALID_ARGUMENT"), 4u);
  EXPECT_EQ(worded("PERMISSION_DENIED"), 3u);
  EXPECT_EQ(worded("UNAUTHENTICATED"), 3u);
  EXPECT_EQ(worded("RESOURCE_EXHAUSTED"), 2u);
  EXPECT_EQ(worded("NOT_FOUND"), 5u);
  EXPECT_EQ(worded("INTERNAL"), 6u);
  EXPECT_EQ(StatusOf(provider::kGoogleRoutes, "{}"), 1u);
}

TEST(GeoplateformeReply, BecomesALegForEachPortion) {
  const Legs legs = ReadSample(provider::kGeoplateforme);
  ASSERT_EQ(legs.size(), 1u);
  ExpectMeasure(legs[0].measure, 100, 11);
  EXPECT_EQ(PositionsOf(legs[0].shape.points),
            (Positions{{48.5, 7.25}, {48.6, 7.3}, {48.65, 7.35}}));
  ASSERT_EQ(legs[0].steps.size(), 2u);
  ExpectStep(legs[0].steps[0], 48.5, 7.25, 60, 6, "Set off: RUE A");
  ExpectStep(legs[0].steps[1], 48.6, 7.3, 40, 5, "Turn left");
  EXPECT_EQ(StatusOf(provider::kGeoplateforme, R"({"error":{"message":"No path found"}})"), 1u);
  EXPECT_EQ(StatusOf(provider::kGeoplateforme, R"({"error":{"message":"Bad parameter"}})"), 4u);
  EXPECT_EQ(StatusOf(provider::kGeoplateforme, R"({"error":"down"})"), 6u);
}

TEST(ValhallaReply, BecomesLegs) {
  const Legs legs = ReadSample(provider::kValhalla);
  ASSERT_EQ(legs.size(), 1u);
  EXPECT_EQ(PositionsOf(legs[0].shape.points), (Positions{{48.5, 7.25}, {48.75, 7.5}}));
  ExpectMeasure(legs[0].measure, 1234, 62);
  ASSERT_EQ(legs[0].steps.size(), 2u);
  ExpectStep(legs[0].steps[0], 48.5, 7.25, 1234, 62, "Drive north");
  ExpectStep(legs[0].steps[1], 48.75, 7.5, 0, 0, "You have arrived");
}

TEST(ValhallaReply, TellsTheServersErrors) {
  const auto coded = [](int code) {
    return StatusOf(provider::kValhalla, "{\"error_code\":" + std::to_string(code) + "}");
  };
  EXPECT_EQ(coded(442), 1u);
  EXPECT_EQ(coded(170), 1u);
  EXPECT_EQ(coded(171), 5u);
  EXPECT_EQ(coded(154), 7u);
  EXPECT_EQ(coded(110), 4u);
  EXPECT_EQ(coded(299), 6u);
  EXPECT_EQ(StatusOf(provider::kValhalla, R"({"trip":{"status":5}})"), 6u);
}

TEST(BRouterReply, BecomesOneLegWithAltitudes) {
  const Legs legs = ReadSample(provider::kBRouter);
  ASSERT_EQ(legs.size(), 1u);
  EXPECT_EQ(PositionsOf(legs[0].shape.points), (Positions{{48.5, 7.25}, {48.75, 7.5}}));
  EXPECT_DOUBLE_EQ(legs[0].shape.points.points.front()->altitude, 210.5);
  EXPECT_DOUBLE_EQ(legs[0].path.points.front()->altitude, 210.5);
  ExpectMeasure(legs[0].measure, 1234, 61);
}

TEST(BRouterReply, TellsTheServersErrors) {
  EXPECT_EQ(StatusOf(provider::kBRouter, "from-position not mapped in existing datafile"), 5u);
  EXPECT_EQ(StatusOf(provider::kBRouter, "datafile E5_N45.rd5 not found"), 5u);
  EXPECT_EQ(StatusOf(provider::kBRouter, "no track found at pass=0"), 1u);
  EXPECT_EQ(StatusOf(provider::kBRouter, "target island detected for section 0"), 1u);
  EXPECT_EQ(StatusOf(provider::kBRouter, "operation killed by thread-priority-watchdog"), 7u);
  EXPECT_EQ(StatusOf(provider::kBRouter, "unknown profile"), 4u);
}

}  // namespace
