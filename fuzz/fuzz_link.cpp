// Any text as a link of a web planner, as the page that a saved map is on, and as a stored link.
// Everything that is read out of it must be fit for the model.

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "base/text.h"
#include "services/links/google_link.h"
#include "services/links/here_link.h"
#include "services/links/link_reading.h"
#include "services/links/mydrive_link.h"
#include "services/links/viamichelin_link.h"

namespace {

void Expect(bool holds) {
  if (!holds) std::abort();
}

void Look(const std::vector<LinkStop>& stops) {
  for (const LinkStop& stop : stops) {
    Expect(IsValidUtf8(stop.name) && IsValidUtf8(stop.comment));
    Expect(stop.position || !stop.name.empty() || !stop.placeId.empty());
  }
}

void LookAtLists(const PointLists& lists) {
  for (const auto& list : lists) {
    for (const CGpsPoint& point : list->points) Expect(IsValidUtf8(point.name));
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  Look(ParseGoogleLink(text).stops);
  Look(ParseHereLink(text).stops);
  Look(ParseViaMichelinLink(text).stops);
  Look(ParseMyDriveLink(text).stops);
  Look(ParseSavedMap(text));
  ConversionContext context;
  PointLists lists;
  ParseMapLink(text, lists, context);
  ParseUrlFile(text, lists, context);
  LookAtLists(lists);
  return 0;
}
