// What the providers below 100 ask.

#include <chrono>

#include "services/service_table.h"
#include "tests/services/directions/router_asked.h"

namespace {

using Clock = std::chrono::steady_clock;

const CGpsPointList& Pair() {
  static const CGpsPointList points = PointsOf({{48.5, 7.25}, {49, -1.1234567}});
  return points;
}
const CGpsPointList& Three() {
  static const CGpsPointList points = PointsOf({{48.5, 7.25}, {48.75, 7}, {49, -1}});
  return points;
}

TEST(GoogleRequest, AsksForFirstAndLastPointOnly) {
  const ServiceValuesForTest values({{"google", ValuesOf("K_-1", "en", "http://we.example/")}});
  const CHttpRequestSpec spec = AskedOf(provider::kGoogle, Three(), kCar);
  EXPECT_EQ(spec.url,
            "http://server/maps/api/directions/json?sensor=false&units=metric&language=en&key=K_-1"
            "&mode=driving&origin=48.500000,7.250000&destination=49.000000,-1.000000");
  EXPECT_EQ(spec.postData, "");
  EXPECT_EQ(spec.referrer, "http://we.example/");
  EXPECT_TRUE(spec.headers.empty());
}

TEST(GoogleRequest, TellsModeAndAvoidances) {
  const ServiceValuesForTest values({{"google", ValuesOf("", "")}});
  const std::string kHead =
      "http://server/maps/api/directions/json?sensor=false&units=metric&key=&mode=";
  const std::string kTail = "&origin=48.500000,7.250000&destination=49.000000,-1.123457";
  EXPECT_EQ(AskedOf(provider::kGoogle, Pair(), kPedestrian).url, kHead + "walking" + kTail);
  EXPECT_EQ(AskedOf(provider::kGoogle, Pair(), kBicycle).url, kHead + "bicycling" + kTail);
  for (const uint32_t mode : {0u, 2u, 5u, 6u, 7u})
    EXPECT_EQ(AskedOf(provider::kGoogle, Pair(), mode).url, kHead + "driving" + kTail);

  using A = AvoidanceOptions;
  const auto avoiding = [&](std::initializer_list<bool A::*> kinds) {
    return AskedOf(provider::kGoogle, Pair(), kCar, Without(kinds)).url;
  };
  EXPECT_EQ(avoiding({&A::motorways}), kHead + "driving&avoid=highways" + kTail);
  EXPECT_EQ(avoiding({&A::tolls}), kHead + "driving&avoid=tolls" + kTail);
  EXPECT_EQ(avoiding({&A::boatFerries}), kHead + "driving&avoid=ferries" + kTail);
  EXPECT_EQ(avoiding({&A::boatFerries, &A::tolls, &A::motorways}),
            kHead + "driving&avoid=highways|tolls|ferries" + kTail);
  EXPECT_EQ(avoiding({&A::railFerries, &A::tunnels, &A::dirtRoads}), kHead + "driving" + kTail);
}

TEST(GoogleRequest, IsHeldATenthOfASecondApart) {
  const ServiceValuesForTest values({{"google", ValuesOf("", "")}});
  AskedOf(provider::kGoogle, Pair(), kCar);
  const auto start = Clock::now();
  AskedOf(provider::kGoogle, Pair(), kCar);
  AskedOf(provider::kGoogle, Pair(), kCar);
  EXPECT_GE(Clock::now() - start, std::chrono::milliseconds(195));
}

TEST(HereRequest, TellsAllPoints) {
  const ServiceValuesForTest values({{"here", ValuesOf("CODE", "en-US", "", "ID")}});
  EXPECT_EQ(AskedOf(provider::kHere, Three(), kCar).url,
            "http://server/routing/7.2/calculateroute.json?metricsystem=metric"
            "&representation=overview&routeattributes=shape&app_id=ID&app_code=CODE&language=en-US"
            "&mode=fastest;car;traffic:disabled&waypoint0=geo!48.500000,7.250000"
            "&waypoint1=geo!48.750000,7.000000&waypoint2=geo!49.000000,-1.000000");
}

std::string HereMode(uint32_t travelMode, const CRouteOptions& options) {
  const ServiceValuesForTest values({{"here", ValuesOf("", "")}});
  const std::string url = AskedOf(provider::kHere, Pair(), travelMode, options).url;
  const std::string mode = Behind(url, "routeattributes=shape&app_id=&app_code=&mode=");
  return mode.substr(0, mode.find("&waypoint0"));
}

TEST(HereRequest, TellsTypeModeAndAvoidances) {
  EXPECT_EQ(HereMode(kCar, OfType(2)), "shortest;car;traffic:disabled");
  EXPECT_EQ(HereMode(kTruckMode, OfType(4)), "fastest;truck;traffic:disabled");
  EXPECT_EQ(HereMode(kPedestrian, OfType(1)), "fastest;pedestrian;traffic:disabled");
  EXPECT_EQ(HereMode(kBicycle, OfType(0)), "fastest;bicycle;traffic:disabled");
  EXPECT_EQ(HereMode(kMotorcycle, OfType(0)), "fastest;traffic:disabled");
  using A = AvoidanceOptions;
  EXPECT_EQ(HereMode(kCar, Without({&A::dirtRoads, &A::tunnels, &A::railFerries, &A::boatFerries,
                                    &A::tolls, &A::motorways})),
            "fastest;car;traffic:disabled;motorway:-2;tollroad:-2;boatFerry:-2;railFerry:-2"
            ";tunnel:-2;dirtRoad:-2");
}

TEST(HereRequest, TellsTheTruck) {
  TruckOptions truck;
  EXPECT_EQ(HereMode(kTruckMode, truck), "fastest;truck;traffic:disabled");
  truck.tractor = true;
  truck.trailers = 2;
  truck.limitedWeight = 405;
  truck.weightPerAxle = 119;
  truck.height = 40;
  truck.width = 25;
  truck.length = 165;
  truck.hazardCategory = 3;
  truck.tolls = false;
  EXPECT_EQ(HereMode(kTruckMode, truck),
            "fastest;truck;traffic:disabled;tollroad:-2&truckType=tractorTruck&trailersCount=2"
            "&limitedWeight=40&weightPerAxle=11&height=4&width=2.5&length=16.5"
            "&shippedHazardousGoods=explosive");
}

TEST(HereRequest, NamesEveryHazard) {
  const char* const kNames[] = {"explosive",      "gas",       "flammable",
                                "combustible",    "organic",   "poison",
                                "radioActive",    "corrosive", "poisonousInhalation",
                                "harmfulToWater", "other",     "allhazardousGoods"};
  TruckOptions truck;
  uint32_t category = 3;
  for (const char* const name : kNames) {
    truck.hazardCategory = category++;
    EXPECT_EQ(HereMode(kTruckMode, truck),
              std::string("fastest;truck;traffic:disabled&shippedHazardousGoods=") + name);
  }
  for (const uint32_t none : {0u, 1u, 2u, 15u}) {
    truck.hazardCategory = none;
    EXPECT_EQ(HereMode(kTruckMode, truck), "fastest;truck;traffic:disabled");
  }
}

TEST(HereRequest, KeepsAwayFromParksWhereOptionsCanSaySo) {
  class ParkOptions : public AvoidanceOptions {
   public:
    uint32_t Capabilities() const override { return 32; }
  };
  ParkOptions options;
  EXPECT_EQ(HereMode(kCar, options), "fastest;car;traffic:disabled");
  options.motorways = false;
  EXPECT_EQ(HereMode(kCar, options), "fastest;car;traffic:disabled;park:-2");
}

std::string TomTomTail(uint32_t travelMode, const CRouteOptions& options) {
  return Behind(AskedOf(provider::kTomTom, Pair(), travelMode, options).url, "&traffic=false");
}

TEST(TomTomRequest, TellsAllPointsAndTheKeyOfItsNumber) {
  const ServiceValuesForTest values(
      {{"tomtom", ValuesOf("FIVE", "en")}, {"tomtom-6", ValuesOf("SIX", "")}});
  EXPECT_EQ(AskedOf(provider::kTomTom, Three(), kCar).url,
            "http://server/routing/1/calculateRoute/48.500000,7.250000:48.750000,7.000000:"
            "49.000000,-1.000000/json?key=FIVE&traffic=false&language=en&travelMode=car");
  EXPECT_EQ(AskedOf(provider::kTomTom6, Pair(), kBus).url,
            "http://server/routing/1/calculateRoute/48.500000,7.250000:49.000000,-1.123457/json"
            "?key=SIX&traffic=false&travelMode=bus");
}

TEST(TomTomRequest, TellsModeTypeAndAvoidances) {
  const ServiceValuesForTest values({{"tomtom", ValuesOf("", "")}});
  const char* const kModes[] = {"car",        "truck", "pedestrian", "bicycle",
                                "motorcycle", "van",   "bus"};
  uint32_t mode = 1;
  for (const char* const name : kModes)
    EXPECT_EQ(TomTomTail(mode++, OfType(2)), std::string("&travelMode=") + name);

  EXPECT_EQ(TomTomTail(kCar, Without({}, 1)), "&travelMode=car&routeType=fastest");
  EXPECT_EQ(TomTomTail(kCar, Without({}, 2)), "&travelMode=car&routeType=shortest");
  EXPECT_EQ(TomTomTail(kCar, Without({}, 4)), "&travelMode=car&routeType=eco");
  EXPECT_EQ(TomTomTail(kCar, Without({}, 5)), "&travelMode=car&routeType=thrilling");
  using A = AvoidanceOptions;
  EXPECT_EQ(TomTomTail(kCar, Without({&A::motorways, &A::tolls, &A::boatFerries, &A::dirtRoads,
                                      &A::railFerries, &A::tunnels},
                                     1)),
            "&travelMode=car&routeType=fastest&avoid=motorways&avoid=tollRoads&avoid=ferries"
            "&avoid=unpavedRoads");
}

TEST(TomTomRequest, TellsTheCharacterOfAThrillingWayOnly) {
  const ServiceValuesForTest values({{"tomtom", ValuesOf("", "")}});
  RouteCharacterOptions options;
  options.mode = kThrilling;
  EXPECT_EQ(TomTomTail(kMotorcycle, options),
            "&travelMode=motorcycle&routeType=thrilling&hilliness=normal&windingness=normal");
  options.avoidUsedRoads = false;
  options.hilliness = kHigh;
  options.windingness = kLow;
  EXPECT_EQ(TomTomTail(kMotorcycle, options),
            "&travelMode=motorcycle&routeType=thrilling&avoid=alreadyUsedRoads&hilliness=high"
            "&windingness=low");
  options.mode = kFastest;
  EXPECT_EQ(TomTomTail(kMotorcycle, options), "&travelMode=motorcycle&routeType=fastest");
}

TEST(TomTomRequest, HasItsOwnPace) {
  const ServiceValuesForTest values({{"tomtom", ValuesOf("", "")}, {"tomtom-6", ValuesOf("", "")}});
  AskedOf(provider::kTomTom, Pair(), kCar);
  const auto start = Clock::now();
  AskedOf(provider::kTomTom6, Pair(), kCar);
  AskedOf(provider::kTomTom, Pair(), kCar);
  EXPECT_GE(Clock::now() - start, std::chrono::milliseconds(195));
}

TEST(BingRequest, TellsAllPoints) {
  const ServiceValuesForTest values({{"bing", ValuesOf("K", "en-US", "http://we.example/")}});
  const CHttpRequestSpec spec = AskedOf(provider::kBing, Three(), kCar, OfType(1));
  EXPECT_EQ(spec.url,
            "http://server/REST/V1/Routes/Driving?o=json&rpo=Points&du=km&optmz=time"
            "&wp.0=48.500000,7.250000&wp.1=48.750000,7.000000&wp.2=49.000000,-1.000000"
            "&key=K&c=en-US");
  EXPECT_EQ(spec.referrer, "http://we.example/");
}

TEST(BingRequest, TellsModeTypeAndAvoidances) {
  const ServiceValuesForTest values({{"bing", ValuesOf("", "")}});
  const std::string kPoints = "&wp.0=48.500000,7.250000&wp.1=49.000000,-1.123457&key=";
  const std::string kWalking =
      "http://server/REST/V1/Routes/Walking?o=json&rpo=Points&du=km&optmz=distance" + kPoints;
  EXPECT_EQ(AskedOf(provider::kBing, Pair(), kPedestrian, OfType(2)).url, kWalking);
  EXPECT_EQ(AskedOf(provider::kBing, Pair(), kBicycle, OfType(2)).url, kWalking);
  using A = AvoidanceOptions;
  EXPECT_EQ(AskedOf(provider::kBing, Pair(), kTruckMode, Without({&A::motorways, &A::tolls})).url,
            "http://server/REST/V1/Routes/Driving?o=json&rpo=Points&du=km&optmz=time"
            "&avoid=highways&avoid=tolls" +
                kPoints);
}

TEST(ViaMichelinRequest, TellsAllPoints) {
  const ServiceValuesForTest values({{"viamichelin", ValuesOf("K", "eng")}});
  EXPECT_EQ(AskedOf(provider::kViaMichelin, Three(), kCar).url,
            "http://server/apir/1/iti.json/eng?charset=UTF-8&ie=UTF-8&distUnit=m&avoidBorders=true"
            "&avoidCCZ=false&avoidORC=false&multipleIti=false&itiIdx=0"
            "&callback=HTTPResponseLoaded&steps=1:7.250000:48.500000;1:7.000000:48.750000;"
            "1:-1.000000:49.000000&veht=0&itit=0&authkey=K");
}

TEST(ViaMichelinRequest, TellsVehicleTypeAndTolls) {
  const ServiceValuesForTest values({{"viamichelin", ValuesOf("", "")}});
  const auto tail = [](uint32_t mode, const CRouteOptions& options) {
    return Behind(AskedOf(provider::kViaMichelin, Pair(), mode, options).url, ":49.000000");
  };
  for (const uint32_t mode : {1u, 2u, 3u, 4u, 5u})
    EXPECT_EQ(tail(mode, OfType(0)), "&veht=" + std::to_string(mode - 1) + "&itit=0&authkey=");
  for (const uint32_t type : {1u, 2u, 3u, 4u})
    EXPECT_EQ(tail(kCar, OfType(type)), "&veht=0&itit=" + std::to_string(type) + "&authkey=");
  EXPECT_EQ(tail(kCar, Without({})), "&veht=0&itit=0&avoidTolls=false&authkey=");
  EXPECT_EQ(tail(kCar, Without({&AvoidanceOptions::tolls})),
            "&veht=0&itit=0&avoidTolls=true&authkey=");
}

TEST(OsrmRequest, TellsAllPointsLongitudeFirst) {
  const ServiceValuesForTest values({{"osrm", ValuesOf("", "en")}});
  EXPECT_EQ(AskedOf(provider::kOsrm, Three(), kBicycle, OfType(2)).url,
            "http://server/route/v1/driving/7.250000,48.500000;7.000000,48.750000;"
            "-1.000000,49.000000?overview=full");
}

TEST(IgnRequest, TellsModeTypeAndAvoidances) {
  const ServiceValuesForTest values({{"ign", ValuesOf("abc", "en", "http://we.example/")}});
  const std::string kHead =
      "http://server/abc/itineraire/rest/route.json?origin=7.250000,48.500000"
      "&destination=-1.123457,49.000000";
  const CHttpRequestSpec spec = AskedOf(provider::kIgn, Pair(), kCar);
  EXPECT_EQ(spec.url, kHead + "&graphName=Voiture&method=TIME");
  EXPECT_EQ(spec.referrer, "http://we.example/");
  EXPECT_EQ(AskedOf(provider::kIgn, Pair(), kPedestrian, OfType(2)).url,
            kHead + "&graphName=Pieton&method=DISTANCE");
  using A = AvoidanceOptions;
  EXPECT_EQ(AskedOf(provider::kIgn, Pair(), kCar, Without({&A::tolls, &A::tunnels})).url,
            kHead + "&graphName=Voiture&method=TIME&exclusions=Tunnel&exclusions=toll");
}

TEST(WazeRequest, TellsBothEnds) {
  ServiceValues us;
  us.url = "http://server/RoutingManager";
  ServiceValues world;
  world.url = "http://server/row-RoutingManager";
  const ServiceValuesForTest values({{"waze-us", us}, {"waze-world", world}});
  const std::string kQuery =
      "/routingRequest?returnJSON=true&returnGeometries=true&returnInstructions=true"
      "&timeout=60000&nPaths=1&from=x:7.250000+y:48.500000&to=x:-1.123457+y:49.000000";
  EXPECT_EQ(AskedOf(provider::kWazeUs, Pair(), 0).url, "http://server/RoutingManager" + kQuery);
  const auto start = Clock::now();
  EXPECT_EQ(AskedOf(provider::kWazeWorld, Pair(), 0).url,
            "http://server/row-RoutingManager" + kQuery);
  EXPECT_GE(Clock::now() - start, std::chrono::milliseconds(490));
}

TEST(WazeRequest, RefusesModesAndThirdPoints) {
  CHttpRequestSpec spec;
  EXPECT_EQ(RouterOf(provider::kWazeUs)->BuildRequest(Pair(), kCar, {}, spec), 4u);
  EXPECT_EQ(RouterOf(provider::kWazeUs)->BuildRequest(Three(), 0, {}, spec), 8u);
}

TEST(OpenRouteRequest, SendsAForm) {
  const ServiceValuesForTest values({{"openrouteservice", ValuesOf("", "en")}});
  const CHttpRequestSpec spec = AskedOf(provider::kOpenRouteService, Three(), kCar);
  EXPECT_EQ(spec.url, "http://server/php/OpenLSRS_DetermineRoute.php");
  EXPECT_EQ(spec.postData,
            "Start=7.250000,48.500000&End=-1.000000,49.000000&Via=7.000000,48.750000"
            "&routepref=Fastest&lang=en");
}

TEST(OpenRouteRequest, TellsModeTypeAndAvoidances) {
  const ServiceValuesForTest values({{"openrouteservice", ValuesOf("", "")}});
  const auto tail = [](uint32_t mode, const CRouteOptions& options) {
    return Behind(AskedOf(provider::kOpenRouteService, Pair(), mode, options).postData,
                  "&End=-1.123457,49.000000");
  };
  EXPECT_EQ(tail(kBicycle, OfType(2)), "&routepref=Bicycle");
  EXPECT_EQ(tail(kPedestrian, OfType(2)), "&routepref=Pedestrian");
  EXPECT_EQ(tail(kCar, OfType(2)), "&routepref=Shortest");
  using A = AvoidanceOptions;
  EXPECT_EQ(tail(kCar, Without({&A::tolls, &A::motorways}, 1)),
            "&routepref=Fastest&noMotorways=true&noTollways=true");
}

TEST(RouterRequests, EscapeWhatWouldBreakThem) {
  const ServiceValuesForTest values({{"bing", ValuesOf("a&b c", "en")}});
  EXPECT_EQ(Behind(AskedOf(provider::kBing, Pair(), kCar).url, "-1.123457"), "&key=a%26b%20c&c=en");
}

TEST(MaximalPoints, AreThoseOfTheServices) {
  const std::pair<int32_t, size_t> kMost[] = {{provider::kGoogle, 23},
                                              {provider::kBing, 25},
                                              {provider::kTomTom, 50},
                                              {provider::kTomTom6, 50},
                                              {provider::kViaMichelin, 8},
                                              {provider::kOsrm, 25},
                                              {provider::kIgn, 2},
                                              {provider::kWazeUs, 2},
                                              {provider::kWazeWorld, 2},
                                              {provider::kHere, 10},
                                              {provider::kOpenRouteService, 25}};
  for (const auto& [id, most] : kMost) {
    const auto router = RouterOf(id);
    EXPECT_EQ(router->GetMaxPoints(), most) << id;
    EXPECT_EQ(router->GetId(), id);
    EXPECT_EQ(router->Status(), 4u);
    EXPECT_FALSE(router->GetTravelModes().empty());
  }
}

}  // namespace
