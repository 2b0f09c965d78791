#include "app/inspection.h"

#include <string>

#include "app/console_text.h"
#include "app/json_point.h"
#include "app/json_string.h"
#include "app/list_selection.h"
#include "app/output_sink.h"
#include "app/unattended_conversion.h"
#include "base/format_text.h"
#include "base/measure_text.h"
#include "base/status.h"
#include "base/text.h"
#include "base/text_ids.h"
#include "conversion/format_search.h"
#include "platform/folder.h"
#include "platform/last_error.h"

namespace {

struct Inspected {
  WideString path;
  uint32_t status = kStatusBadFormat;
  const CItineraryFormat* row = nullptr;  // null unless the status is 0
  size_t rowNumber = 0;
  PointLists lists;
};

Inspected Inspect(const WideString& path, const FormatTable& table) {
  Inspected result;
  result.path = path;
  result.status = SearchReaders(table, path, true,
                                [&](const CItineraryFormat& row, PointLists& lists) -> uint32_t {
                                  result.row = &row;
                                  result.rowNumber = static_cast<size_t>(&row - table.data());
                                  result.lists = std::move(lists);
                                  lists.clear();
                                  return kStatusSuccess;
                                });
  return result;
}

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

void WriteJson(ByteSink& sink, const Inspected& inspected) {
  sink.Write("{\"file\": ");
  WriteJsonString(sink, ShownPath(inspected.path));
  sink.Printf(", \"status\": %u", inspected.status);
  if (inspected.row) {
    const CItineraryFormat& row = *inspected.row;
    sink.Printf(",\n \"format\": {\"row\": %d, \"extension\": \"%s\", \"textId\": %u, \"label\": ",
                inspected.rowNumber, NarrowForFile(row.extension), row.textId);
    WriteJsonString(sink, FormatLabel(row));
    sink.Put('}');
  }
  sink.Write(",\n \"lists\": [");
  const char* separator = "";
  for (const auto& list : inspected.lists) {
    sink.Write(separator);
    WriteJsonList(sink, *list);
    separator = ",";
  }
  sink.Write("]}\n");
}

void WriteText(ByteSink& sink, const Inspected& inspected) {
  sink.Write(FormatText(kTextInspectedRow, ShownPath(inspected.path), inspected.rowNumber,
                        FormatLabel(*inspected.row)) +
             "\n");
  size_t number = 0;
  for (const auto& list : inspected.lists) {
    sink.Printf("%d. %s\n", ++number, DescribeList(*list));
    for (const CGpsPoint& point : list->points) {
      sink.Printf("   %11s %12s  %s\n",
                  FormatCoordinate(point.latitude, true, ECoordinateFormat::kDegrees),
                  FormatCoordinate(point.longitude, false, ECoordinateFormat::kDegrees),
                  Printable(point.name));
    }
  }
}

}  // namespace

int RunInspection(const Options& options, const FormatTable& table) {
  const WideString& path = options.tokens[0];
  const uint32_t attributes = FileAttributes(path);
  if (attributes == kNoAttributes && LastError() == kStatusFileNotFound) {
    Complain(FormatText(kTextNoSource, ShownPath(path)));
    return kExitWrongUsage;
  }
  if (attributes == kAttributeDirectory) {
    Complain(path, std::string(LoadTextUtf8(kTextCannotBeRead)) + " " +
                       FormatText(kTextReason, LoadTextUtf8(kTextReasonFolder)));
    return kExitFailed;
  }
  SetLastError(kStatusSuccess);
  const Inspected inspected = Inspect(path, table);
  OutputSink sink;
  if (options.json) {
    WriteJson(sink, inspected);
  } else if (inspected.status == kStatusSuccess) {
    WriteText(sink, inspected);
  }
  const bool isWritten = sink.Finish();
  if (inspected.status == kStatusSuccess) return isWritten ? kExitConverted : kExitFailed;
  const uint32_t message =
      inspected.status == kStatusBadFormat ? kTextUnknownFormat : kTextCannotBeRead;
  Complain(path, std::string(LoadTextUtf8(message)) + FailureReason(path));
  return kExitFailed;
}
