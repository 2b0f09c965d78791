// What directions take beside the network: replies of 1,000 legs of 1,000 shape points each, and
// the way along 500 stops of a small town of our own, from a road database that is made first. Run:
// directions_benchmark

#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <string>

#include <benchmark/benchmark.h>
#include <fmt/format.h>

#include "base/status.h"
#include "platform/folder.h"
#include "platform/output_file.h"
#include "platform/path_text.h"
#include "platform/scratch_folder.h"
#include "services/directions/route_options.h"
#include "services/directions/route_providers.h"
#include "services/offline/offline_router.h"
#include "services/service_table.h"

namespace {

constexpr size_t kLegs = 1000;
constexpr size_t kShapePoints = 1000;

// The same for the service and for us: a line that goes north-east by a hundred-thousandth of a
// degree each step ("A" is the packed 1).
std::string PackedLine() {
  std::string line = "_t_gHo_gk@";
  for (size_t i = 1; i < kShapePoints; ++i) line += "AA";
  return line;
}

std::string Positions(const char* format) {
  std::string text;
  for (size_t i = 0; i < kShapePoints; ++i) {
    if (i != 0) text += ',';
    const double offset = static_cast<double>(i) * 1e-5;
    text += fmt::format(fmt::runtime(format), 48.5 + offset, 7.25 + offset);
  }
  return text;
}

std::string GoogleReply() {
  const std::string line = PackedLine();
  return R"({"status":"OK","routes":[{"legs":[{"start_location":{"lat":48.5,"lng":7.25},)"
         R"("start_address":"A","end_location":{"lat":48.6,"lng":7.35},"end_address":"B",)"
         R"("duration":{"value":60},"distance":{"value":1000},"steps":[{"duration":{"value":60},)"
         R"("distance":{"value":1000},"start_location":{"lat":48.5,"lng":7.25},)"
         R"("html_instructions":"Go","polyline":{"points":")" +
         line + R"("}}]}]}]})";
}

std::string TomTomReply() {
  return R"({"routes":[{"summary":{},"legs":[{"summary":{"lengthInMeters":1000,)"
         R"("travelTimeInSeconds":60},"points":[)" +
         Positions(R"({{"latitude":{:.5f},"longitude":{:.5f}}})") + "]}]}]}";
}

std::string HereReply() {
  return R"({"response":{"route":[{"waypoint":[],"summary":{"distance":1000,"travelTime":60},)"
         R"("shape":[)" +
         Positions(R"("{:.5f},{:.5f}")") + "]}]}}";
}

std::string OsrmReply() {
  return R"({"code":"Ok","routes":[{"duration":60,"distance":1000,"geometry":")" + PackedLine() +
         R"("}],"waypoints":[]})";
}

void ReadThousandLegs(benchmark::State& state, int32_t id, const std::string& reply) {
  const std::unique_ptr<CRouteProvider> router = MakeRouteProvider(id);
  for (auto _ : state) {
    CRouteProvider::Legs legs;
    for (size_t i = 0; i < kLegs; ++i) {
      if (router->ParseResponse(reply, kCar, CRouteOptions(), legs) != kRouteSuccess)
        state.SkipWithError("the reply was not understood");
    }
    if (legs.size() != kLegs || legs.back().shape.points.points.size() != kShapePoints)
      state.SkipWithError("points are missing");
    benchmark::DoNotOptimize(legs);
  }
}
BENCHMARK_CAPTURE(ReadThousandLegs, google, provider::kGoogle, GoogleReply())
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ReadThousandLegs, tomtom, provider::kTomTom, TomTomReply())
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ReadThousandLegs, here, provider::kHere, HereReply())
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ReadThousandLegs, osrm, provider::kOsrm, OsrmReply())
    ->Unit(benchmark::kMillisecond);

// A town of streets that cross each other, a hundred metres apart.
constexpr size_t kStreets = 40;
constexpr double kBlock = 0.001;

std::string Town() {
  std::string osm = "<osm version=\"0.6\">\n";
  for (size_t i = 0; i < kStreets * kStreets; ++i) {
    const size_t row = i / kStreets;
    osm += fmt::format("<node id=\"{}\" lat=\"{:.6f}\" lon=\"{:.6f}\"/>\n", i + 1,
                       48.0 + static_cast<double>(row) * kBlock,
                       7.0 + static_cast<double>(i % kStreets) * kBlock);
  }
  const auto street = [&osm](size_t id, size_t first, size_t step) {
    osm += fmt::format("<way id=\"{}\">", id);
    for (size_t i = 0; i < kStreets; ++i) osm += fmt::format("<nd ref=\"{}\"/>", first + i * step);
    osm += fmt::format(
        "<tag k=\"highway\" v=\"residential\"/><tag k=\"name\" v=\"Street {}\"/></way>\n", id);
  };
  for (size_t i = 0; i < kStreets; ++i) {
    street(i + 1, i * kStreets + 1, 1);
    street(kStreets + i + 1, i + 1, kStreets);
  }
  return osm + "</osm>\n";
}

// A home for the database that goes with the program.
void MakeTown(const ScratchFolder& home) {
  setenv("XDG_DATA_HOME", PathBytes(home.Path()).c_str(), 1);
  const WideString extract = JoinedPath(home.Path(), u"town.osm");
  OutputFile file(extract);
  file.Write(Town());
  std::string failure;
  if (file.Commit() != kStatusSuccess ||
      AddRoadDatabase("town", extract, {}, failure) != RoadsChange::kDone)
    throw std::runtime_error("no road database: " + failure);
}

void FindTheWayAlong500Stops(benchmark::State& state) {
  const ScratchFolder home;
  MakeTown(home);
  OfflineRouter router;
  for (auto _ : state) {
    auto points = std::make_unique<CGpsPointList>();
    for (size_t i = 0; i < 500; ++i) {
      auto& point = points->points.emplace_back(std::make_unique<CGpsNamedPoint>());
      // To and fro across the town.
      point->latitude = 48.0 + static_cast<double>(i * 17 % kStreets) * kBlock;
      point->longitude = 7.0 + static_cast<double>(i * 23 % kStreets) * kBlock;
    }
    router.Calculate(std::move(points), kCar, CRouteOptions());
    if (router.Wait(-1) != kRouteSuccess) state.SkipWithError("no way");
  }
  RoadEngine()->CloseDatabase(PathBytes(ListRoadDatabases().front().folder));
}
// The ways are searched on a thread of their own.
BENCHMARK(FindTheWayAlong500Stops)
    ->MeasureProcessCPUTime()
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
