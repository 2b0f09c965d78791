#include "app/inspection.h"

#include <string>

#include "app/console_text.h"
#include "app/json_point.h"
#include "app/list_description.h"
#include "app/output_sink.h"
#include "app/unattended_conversion.h"
#include "base/format_text.h"
#include "base/measure_text.h"
#include "base/status.h"
#include "base/text.h"
#include "base/text_ids.h"
#include "conversion/format_search.h"
#include "conversion/read_trip.h"
#include "markup/json_string.h"
#include "platform/folder.h"

namespace {

void WriteJsonList(ByteSink& sink, const CGpsPointArray& list) {
  sink.Write("\n  {\"kind\": \"");
  sink.Write(KindName(list.GetKind()));
  sink.Write("\", \"name\": ");
  WriteJsonString(sink, list.name);
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
               const TripRead& trip) {
  sink.Write("{\"file\": ");
  WriteJsonString(sink, ShownPath(path));
  sink.Printf(", \"status\": %u", trip.status);
  if (trip.status == kStatusSuccess) {
    const CItineraryFormat& row = *trip.row;
    sink.Printf(",\n \"format\": {\"row\": %d, \"extension\": \"%s\", \"textId\": %u, \"label\": ",
                RowNumber(table, trip), NarrowForFile(row.extension), row.textId);
    WriteJsonString(sink, FormatLabel(row));
    sink.Put('}');
  }
  sink.Write(",\n \"lists\": [");
  const char* separator = "";
  for (const auto& list : trip.lists) {
    sink.Write(separator);
    WriteJsonList(sink, *list);
    separator = ",";
  }
  sink.Write("]}\n");
}

void WriteText(ByteSink& sink, const WideString& path, const FormatTable& table,
               const TripRead& trip) {
  sink.Write(FormatText(kTextInspectedRow, ShownPath(path), RowNumber(table, trip),
                        FormatLabel(*trip.row)) +
             "\n");
  size_t number = 0;
  for (const auto& list : trip.lists) {
    sink.Printf("%d. %s\n", ++number, DescribeList(*list));
    for (const CGpsPoint& point : list->points) {
      sink.Printf("   %11s %12s  %s\n",
                  FormatCoordinate(point.latitude, true, CoordinateFormat::kDegrees),
                  FormatCoordinate(point.longitude, false, CoordinateFormat::kDegrees),
                  Printable(point.name));
    }
  }
}

}  // namespace

int RunInspection(const Options& options, const FormatTable& table, ConversionContext& context) {
  const WideString& path = options.tokens[0];
  uint32_t error = kStatusSuccess;
  const uint32_t attributes = FileAttributes(path, &error);
  if (!IsWebAddress(path) && attributes == kNoAttributes && error == kStatusFileNotFound) {
    Complain(FormatText(kTextNoSource, ShownPath(path)));
    return kExitWrongUsage;
  }
  if (attributes == kAttributeDirectory) {
    Complain(path, std::string(LoadTextUtf8(kTextCannotBeRead)) + " " +
                       FormatText(kTextReason, LoadTextUtf8(kTextReasonFolder)));
    return kExitFailed;
  }
  const TripRead trip = ReadTrip(table, path, context, /*silent=*/true);
  OutputSink sink;
  if (options.json) {
    WriteJson(sink, path, table, trip);
  } else if (trip.status == kStatusSuccess) {
    WriteText(sink, path, table, trip);
  }
  const bool isWritten = sink.Finish();
  if (trip.status == kStatusSuccess) return isWritten ? kExitConverted : kExitFailed;
  const uint32_t message = trip.status == kStatusBadFormat ? kTextUnknownFormat : kTextCannotBeRead;
  Complain(path, std::string(LoadTextUtf8(message)) + DescribeFailure(trip.reason, path));
  return kExitFailed;
}
