#include "app/list_description.h"

#include <algorithm>
#include <iterator>

#include "app/console_text.h"
#include "base/format_text.h"
#include "base/text_ids.h"

namespace {

constexpr std::string_view kKindNames[] = {"route", "track", "waypoints", "pois"};
constexpr uint32_t kKindTexts[] = {kTextKindRoute, kTextKindTrack, kTextKindWaypoints,
                                   kTextKindPois};

}  // namespace

std::string_view KindName(unsigned kind) {
  return kind < std::size(kKindNames) ? kKindNames[kind] : std::string_view();
}

std::string DescribeList(const CGpsPointArray& list) {
  std::string text(LoadTextUtf8(kKindTexts[std::min<size_t>(list.GetKind(), 3)]));
  if (!list.name.empty()) text += " \"" + Printable(list.name) + "\"";
  return text + " (" + FormatText(kTextPointCount, list.Count()) + ")";
}
