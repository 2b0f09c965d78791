// Hot pieces of the model, the numbers and the smallest format, in the process.

#include <random>
#include <string>
#include <string_view>
#include <vector>

#include <benchmark/benchmark.h>

#include "base/numbers.h"
#include "base/text.h"
#include "bench/trip.h"
#include "formats/text/tomtom.h"
#include "io/byte_sink.h"

namespace {

// Takes bytes and forgets them: what is left is the cost of making them.
class NullSink final : public ByteSink {
 public:
  uint64_t Size() {
    Drain();
    return m_size;
  }

 private:
  void Consume(std::string_view bytes) override { m_size += bytes.size(); }

  uint64_t m_size = 0;
};

constexpr size_t kNumbers = 4096;

std::vector<double> Degrees() {
  std::mt19937_64 generator(1);
  std::vector<double> degrees(kNumbers);
  for (double& value : degrees)
    value = static_cast<double>(static_cast<int64_t>(generator() >> 11)) * 0x1p-53 * 360.0 - 180.0;
  return degrees;
}

CGpsRoute TripOf(size_t points) {
  TripOptions options;
  options.points = points;
  return MakeTrip(options);
}

void CountItems(benchmark::State& state, size_t itemsPerRound) {
  state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(itemsPerRound));
}

void BM_ParseReal(benchmark::State& state) {
  std::vector<std::string> texts;
  for (const double value : Degrees())
    texts.push_back(ToFixedString(value, static_cast<int>(state.range(0))));
  for (auto _ : state) {
    for (const std::string& text : texts) benchmark::DoNotOptimize(ParseReal(text));
  }
  CountItems(state, kNumbers);
}
BENCHMARK(BM_ParseReal)->Arg(6)->Arg(14);

void BM_ParseWhole(benchmark::State& state) {
  std::vector<std::string> texts;
  for (const double value : Degrees()) texts.push_back(std::to_string(ToFixedPoint(value)));
  for (auto _ : state) {
    for (const std::string& text : texts) benchmark::DoNotOptimize(ParseWhole(text));
  }
  CountItems(state, kNumbers);
}
BENCHMARK(BM_ParseWhole);

void BM_AppendFixed(benchmark::State& state) {
  const std::vector<double> degrees = Degrees();
  std::string text;
  for (auto _ : state) {
    text.clear();
    for (const double value : degrees) AppendFixed(text, value, static_cast<int>(state.range(0)));
    benchmark::DoNotOptimize(text.data());
  }
  CountItems(state, kNumbers);
}
BENCHMARK(BM_AppendFixed)->Arg(2)->Arg(6)->Arg(9)->Arg(14);

void BM_PrintfFixed(benchmark::State& state) {
  const std::vector<double> degrees = Degrees();
  for (auto _ : state) {
    NullSink sink;
    for (const double value : degrees) sink.Printf("%.6f", value);
    benchmark::DoNotOptimize(sink.Size());
  }
  CountItems(state, kNumbers);
}
BENCHMARK(BM_PrintfFixed);

void BM_NarrowUtf8(benchmark::State& state) {
  const CGpsRoute trip = TripOf(kNumbers);
  std::string text;
  for (auto _ : state) {
    text.clear();
    for (const CGpsPoint& point : trip.points) AppendNarrowUtf8(text, point.name);
    benchmark::DoNotOptimize(text.data());
  }
  CountItems(state, kNumbers);
}
BENCHMARK(BM_NarrowUtf8);

void BM_WidenToUtf8(benchmark::State& state) {
  std::vector<std::string> names;
  for (const CGpsPoint& point : TripOf(kNumbers).points) names.push_back(NarrowUtf8(point.name));
  for (auto _ : state) {
    for (const std::string& name : names) benchmark::DoNotOptimize(WidenToUtf8(name));
  }
  CountItems(state, kNumbers);
}
BENCHMARK(BM_WidenToUtf8);

void BM_ParseItn(benchmark::State& state) {
  const auto points = static_cast<size_t>(state.range(0));
  StringSink sink;
  WriteItnBody(sink, TripOf(points));
  for (auto _ : state) {
    PointLists lists;
    ConversionContext context;
    benchmark::DoNotOptimize(ParseItn(sink.Bytes(), lists, context));
  }
  CountItems(state, points);
}
BENCHMARK(BM_ParseItn)->RangeMultiplier(10)->Range(1000, 1'000'000)->Unit(benchmark::kMicrosecond);

void BM_WriteItn(benchmark::State& state) {
  const auto points = static_cast<size_t>(state.range(0));
  const CGpsRoute trip = TripOf(points);
  for (auto _ : state) {
    NullSink sink;
    WriteItnBody(sink, trip);
    benchmark::DoNotOptimize(sink.Size());
  }
  CountItems(state, points);
}
BENCHMARK(BM_WriteItn)->RangeMultiplier(10)->Range(1000, 1'000'000)->Unit(benchmark::kMicrosecond);

void BM_SortAndUnique(benchmark::State& state) {
  const auto points = static_cast<size_t>(state.range(0));
  const CGpsRoute trip = TripOf(points);
  for (auto _ : state) {
    state.PauseTiming();
    CGpsWaypointList list(trip);
    state.ResumeTiming();
    list.SortAndUnique();
    benchmark::DoNotOptimize(list.Count());
  }
  CountItems(state, points);
}
BENCHMARK(BM_SortAndUnique)
    ->RangeMultiplier(10)
    ->Range(1000, 1'000'000)
    ->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
