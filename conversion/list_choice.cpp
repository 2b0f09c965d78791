#include "conversion/list_choice.h"

#include <algorithm>

namespace {

bool HasPoints(unsigned kind) { return kind == kKindWaypoints || kind == kKindPois; }

template <typename Fits>
std::vector<size_t> FirstOf(const PointLists& lists, Fits fits) {
  for (size_t i = 0; i < lists.size(); ++i) {
    if (fits(lists[i]->GetKind())) return {i};
  }
  return {};
}

std::vector<size_t> DefaultList(const PointLists& lists) {
  auto chosen = FirstOf(lists, [](unsigned kind) { return kind == kKindRoute; });
  if (chosen.empty()) chosen = FirstOf(lists, HasPoints);
  if (chosen.empty() && !lists.empty()) chosen = {0};
  return chosen;
}

std::vector<size_t> NumberedLists(const PointLists& lists, const std::vector<size_t>& numbers) {
  std::vector<size_t> chosen;
  for (const size_t number : numbers) {
    if (number > lists.size()) return {};
    if (std::find(chosen.begin(), chosen.end(), number - 1) == chosen.end())
      chosen.push_back(number - 1);
  }
  return chosen;
}

}  // namespace

std::vector<size_t> SelectLists(const PointLists& lists, const ListChoice& choice) {
  using Which = ListChoice::Which;
  if (choice.which == Which::kDefault) return DefaultList(lists);
  if (choice.which == Which::kNumbers) return NumberedLists(lists, choice.numbers);
  std::vector<size_t> chosen;
  for (size_t i = 0; i < lists.size(); ++i) {
    const unsigned kind = lists[i]->GetKind();
    const bool fits = choice.which == Which::kAll ||
                      (choice.which == Which::kRoutes && kind == kKindRoute) ||
                      (choice.which == Which::kTracks && kind == kKindTrack) ||
                      (choice.which == Which::kWaypoints && kind == kKindWaypoints) ||
                      (choice.which == Which::kPois && kind == kKindPois);
    if (fits) chosen.push_back(i);
  }
  return chosen;
}
