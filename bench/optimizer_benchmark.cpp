// The order of the stops: how long the search takes by straight distance, and how much shorter two
// more seconds make the way.

#include <chrono>
#include <random>

#include <benchmark/benchmark.h>

#include "model/itinerary_optimizer.h"

namespace {

CGpsRoute RandomStops(size_t count) {
  std::mt19937_64 random(1);
  std::uniform_real_distribution<double> latitude(43.0, 50.0);
  std::uniform_real_distribution<double> longitude(-1.0, 8.0);
  CGpsRoute route;
  for (size_t i = 0; i < count; ++i) {
    CGpsPoint& point = route.points.emplace_back();
    point.latitude = latitude(random);
    point.longitude = longitude(random);
  }
  return route;
}

void BM_Optimise(benchmark::State& state) {
  const CGpsRoute route = RandomStops(static_cast<size_t>(state.range(0)));
  for (auto _ : state) benchmark::DoNotOptimize(CItineraryOptimizer(route).Optimise(false));
}
BENCHMARK(BM_Optimise)->Arg(100)->Arg(1000)->Arg(5000)->Unit(benchmark::kMillisecond);

void BM_ImproveForTwoSeconds(benchmark::State& state) {
  const CGpsRoute route = RandomStops(static_cast<size_t>(state.range(0)));
  CItineraryOptimizer optimizer(route);
  const std::vector<size_t> order = optimizer.Optimise(false);
  uint64_t improved = 0;
  for (auto _ : state)
    improved = optimizer.Length(optimizer.Improve(order, false, std::chrono::seconds(2)), false);
  const auto told = static_cast<double>(optimizer.Length(order, false));
  state.counters["shorter_percent"] = 100.0 * (1.0 - static_cast<double>(improved) / told);
}
BENCHMARK(BM_ImproveForTwoSeconds)
    ->Arg(15)
    ->Arg(100)
    ->Arg(1000)
    ->Arg(5000)
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
