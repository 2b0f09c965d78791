#include "formats/text/tomtom.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "base/numbers.h"
#include "base/text.h"
#include "conversion/conversion_lines.h"
#include "io/byte_cursor.h"
#include "io/incoming_lines.h"

namespace {

constexpr double kUnitsPerDegree = 100000.0;

// Bytes that tell the encoding of a text.
constexpr size_t kLongestMark = 4;

// Stop flags of an itinerary line.
constexpr int kFlagBetween = 0;
constexpr int kFlagLast = 2;
constexpr int kFlagFirst = 4;

// Records of a POI file.
constexpr uint8_t kRecordSkipped = 0;
constexpr uint8_t kRecordArea = 1;
constexpr uint8_t kRecordPoi = 2;
constexpr uint8_t kRecordExtendedPoi = 3;
constexpr size_t kAreaSize = 21;
constexpr int32_t kPoiSizeWithoutName = 14;

double FromFixedPoint(int32_t value) { return value / kUnitsPerDegree; }

// "trip.itn" and 2 give "trip_2.itn". A path without a dot gets the number in front.
WideString PartPath(const WideString& path, uint32_t part) {
  const size_t dot = path.rfind(u'.');
  WideString numbered = path;
  numbered.insert(dot == WideString::npos ? 0 : dot, u"_" + WidenAscii(std::to_string(part)));
  return numbered;
}

// Reads stops line by line from a LineSplitter or IncomingLines behind the mark of an encoding.
template <typename Source>
uint32_t ParseItnLines(Source source, EFileEncoding encoding, PointLists& lists,
                       ConversionContext& context) {
  const bool isUtf8 = encoding == kEncodingUtf8;
  if (isUtf8) context.TellEncoding(encoding);
  auto& route = AddList<CGpsRoute>(lists);

  ConversionLines lines(std::move(source), context);
  std::vector<std::string_view> fields;
  for (std::string_view line; lines.Next(line);) {
    if (line.empty()) continue;
    SplitFirstFields(line, '|', 4, fields);
    if (fields.size() < 4) {
      context.Note(ConversionNote::kLinePassedOver);
      continue;
    }
    CGpsPoint& point = route.points.emplace_back();
    point.longitude = FromFixedPoint(ParseWhole(fields[0]));
    point.latitude = FromFixedPoint(ParseWhole(fields[1]));
    point.name = isUtf8 ? std::string(fields[2]) : WidenToUtf8(fields[2]);
    // A route without any stop would be no route.
    if (context.WatcherTakes(route, point) && route.points.size() > 1) route.points.pop_back();
  }
  return kStatusSuccess;
}

}  // namespace

uint32_t ParseItn(std::string_view bytes, PointLists& lists, ConversionContext& context) {
  const DetectedEncoding detected = DetectEncoding(bytes);
  return ParseItnLines(LineSplitter(bytes.substr(detected.skipped)), detected.encoding, lists,
                       context);
}

uint32_t ReadItn(const WideString& path, PointLists& lists, bool silent) {
  ContextInPlace context;
  if (!context->incoming) return ReadFileOf<ParseItn>(path, lists, silent);
  IncomingLines lines(context->incoming);
  const DetectedEncoding detected = DetectEncoding(lines.Peek(kLongestMark));
  lines.Skip(detected.skipped);
  return ParseItnLines(std::move(lines), detected.encoding, lists, *context);
}

uint32_t WriteItn(const WideString& path, const CGpsPointArray& list, uint32_t splitLimit, bool) {
  const size_t count = list.Count();
  if (splitLimit == 0 || splitLimit >= count) return WriteItnFile(path, list);
  if (splitLimit == 1) return ContextInPlace()->Keep(kStatusInvalidParameter);

  uint32_t part = 0;
  for (size_t start = 0; start < count;) {
    ++part;
    if (start != 0) --start;
    const size_t length = std::min<size_t>(splitLimit, count - start);
    if (WriteItnFile(PartPath(path, part), CGpsWaypointList(list, start, length)) ==
        kStatusCancelled)
      return kStatusCancelled;
    start += length;
  }
  return kStatusSuccess;
}

uint32_t WriteItnFile(const WideString& path, const CGpsPointArray& list) {
  return kWriterOf<WriteItnBody>(path, list, 0, true);
}

void WriteItnBody(ByteSink& sink, const CGpsPointArray& list) {
  const size_t last = list.LastIndex();
  size_t index = 0;
  for (const CGpsPoint& point : list.points) {
    const int flag = index == last ? kFlagLast : index == 0 ? kFlagFirst : kFlagBetween;
    // "%06d|%07d|%s|%d|\r\n"
    sink.Whole(ToFixedPoint(point.longitude), 6);
    sink.Put('|');
    sink.Whole(ToFixedPoint(point.latitude), 7);
    sink.Put('|');
    sink.Narrow(point.name);
    sink.Put('|');
    sink.Whole(flag);
    sink.Write("|\r\n");
    ++index;
  }
}

uint32_t ParseOv2(std::string_view bytes, PointLists& lists, ConversionContext& context) {
  auto& pois = AddList<CGpsPoiList>(lists);
  for (size_t position = 0; position < bytes.size() && context.GoesOn(position);) {
    ByteCursor record(bytes, position);
    const uint8_t type = record.Uint8();
    if (type == kRecordArea) {
      position += kAreaSize;
      continue;
    }
    if (type != kRecordSkipped && type != kRecordPoi && type != kRecordExtendedPoi)
      return kStatusFailure;

    const int32_t length = record.Int32();
    if (type != kRecordSkipped) {
      const int32_t longitude = record.Int32();
      const int32_t latitude = record.Int32();
      const std::string_view name = record.ZeroTerminated();
      if (record.Overrun()) break;
      // Behind the name: a number and an address in the web.
      if (type == kRecordExtendedPoi &&
          length > static_cast<int64_t>(record.Position()) - static_cast<int64_t>(position))
        context.Note(ConversionNote::kDetail);
      CGpsPoint& point = pois.points.emplace_back();
      point.longitude = FromFixedPoint(longitude);
      point.latitude = FromFixedPoint(latitude);
      point.name = WidenToUtf8(name);
    }
    // A record that does not lead on would be read for ever.
    if (length <= 0) break;
    position += static_cast<size_t>(length);
  }
  return kStatusSuccess;
}

void WriteOv2Body(ByteSink& sink, const CGpsPointArray& list) {
  for (const CGpsPoint& point : list.points) {
    const std::string name = NarrowUtf8(point.name);
    sink.Put(static_cast<char>(kRecordPoi));
    sink.Int32(static_cast<int32_t>(name.size()) + kPoiSizeWithoutName);
    sink.Int32(ToFixedPoint(point.longitude));
    sink.Int32(ToFixedPoint(point.latitude));
    sink.Write(name);
    sink.Put('\0');
  }
}
