// The towns on this machine: what a look-up takes, from opening the file to the answer.

#include <random>
#include <string>

#include <benchmark/benchmark.h>

#include "services/offline/offline_places.h"

namespace {

void BM_Find(benchmark::State& state, const char* text) {
  OfflinePlaces places;
  for (auto _ : state) benchmark::DoNotOptimize(places.Find(text, 10));
}
BENCHMARK_CAPTURE(BM_Find, one_letter, "s");
BENCHMARK_CAPTURE(BM_Find, three_letters, "san");
BENCHMARK_CAPTURE(BM_Find, name, "Colmar");
BENCHMARK_CAPTURE(BM_Find, name_and_country, "San, United States");
BENCHMARK_CAPTURE(BM_Find, name_and_country_without_comma, "Paris Texas");
BENCHMARK_CAPTURE(BM_Find, address, "12 rue des Clefs, 68000 Colmar, France");
BENCHMARK_CAPTURE(BM_Find, unknown_words, "the quick brown fox jumps over the lazy dog");

void BM_OpenAndFind(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(OfflinePlaces().Find("Colmar", 10));
}
BENCHMARK(BM_OpenAndFind);

void BM_Nearest(benchmark::State& state, double latitude, double longitude) {
  OfflinePlaces places;
  CGpsCoordinate position;
  position.latitude = latitude;
  position.longitude = longitude;
  for (auto _ : state) benchmark::DoNotOptimize(places.Nearest(position));
}
BENCHMARK_CAPTURE(BM_Nearest, colmar, 48.08, 7.36);
BENCHMARK_CAPTURE(BM_Nearest, pacific, -48.9, -123.4);
BENCHMARK_CAPTURE(BM_Nearest, atlantic, 30.0, -40.0);
BENCHMARK_CAPTURE(BM_Nearest, south_pole, -90.0, 0.0);
BENCHMARK_CAPTURE(BM_Nearest, north_pole, 90.0, 0.0);

void BM_NearestAnywhere(benchmark::State& state) {
  OfflinePlaces places;
  std::mt19937_64 random(1);
  std::uniform_real_distribution<double> latitude(-90, 90);
  std::uniform_real_distribution<double> longitude(-180, 180);
  CGpsCoordinate position;
  for (auto _ : state) {
    position.latitude = latitude(random);
    position.longitude = longitude(random);
    benchmark::DoNotOptimize(places.Nearest(position));
  }
}
BENCHMARK(BM_NearestAnywhere);

}  // namespace

BENCHMARK_MAIN();
