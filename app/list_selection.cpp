#include "app/list_selection.h"

#include <algorithm>
#include <iterator>

#include "app/console_text.h"
#include "base/format_text.h"
#include "base/text_ids.h"

namespace {

constexpr std::string_view kKindNames[] = {"route", "track", "waypoints", "pois"};
constexpr uint32_t kKindTexts[] = {kTextKindRoute, kTextKindTrack, kTextKindWaypoints,
                                   kTextKindPois};

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
  using EWhich = ListChoice::EWhich;
  if (choice.which == EWhich::kDefault) return DefaultList(lists);
  if (choice.which == EWhich::kNumbers) return NumberedLists(lists, choice.numbers);
  std::vector<size_t> chosen;
  for (size_t i = 0; i < lists.size(); ++i) {
    const unsigned kind = lists[i]->GetKind();
    const bool fits = choice.which == EWhich::kAll ||
                      (choice.which == EWhich::kRoutes && kind == kKindRoute) ||
                      (choice.which == EWhich::kTracks && kind == kKindTrack) ||
                      (choice.which == EWhich::kWaypoints && kind == kKindWaypoints) ||
                      (choice.which == EWhich::kPois && kind == kKindPois);
    if (fits) chosen.push_back(i);
  }
  return chosen;
}

std::string_view KindName(unsigned kind) {
  return kind < std::size(kKindNames) ? kKindNames[kind] : std::string_view();
}

std::string DescribeList(const CGpsPointArray& list) {
  std::string text(LoadTextUtf8(kKindTexts[std::min<size_t>(list.GetKind(), 3)]));
  if (!list.name.empty()) text += " \"" + Printable(list.name) + "\"";
  return text + " (" + FormatText(kTextPointCount, list.Count()) + ")";
}
