#include "formats/binary/sygic.h"

#include <limits>
#include <memory>
#include <utility>

#include "base/numbers.h"
#include "base/text.h"
#include "conversion/conversion_context.h"
#include "io/byte_cursor.h"

namespace {

using std::string_view_literals::operator""sv;

constexpr double kUnitsPerDegree = 100000.0;

// McGuider. Real files begin with the time they were made at, ours with this one.
constexpr uint32_t kOurTime = 0x03C32B55;
constexpr size_t kHeadSize = 12;
constexpr uint16_t kKindBetween = 1;
constexpr uint16_t kKindLast = 2;
constexpr uint16_t kKindFirst = 3;

// Versions 11 and later.
constexpr std::string_view kFileVersion = "@v7";
constexpr std::string_view kWay = "car";
constexpr std::string_view kPointsTag = "3FTI";
constexpr std::string_view kSettingsTag = "2TSR";
constexpr std::string_view kTailTag = "2OVA";
constexpr size_t kTailSize = 28;

// Settings that stand with every way. They are the programs' own: nothing in them is ours to
// choose. Zeros fill them up.
constexpr std::string_view kSettings =
    "\x83\x73\x5F\x50\x3C\x28\x14\x08\x00\x00\x80\x3F\x8F\xC2\x75\x3F"
    "\xC3\xF5\x68\x3F\xAE\x47\x61\x3F\xCD\xCC\x4C\x3F\x33\x33\x33\x3F"
    "\x00\x00\x80\x3F\x77\xBE\x7F\x3F\xEE\x7C\x7F\x3F\xEE\x7C\x7F\x3F"
    "\x64\x3B\x7F\x3F\x64\x3B\x7F\x3F\x02\x00\x01\x01"sv;
constexpr size_t kSettingsSize11 = 95;
constexpr size_t kSettingsSize13 = 71;

constexpr size_t kLargestNumber = std::numeric_limits<uint16_t>::max();

// As UTF-16 of at most so many units; what is longer is cut, but not through a character.
WideString WideUpTo(size_t mostUnits, std::string_view text) {
  WideString wide = Utf8ToWideLossy(text);
  if (wide.size() <= mostUnits) return wide;
  const bool splitsPair = (wide[mostUnits] & 0xFC00) == 0xDC00;
  wide.resize(splitsPair ? mostUnits - 1 : mostUnits);
  return wide;
}

void WriteUnits(ByteSink& sink, const WideString& text) {
  for (const char16_t unit : text) sink.Uint16(unit);
}

// A text behind its number of characters.
void WriteCounted(ByteSink& sink, std::string_view text) {
  const WideString wide = WideUpTo(kLargestNumber, text);
  sink.Uint16(static_cast<uint16_t>(wide.size()));
  WriteUnits(sink, wide);
}

void WritePosition(ByteSink& sink, const CGpsCoordinate& position) {
  sink.Int32(TruncateToInt32(position.longitude * kUnitsPerDegree));
  sink.Int32(TruncateToInt32(position.latitude * kUnitsPerDegree));
}

void WriteSettings(ByteSink& sink, size_t size) {
  sink.Write(kSettings);
  sink.Zeros(size - kSettings.size());
}

// The head of a file of ways, and `writeWay` for each of them. A single point is a way to itself.
template <typename WriteWay>
void WriteWays(ByteSink& sink, const CGpsPointArray& list, WriteWay writeWay) {
  WriteCounted(sink, kFileVersion);
  WriteCounted(sink, list.name);
  const auto& points = list.points;
  if (points.size() == 1) writeWay(points.front(), points.front());
  for (size_t i = 1; i < points.size(); ++i) writeWay(points[i - 1], points[i]);
}

}  // namespace

uint32_t ParseSygic(std::string_view bytes, PointLists& lists, ConversionContext& context) {
  ByteCursor file(bytes);
  const bool isOurs = file.Uint32() == kOurTime;
  const uint16_t count = file.Uint16();
  file.Skip(kHeadSize - file.Position());
  if (file.Overrun()) return kStatusBadFormat;

  auto route = std::make_unique<CGpsRoute>();
  while (route->Count() < count) {
    const double longitude = file.Int32() / kUnitsPerDegree;
    const double latitude = file.Int32() / kUnitsPerDegree;
    file.Uint16();  // kind
    const uint16_t nameSize = file.Uint16();
    ByteCursor name(file.Take(nameSize));
    if (file.Overrun()) break;
    CGpsPoint& point = route->points.emplace_back();
    point.longitude = longitude;
    point.latitude = latitude;
    point.name = Utf16LeToUtf8(name.ZeroTerminatedUtf16());
  }
  // Nothing but the sizes tells other programs' files from those of another kind.
  const bool fits = !file.Overrun() && file.AtEnd();
  if (!isOurs && !fits) return kStatusBadFormat;
  if (file.Overrun()) context.Note(ConversionNote::kLinePassedOver);
  lists.push_back(std::move(route));
  return kStatusSuccess;
}

uint32_t EmitSygicMcGuider(ByteSink& sink, const CGpsPointArray& list, uint32_t,
                           ConversionContext&) {
  if (list.Count() > kMostMcGuiderPoints) return kStatusInvalidParameter;
  WriteSygicMcGuiderBody(sink, list);
  return kStatusSuccess;
}

void WriteSygicMcGuiderBody(ByteSink& sink, const CGpsPointArray& list) {
  const auto count = static_cast<uint16_t>(list.Count());
  sink.Uint32(kOurTime);
  sink.Uint16(count);
  sink.Uint16(0);
  sink.Uint16(0xFFFF);
  sink.Uint16(count);

  constexpr size_t kMostUnits = kLargestNumber / 2 - 1;
  const size_t last = list.LastIndex();
  size_t index = 0;
  for (const CGpsPoint& point : list.points) {
    const WideString name = WideUpTo(kMostUnits, point.name);
    WritePosition(sink, point);
    sink.Uint16(index == last ? kKindLast : index == 0 ? kKindFirst : kKindBetween);
    sink.Uint16(static_cast<uint16_t>(2 * (name.size() + 1)));
    WriteUnits(sink, name);
    sink.Uint16(0);
    ++index;
  }
}

void WriteSygic11Body(ByteSink& sink, const CGpsPointArray& list) {
  WriteWays(sink, list, [&sink](const CGpsPoint& from, const CGpsPoint& to) {
    WriteCounted(sink, kWay);
    WritePosition(sink, from);
    WritePosition(sink, to);
    WriteSettings(sink, kSettingsSize11);
  });
}

void WriteSygic13Body(ByteSink& sink, const CGpsPointArray& list) {
  WriteWays(sink, list, [&sink](const CGpsPoint& from, const CGpsPoint& to) {
    WriteCounted(sink, kWay);
    sink.Write(kPointsTag);
    WritePosition(sink, from);
    sink.Zeros(8);
    WritePosition(sink, to);
    sink.Zeros(8);
    sink.Write(kSettingsTag);
    WriteSettings(sink, kSettingsSize13);
    sink.Write(kTailTag);
    sink.Zeros(kTailSize);
  });
}
