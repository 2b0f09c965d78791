#include "formats/binary/destinator.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <utility>

#include "base/status.h"
#include "base/text.h"
#include "conversion/conversion_context.h"
#include "io/byte_cursor.h"
#include "io/file_hole.h"

namespace {

using std::string_view_literals::operator""sv;

// What a place can be; the text that every record begins with.
constexpr std::string_view kPoi = "Poi..."sv;
constexpr std::string_view kKinds[] = {
    "City->Street", "Street->City", "Zip->Street", "Intersection",
    "View_Link",    kPoi,           "Dynamic POI", ""};

// A saved record: kind, name, description, six more texts, then these.
constexpr size_t kFurtherTexts = 6;
constexpr size_t kGapBeforePosition = 24;
constexpr size_t kGapAfterPosition = 16;

// A record for the device: kind, name, description, this block, the position and zeros.
constexpr std::string_view kBlockBeforePosition =
    "\0\0\0\0\0\0\0\0\0\0\0\0"
    "\1\0\0\0\0\0\0\0"sv;

// UTF-16 with its zero unit. A zero inside would end the text early, and so it ends there for all.
void WriteText(ByteSink& sink, std::string_view text) {
  sink.Utf16(text.substr(0, text.find('\0')));
  sink.Uint16(0);
}

}  // namespace

uint32_t ParseDestinator(std::string_view bytes, PointLists& lists, ConversionContext& context) {
  auto& route = AddList<CGpsRoute>(lists);
  ByteCursor record(bytes);
  size_t empty = 0;
  while (!record.AtEnd() && context.GoesOn(record.Position())) {
    const std::string kind = Utf16LeToUtf8(record.ZeroTerminatedUtf16());
    const bool isKnown = std::find(std::begin(kKinds), std::end(kKinds), kind) != std::end(kKinds);
    if (!isKnown) {
      context.Note(ConversionNote::kLinePassedOver);
      break;
    }
    std::string_view name = record.ZeroTerminatedUtf16();
    std::string_view description = record.ZeroTerminatedUtf16();
    if (name.empty()) std::swap(name, description);
    for (size_t i = 0; i < kFurtherTexts; ++i) record.ZeroTerminatedUtf16();
    record.Skip(kGapBeforePosition);
    const double longitude = record.Double();
    const double latitude = record.Double();
    if (record.Overrun()) {
      context.Note(ConversionNote::kLinePassedOver);
      break;
    }
    record.Skip(kGapAfterPosition);

    CGpsPoint& point = route.points.emplace_back();
    point.longitude = longitude;
    point.latitude = latitude;
    point.name = Utf16LeToUtf8(name);
    point.comment = Utf16LeToUtf8(description);
    empty = point.IsNull() && kind.empty() && name.empty() ? empty + 1 : 0;
    if (empty == kRecordsOfAHole) return kStatusInvalidData;
  }
  return kStatusSuccess;
}

void WriteDestinatorBody(ByteSink& sink, const CGpsPointArray& list) {
  for (const CGpsPoint& point : list.points) {
    WriteText(sink, kPoi);
    WriteText(sink, point.name);
    WriteText(sink, point.comment);
    sink.Write(kBlockBeforePosition);
    sink.Double(point.longitude);
    sink.Double(point.latitude);
    sink.Zeros(kGapAfterPosition);
  }
}
