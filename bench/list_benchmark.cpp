// What the editor's list takes for a few actions, by its length: a row that moves and a hundred
// rows that go, each taken back again, and a list that is shown anew. Run: list_benchmark

#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "planner/point_list_view.h"

namespace {

// A window that does nothing with what it is told.
class SilentRows : public PointRows {
 public:
  void InsertRow(size_t) override {}
  void RemoveRows(size_t, size_t) override {}
  void ResetRows(size_t) override {}
  void RefreshRows(size_t, size_t) override {}
  void ClearSelection() override {}
  void SelectRow(size_t) override {}
  std::vector<size_t> SelectedRows() const override { return selected; }

  std::vector<size_t> selected;
};

class SilentPage : public IScriptEngine {
 public:
  ScriptValue Call(std::string_view, ScriptArguments) override { return {}; }
  void Send(std::string_view, ScriptArguments) override {}
  void Offer(std::string_view, ScriptArguments) override {}
};

// An itinerary of `count` stops in a window.
struct Editor {
  explicit Editor(size_t count) {
    for (size_t i = 0; i < count; ++i) {
      CGpsPoint& point = list.points.emplace_back();
      point.latitude = 40.0 + static_cast<double>(i) * 1e-5;
      point.longitude = 7.0;
      point.name = "Rue de la Gare " + std::to_string(i);
    }
    view.list = &list;
    view.planner = &script;
    view.Rebuild();
  }

  SilentRows rows;
  SilentPage page;
  CPlannerScript script{&page};
  CSettings settings{[] { return storage::Storage(); }};
  CGpsRoute list;
  CPointListView view{kListItinerary, PinKind::kItinerary, rows, settings};
};

void ShowAnew(benchmark::State& state) {
  Editor editor(static_cast<size_t>(state.range(0)));
  for (auto _ : state) editor.view.Rebuild();
}

void MoveNeighbour(benchmark::State& state) {
  const auto count = static_cast<size_t>(state.range(0));
  Editor editor(count);
  for (auto _ : state) editor.view.MoveRow(count / 2, count / 2 + 1);
}

void DeleteHundredSelected(benchmark::State& state) {
  const auto count = static_cast<size_t>(state.range(0));
  Editor editor(count);
  for (size_t i = 0; i < 100; ++i) editor.rows.selected.push_back(i * (count / 100));
  for (auto _ : state) {
    editor.view.RemoveRows(kSelectedRows);
    editor.view.Undo();
  }
}

void MoveHalfUp(benchmark::State& state) {
  const auto count = static_cast<size_t>(state.range(0));
  Editor editor(count);
  for (size_t i = 1; i < count; i += 2) editor.rows.selected.push_back(i);
  for (auto _ : state) editor.view.MoveSelectedUp();
}

BENCHMARK(ShowAnew)->RangeMultiplier(10)->Range(1'000, 100'000)->Unit(benchmark::kMicrosecond);
BENCHMARK(MoveNeighbour)->RangeMultiplier(10)->Range(1'000, 100'000)->Unit(benchmark::kMicrosecond);
BENCHMARK(DeleteHundredSelected)
    ->RangeMultiplier(10)
    ->Range(1'000, 100'000)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(MoveHalfUp)->RangeMultiplier(10)->Range(1'000, 100'000)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
