// What our own providers, those from 100 on, ask.

#include "net/url.h"
#include "services/service_table.h"
#include "tests/services/directions/router_asked.h"

namespace {

using A = AvoidanceOptions;
using Headers = std::vector<std::pair<std::string, std::string>>;

const CGpsPointList& Pair() {
  static const CGpsPointList points = PointsOf({{48.5, 7.25}, {49, -1}});
  return points;
}
const CGpsPointList& Four() {
  static const CGpsPointList points = PointsOf({{48.5, 7.25}, {48.75, 7}, {48.875, 6}, {49, -1}});
  return points;
}

// A truck of 4 m height, 2.5 m width, 16.5 m length, 40.5 t, 11 t an axle, with gas.
TruckOptions Truck() {
  TruckOptions truck;
  truck.height = 40;
  truck.width = 25;
  truck.length = 165;
  truck.limitedWeight = 405;
  truck.weightPerAxle = 110;
  truck.hazardCategory = 4;
  truck.trailers = 1;
  truck.tractor = true;
  return truck;
}

TEST(OrsRequest, TellsAllPoints) {
  const ServiceValuesForTest values({{"ors", ValuesOf("KEY", "en")}});
  const CHttpRequestSpec spec = AskedOf(provider::kOrs, Four(), kCar);
  EXPECT_EQ(spec.url, "http://server/v2/directions/driving-car/json");
  EXPECT_EQ(spec.headers,
            (Headers{{"Authorization", "KEY"}, {"Content-Type", "application/json"}}));
  EXPECT_EQ(spec.postData,
            R"({"coordinates":[[7.250000,48.500000],[7.000000,48.750000],[6.000000,48.875000],)"
            R"([-1.000000,49.000000]],"preference":"fastest","units":"m","language":"en"})");
}

TEST(OrsRequest, TellsModeTypeAvoidancesAndTruck) {
  const ServiceValuesForTest values({{"ors", ValuesOf("", "")}});
  const auto asked = [](uint32_t mode, const CRouteOptions& options) {
    const CHttpRequestSpec spec = AskedOf(provider::kOrs, Pair(), mode, options);
    return Behind(spec.url, "/v2/directions/") + " " +
           Behind(spec.postData, "[-1.000000,49.000000]],");
  };
  EXPECT_EQ(asked(kPedestrian, OfType(2)),
            R"(foot-walking/json "preference":"shortest","units":"m"})");
  EXPECT_EQ(asked(kBicycle, Without({&A::boatFerries, &A::motorways})),
            R"(cycling-regular/json "preference":"fastest","units":"m",)"
            R"("options":{"avoid_features":["ferries"]}})");
  EXPECT_EQ(asked(kCar, Without({&A::boatFerries, &A::motorways, &A::tolls, &A::tunnels})),
            R"(driving-car/json "preference":"fastest","units":"m",)"
            R"("options":{"avoid_features":["highways","tollways","ferries"]}})");
  TruckOptions truck = Truck();
  truck.tolls = false;
  EXPECT_EQ(asked(kTruckMode, truck),
            R"(driving-hgv/json "preference":"fastest","units":"m",)"
            R"("options":{"avoid_features":["tollways"],"vehicle_type":"hgv","profile_params":)"
            R"({"restrictions":{"height":4,"width":2.5,"length":16.5,"weight":40.5,)"
            R"("axleload":11,"hazmat":true}}}})");
  EXPECT_EQ(asked(kCar, Truck()), R"(driving-car/json "preference":"fastest","units":"m"})");
}

TEST(HereV8Request, TellsAllPoints) {
  const ServiceValuesForTest values({{"here-v8", ValuesOf("KEY", "en-US")}});
  EXPECT_EQ(AskedOf(provider::kHereV8, Four(), kCar).url,
            "http://server/v8/routes?transportMode=car&routingMode=fast&origin=48.500000,7.250000"
            "&via=48.750000,7.000000&via=48.875000,6.000000&destination=49.000000,-1.000000"
            "&return=polyline,summary,actions,instructions&lang=en-US&apiKey=KEY");
}

TEST(HereV8Request, TellsModeTypeAvoidancesAndTruck) {
  const ServiceValuesForTest values({{"here-v8", ValuesOf("", "")}});
  const auto asked = [](uint32_t mode, const CRouteOptions& options) {
    const std::string text =
        Behind(AskedOf(provider::kHereV8, Pair(), mode, options).url, "?transportMode=");
    return text.substr(0, text.find("&origin="));
  };
  EXPECT_EQ(asked(kCar, OfType(2)), "car&routingMode=short");
  EXPECT_EQ(asked(kPedestrian, OfType(1)), "pedestrian&routingMode=fast");
  EXPECT_EQ(asked(kBicycle, OfType(1)), "bicycle&routingMode=fast");
  EXPECT_EQ(asked(kMotorcycle, OfType(1)), "scooter&routingMode=fast");
  EXPECT_EQ(asked(kBus, OfType(1)), "bus&routingMode=fast");
  EXPECT_EQ(asked(kCar, Without({&A::motorways, &A::tolls, &A::boatFerries, &A::railFerries,
                                 &A::tunnels, &A::dirtRoads})),
            "car&routingMode=fast&avoid[features]=controlledAccessHighway,tollRoad,ferry,"
            "carShuttleTrain,tunnel,dirtRoad");
  EXPECT_EQ(asked(kTruckMode, Truck()),
            "truck&routingMode=fast&vehicle[type]=tractor&vehicle[trailerCount]=1"
            "&vehicle[grossWeight]=40500&vehicle[weightPerAxle]=11000&vehicle[height]=400"
            "&vehicle[width]=250&vehicle[length]=1650&vehicle[shippedHazardousGoods]=gas");
  EXPECT_EQ(asked(kCar, Truck()), "car&routingMode=fast");
}

TEST(GoogleRoutesRequest, TellsAllPoints) {
  const ServiceValuesForTest values({{"google-routes", ValuesOf("KEY", "en")}});
  const CHttpRequestSpec spec = AskedOf(provider::kGoogleRoutes, Four(), kCar);
  EXPECT_EQ(spec.url, "http://server/directions/v2:computeRoutes");
  ASSERT_EQ(spec.headers.size(), 3u);
  EXPECT_EQ(spec.headers[0],
            std::make_pair(std::string("Content-Type"), std::string("application/json")));
  EXPECT_EQ(spec.headers[1], std::make_pair(std::string("X-Goog-Api-Key"), std::string("KEY")));
  EXPECT_EQ(spec.headers[2].first, "X-Goog-FieldMask");
  EXPECT_EQ(spec.headers[2].second.find("KEY"), std::string::npos);
  EXPECT_EQ(
      spec.postData,
      R"({"origin":{"location":{"latLng":{"latitude":48.500000,"longitude":7.250000}}},)"
      R"("destination":{"location":{"latLng":{"latitude":49.000000,"longitude":-1.000000}}},)"
      R"("intermediates":[{"location":{"latLng":{"latitude":48.750000,"longitude":7.000000}}},)"
      R"({"location":{"latLng":{"latitude":48.875000,"longitude":6.000000}}}],)"
      R"("travelMode":"DRIVE","routingPreference":"TRAFFIC_UNAWARE","languageCode":"en",)"
      R"("units":"METRIC"})");
}

TEST(GoogleRoutesRequest, TellsModeAndAvoidances) {
  const ServiceValuesForTest values({{"google-routes", ValuesOf("", "")}});
  const auto asked = [](uint32_t mode, const CRouteOptions& options) {
    return Behind(AskedOf(provider::kGoogleRoutes, Pair(), mode, options).postData,
                  R"("longitude":-1.000000}}},)");
  };
  const AvoidanceOptions none = Without({&A::motorways, &A::tolls, &A::boatFerries});
  EXPECT_EQ(asked(kPedestrian, none), R"("travelMode":"WALK","units":"METRIC"})");
  EXPECT_EQ(asked(kBicycle, none), R"("travelMode":"BICYCLE","units":"METRIC"})");
  EXPECT_EQ(
      asked(kMotorcycle, OfType(1)),
      R"("travelMode":"TWO_WHEELER","routingPreference":"TRAFFIC_UNAWARE","units":"METRIC"})");
  EXPECT_EQ(asked(kCar, none),
            R"("travelMode":"DRIVE","routingPreference":"TRAFFIC_UNAWARE","routeModifiers":)"
            R"({"avoidTolls":true,"avoidHighways":true,"avoidFerries":true},"units":"METRIC"})");
}

TEST(GeoplateformeRequest, TellsPointsModeTypeAndAvoidances) {
  const ServiceValuesForTest values({{"geoplateforme", ValuesOf("", "")}});
  const std::string kTail =
      "&getSteps=true&getBbox=false&distanceUnit=meter&timeUnit=second&geometryFormat=geojson"
      "&crs=EPSG:4326";
  EXPECT_EQ(AskedOf(provider::kGeoplateforme, Four(), kCar).url,
            "http://server/navigation/itineraire?resource=bdtopo-osrm&start=7.250000,48.500000"
            "&end=-1.000000,49.000000&intermediates=7.000000,48.750000|6.000000,48.875000"
            "&profile=car&optimization=fastest" +
                kTail);
  EXPECT_EQ(Behind(AskedOf(provider::kGeoplateforme, Pair(), kPedestrian, OfType(2)).url,
                   "&end=-1.000000,49.000000"),
            "&profile=pedestrian&optimization=shortest" + kTail);
  const std::string kBanned =
      "&constraints=%7B%22constraintType%22:%22banned%22,%22key%22:%22wayType%22,"
      "%22operator%22:%22%3D%22,%22value%22:%22";
  EXPECT_EQ(Behind(AskedOf(provider::kGeoplateforme, Pair(), kCar,
                           Without({&A::motorways, &A::tunnels, &A::tolls}))
                       .url,
                   "&optimization=fastest"),
            kBanned + "autoroute%22%7D" + kBanned + "tunnel%22%7D" + kTail);
}

TEST(ValhallaRequest, TellsAllPointsAsJson) {
  const ServiceValuesForTest values({{"valhalla", ValuesOf("", "en-US")}});
  const std::string kJson = UrlUnescape(
      Behind(AskedOf(provider::kValhalla, Four(), kCar).url, "http://server/route?json="));
  EXPECT_EQ(kJson, R"({"locations":[{"lat":48.500000,"lon":7.250000,"type":"break"},)"
                   R"({"lat":48.750000,"lon":7.000000,"type":"break"},)"
                   R"({"lat":48.875000,"lon":6.000000,"type":"break"},)"
                   R"({"lat":49.000000,"lon":-1.000000,"type":"break"}],)"
                   R"("costing":"auto","units":"kilometers","language":"en-US"})");
}

TEST(ValhallaRequest, TellsModeTypeAvoidancesAndTruck) {
  const ServiceValuesForTest values({{"valhalla", ValuesOf("", "")}});
  const auto asked = [](uint32_t mode, const CRouteOptions& options) {
    return Behind(UrlUnescape(AskedOf(provider::kValhalla, Pair(), mode, options).url),
                  R"("costing":)");
  };
  EXPECT_EQ(asked(kMotorcycle, OfType(1)), R"("motorcycle","units":"kilometers"})");
  EXPECT_EQ(asked(kBus, OfType(2)),
            R"("bus","costing_options":{"bus":{"shortest":true}},"units":"kilometers"})");
  EXPECT_EQ(asked(kPedestrian, Without({&A::boatFerries, &A::tolls})),
            R"("pedestrian","costing_options":{"pedestrian":{"use_ferry":0}},)"
            R"("units":"kilometers"})");
  EXPECT_EQ(asked(kBicycle, OfType(1)), R"("bicycle","units":"kilometers"})");
  EXPECT_EQ(asked(kCar, Without({&A::motorways, &A::tolls, &A::boatFerries, &A::dirtRoads}, 2)),
            R"("auto","costing_options":{"auto":{"use_highways":0,"use_tolls":0,"use_ferry":0,)"
            R"("use_tracks":0,"shortest":true}},"units":"kilometers"})");
  EXPECT_EQ(asked(kTruckMode, Truck()),
            R"("truck","costing_options":{"truck":{"height":4,"width":2.5,"length":16.5,)"
            R"("weight":40.5,"axle_load":11,"hazmat":true}},"units":"kilometers"})");
}

TEST(BRouterRequest, NamesAProfileByModeAndType) {
  const ServiceValuesForTest values({{"brouter", ValuesOf("", "")}});
  const auto asked = [](uint32_t mode, uint32_t type) {
    return AskedOf(provider::kBRouter, Pair(), mode, OfType(type)).url;
  };
  const std::string kHead =
      "http://server/brouter?lonlats=7.250000,48.500000|-1.000000,49.000000&profile=";
  const std::string kTail = "&alternativeidx=0&format=geojson";
  EXPECT_EQ(asked(kCar, 1), kHead + "car-fast" + kTail);
  EXPECT_EQ(asked(kCar, 4), kHead + "car-eco" + kTail);
  EXPECT_EQ(asked(kBicycle, 0), kHead + "trekking" + kTail);
  EXPECT_EQ(asked(kBicycle, 1), kHead + "fastbike" + kTail);
  EXPECT_EQ(asked(kBicycle, 2), kHead + "shortest" + kTail);
  EXPECT_EQ(asked(kPedestrian, 1), kHead + "hiking-mountain" + kTail);
  EXPECT_EQ(asked(kPedestrian, 2), kHead + "shortest" + kTail);
}

}  // namespace
