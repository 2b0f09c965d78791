#include "app/inspection.h"

#include <string>

#include "app/console_text.h"
#include "app/conversion_sources.h"
#include "app/json_point.h"
#include "app/list_description.h"
#include "app/output_sink.h"
#include "app/reading_remarks.h"
#include "app/unattended_conversion.h"
#include "base/format_text.h"
#include "base/measure_text.h"
#include "base/status.h"
#include "base/text.h"
#include "base/text_ids.h"
#include "conversion/format_search.h"
#include "conversion/read_trip.h"
#include "markup/json_string.h"
#include "platform/console.h"
#include "platform/folder.h"

namespace {

void WriteJsonList(ByteSink& sink, const CGpsPointArray& list, bool summary) {
  sink.Write("\n  {\"kind\": \"");
  sink.Write(KindName(list.GetKind()));
  sink.Write("\", \"name\": ");
  WriteJsonString(sink, list.name);
  if (summary) {
    sink.Printf(", \"count\": %d}", list.Count());
    return;
  }
  sink.Write(", \"points\": [");
  const char* separator = "\n    ";
  for (const CGpsPoint& point : list.points) {
    sink.Write(separator);
    WriteJsonPoint(sink, point);
    separator = ",\n    ";
  }
  sink.Write("]}");
}

size_t RowNumber(const FormatTable& table, const TripRead& trip) {
  return static_cast<size_t>(trip.row - table.data());
}

void WriteJson(ByteSink& sink, const WideString& path, const FormatTable& table,
               const TripRead& trip, bool summary) {
  sink.Write("{\"file\": ");
  WriteJsonString(sink, ShownPath(path));
  sink.Printf(", \"status\": %u", trip.status);
  if (trip.status == kStatusSuccess) {
    const CItineraryFormat& row = *trip.row;
    sink.Printf(",\n \"format\": {\"row\": %d, \"extension\": \"%s\", \"textId\": %u, \"label\": ",
                RowNumber(table, trip), NarrowForFile(row.extension), row.textId);
    WriteJsonString(sink, FormatLabel(row));
    // The whole object has a fixed shape.
    if (summary) sink.Printf(", \"key\": \"%s\"", FormatKey(table, row));
    sink.Put('}');
  }
  sink.Write(",\n \"lists\": [");
  const char* separator = "";
  for (const auto& list : trip.lists) {
    sink.Write(separator);
    WriteJsonList(sink, *list, summary);
    separator = ",";
  }
  sink.Write("]}\n");
}

void WriteText(ByteSink& sink, const WideString& path, const FormatTable& table,
               const TripRead& trip, bool summary) {
  sink.Write(FormatText(kTextInspectedFormat, ShownPath(path), RowNumber(table, trip),
                        FormatLabel(*trip.row), FormatKey(table, *trip.row)) +
             "\n");
  size_t number = 0;
  for (const auto& list : trip.lists) {
    sink.Printf("%d. %s\n", ++number, DescribeList(*list));
    if (summary) continue;
    for (const CGpsPoint& point : list->points) {
      sink.Printf("   %11s %12s  %s\n",
                  FormatCoordinate(point.latitude, true, CoordinateFormat::kDegrees),
                  FormatCoordinate(point.longitude, false, CoordinateFormat::kDegrees),
                  Printable(point.name));
    }
  }
}

TripRead ReadStream(const FormatTable& table, ConversionContext& context,
                    const ReadOptions& options) {
  std::string bytes;
  if (const uint32_t error = ReadInput(bytes)) {
    TripRead trip;
    trip.status = kStatusFailure;
    trip.reason.platformError = error;
    return trip;
  }
  return ReadTripBytes(table, bytes, context, options);
}

}  // namespace

int RunInspection(const Options& options, const FormatTable& table, ConversionContext& context) {
  const WideString& path = options.tokens[0];
  if (!options.from.empty() && !FindReader(table, options.from)) {
    Complain(FormatText(kTextNothingReads, ShownPath(options.from)));
    return kExitWrongUsage;
  }
  uint32_t error = kStatusSuccess;
  const bool isStream = path == kStream;
  const bool isFile = !isStream && !IsWebAddress(path);
  const uint32_t attributes = isFile ? FileAttributes(path, &error) : kAttributeNormal;
  if (attributes == kNoAttributes && error == kStatusFileNotFound) {
    Complain(FormatText(kTextNoSource, ShownPath(path)));
    return kExitWrongUsage;
  }
  if (attributes == kAttributeDirectory) {
    Complain(path, std::string(LoadTextUtf8(kTextCannotBeRead)) + " " +
                       FormatText(kTextReason, LoadTextUtf8(kTextReasonFolder)));
    return kExitFailed;
  }
  const ReadOptions reading = {.silent = true, .key = options.from, .byContent = true};
  const TripRead trip =
      isStream ? ReadStream(table, context, reading) : ReadTrip(table, path, context, reading);
  const WideString shown = isStream ? LoadText(kTextStandardInput) : path;
  if (!options.quiet) {
    TellColumns(shown, context.csvLayouts);
    TellDoubtfulPositions(shown, trip.lists);
  }
  OutputSink sink;
  if (options.json) {
    WriteJson(sink, shown, table, trip, options.summary);
  } else if (trip.status == kStatusSuccess) {
    WriteText(sink, shown, table, trip, options.summary);
  }
  const bool isWritten = sink.Finish();
  if (trip.status == kStatusSuccess) return isWritten ? kExitConverted : kExitFailed;
  const uint32_t message = trip.status == kStatusBadFormat ? kTextUnknownFormat : kTextCannotBeRead;
  Complain(shown, std::string(LoadTextUtf8(message)) + DescribeReadFailure(trip.reason, path));
  return kExitFailed;
}
