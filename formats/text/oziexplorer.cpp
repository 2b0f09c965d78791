#include "formats/text/oziexplorer.h"

#include <algorithm>
#include <string>
#include <utility>

#include "base/numbers.h"
#include "base/text.h"
#include "base/units.h"
#include "conversion/conversion_lines.h"
#include "formats/text/padded_number.h"
#include "io/file_lines.h"

namespace {

using Fields = std::vector<std::string_view>;

constexpr std::string_view kRteHeader = "OziExplorer Route File Version 1.0";

// Lines at the start of a file that hold no points. Readers skip them by count, except the last
// one of a waypoint file, which has too few fields for a point anyway.
constexpr size_t kPltHeadLines = 6;
constexpr size_t kWptHeadLines = 4;
constexpr size_t kWptSkippedLines = 3;

// As far as a line of each format is looked at.
constexpr size_t kRteFields = 15;
constexpr size_t kRt2Fields = 5;
constexpr size_t kPltFields = 5;
constexpr size_t kWptFields = 15;

// What a point needs in each format.
constexpr size_t kFewestRteFields = 8;
constexpr size_t kFewestRt2Fields = 5;
constexpr size_t kFewestPointFields = 5;

// The route number of an "R" line without one.
constexpr int32_t kNoRouteNumber = -1;

constexpr size_t kLongestComment = 40;

// Past so many routes one without points gives way to the next: a list takes several hundred times
// the memory of its line.
constexpr size_t kMostEmptyRoutes = 1000;

// Calls `addPoint` with the fields of every line behind the first `skippedLines` that has enough of
// them for a point. Leading blanks of the line are cut; a field keeps those that follow its comma.
template <typename AddPoint>
void ReadPointLines(std::string_view bytes, size_t skippedLines, size_t headLines, size_t limit,
                    ConversionContext& context, AddPoint addPoint) {
  ConversionLines lines(bytes, context);
  Fields fields;
  size_t number = 0;
  for (std::string_view line; lines.Next(line);) {
    if (++number <= skippedLines) continue;
    line = TrimLeft(line, " ");
    SplitFirstFields(line, ',', limit, fields);
    if (fields.size() >= kFewestPointFields) {
      addPoint(fields);
    } else if (number > headLines && !line.empty()) {
      context.Note(ConversionNote::kLinePassedOver);
    }
  }
}

// Days since 1899, with the time of the day as their fraction; nothing or 0 where it is not known.
void NoteDay(std::string_view days, ConversionContext& context) {
  if (ParseReal(days) > 0.0) context.Note(ConversionNote::kTime);
}

double FeetToMetres(std::string_view feet) { return ParseReal(feet) * kMetresPerFoot; }

// Appends a text of a point in 8 bits and without commas.
void AppendFieldText(std::string& line, std::string_view utf8) {
  const size_t start = line.size();
  AppendNarrowUtf8(line, utf8);
  std::replace(line.begin() + static_cast<std::ptrdiff_t>(start), line.end(), ',', ' ');
}

void AppendCommentText(std::string& line, std::string_view utf8) {
  const size_t start = line.size();
  AppendFieldText(line, utf8);
  if (line.size() - start > kLongestComment) line.resize(start + kLongestComment);
}

void AppendIndex(std::string& line, size_t index) {
  AppendWhole(line, static_cast<int64_t>(index));
}

// "%.7f,%.7f"
void AppendPosition(std::string& line, const CGpsPoint& point) {
  AppendFixed(line, point.latitude, 7);
  line += ',';
  AppendFixed(line, point.longitude, 7);
}

// "%+011.7f, %+012.7f"
void AppendSignedPosition(std::string& line, const CGpsPoint& point) {
  AppendSignedFixed(line, point.latitude, 7, 11);
  line += ", ";
  AppendSignedFixed(line, point.longitude, 7, 12);
}

// "%.5f"
void AppendFeet(std::string& line, double metres) { AppendFixed(line, metres / kMetresPerFoot, 5); }

CGpsRoute& NextRoute(CGpsRoute* last, PointLists& lists) {
  if (!last || !last->points.empty() || lists.size() < kMostEmptyRoutes)
    return AddList<CGpsRoute>(lists);
  last->name.clear();
  return *last;
}

// Reads a route file line by line from a LineSplitter or FileLines.
template <typename Source>
uint32_t ParseRouteLines(Source source, PointLists& lists, ConversionContext& context) {
  ConversionLines lines(std::move(source), context);
  bool headerSeen = false;
  CGpsRoute* route = nullptr;
  int32_t routeNumber = kNoRouteNumber;

  Fields fields;
  for (std::string_view line; lines.Next(line);) {
    SplitFirstFields(line, ',', kRteFields, fields);
    if (!headerSeen) {
      headerSeen = fields[0] == kRteHeader;
    } else if (fields[0] == "R") {
      route = &NextRoute(route, lists);
      routeNumber = ParseOziRteRouteLine(fields, *route);
    } else if (fields[0] == "W") {
      if (!route || fields.size() < kFewestRteFields || ParseWhole(fields[1]) != routeNumber) {
        context.Note(ConversionNote::kLinePassedOver);
        continue;
      }
      CGpsPoint& point = route->points.emplace_back();
      point.name = WidenToUtf8(fields[4]);
      point.latitude = ParseReal(fields[5]);
      point.longitude = ParseReal(fields[6]);
      if (fields.size() >= kRteFields) point.comment = WidenToUtf8(fields[13]);
    }
  }
  return headerSeen ? kStatusSuccess : kStatusFailure;
}

}  // namespace

uint32_t ReadOziRoute(const WideString& path, PointLists& lists, bool) {
  ContextInPlace context;
  InputFile file;
  if (context->Keep(file.Open(path))) return kStatusFailure;
  context->Begin(ConversionProgress::Stage::kReading, file.Bytes().size());
  const uint32_t status = ParseRouteLines(FileLines(file), lists, context);
  return context->IsCancelled() ? static_cast<uint32_t>(kStatusCancelled) : status;
}

uint32_t ParseOziRoute(std::string_view bytes, PointLists& lists, ConversionContext& context) {
  return ParseRouteLines(LineSplitter(bytes), lists, context);
}

int32_t ParseOziRteRouteLine(const Fields& fields, CGpsPointArray& list) {
  if (fields.size() < 4) return kNoRouteNumber;
  list.name = WidenToUtf8(fields[2]);
  return ParseWhole(fields[1]);
}

void WriteOziRouteBody(ByteSink& sink, const CGpsPointArray& list) {
  sink.Printf("%s\r\nWGS 84\r\nReserved 1\r\nReserved 2\r\n", kRteHeader);
  sink.Printf("R,1,%s,,\r\n", NarrowUtf8(list.name));
  std::string line;
  size_t index = 0;
  for (const CGpsPoint& point : list.points) {
    ++index;
    // "W,1,%d,%d,%s,%.7f,%.7f,,0,1,3,0,65535,%s,0,0\r\n"
    line = "W,1,";
    AppendIndex(line, index);
    line += ',';
    AppendIndex(line, index);
    line += ',';
    AppendFieldText(line, point.name);
    line += ',';
    AppendPosition(line, point);
    line += ",,0,1,3,0,65535,";
    AppendCommentText(line, point.comment);
    line += ",0,0\r\n";
    sink.Write(line);
  }
}

uint32_t ParseOziRouteCe(std::string_view bytes, PointLists& lists, ConversionContext& context) {
  bool headerSeen = false;
  CGpsRoute* route = nullptr;

  ConversionLines lines(bytes, context);
  Fields fields;
  for (std::string_view line; lines.Next(line);) {
    SplitFirstFields(line, ',', kRt2Fields, fields);
    if (!headerSeen) {
      headerSeen = fields[0] == "H1";
    } else if (fields[0] == "H3") {
      route = &NextRoute(route, lists);
      ParseOziRt2RouteLine(fields, *route);
    } else if (fields[0] == "W") {
      if (!route || fields.size() < kFewestRt2Fields) {
        context.Note(ConversionNote::kLinePassedOver);
        continue;
      }
      CGpsPoint& point = route->points.emplace_back();
      point.name = WidenToUtf8(fields[1]);
      point.latitude = ParseReal(fields[2]);
      point.longitude = ParseReal(fields[3]);
    }
  }
  return headerSeen ? kStatusSuccess : kStatusFailure;
}

void ParseOziRt2RouteLine(const Fields& fields, CGpsPointArray& list) {
  if (fields.size() >= 3) list.name = WidenToUtf8(fields[1]);
}

void WriteOziRouteCeBody(ByteSink& sink, const CGpsPointArray& list) {
  sink.Write("H1,OziExplorer CE Route2 File Version 1.0\r\nH2,WGS 84\r\n");
  sink.Printf("H3,%s,,0\r\n", NarrowUtf8(list.name));
  std::string line;
  for (const CGpsPoint& point : list.points) {
    // "W,%s,%.7f,%.7f,0\r\n"
    line = "W,";
    AppendFieldText(line, point.name);
    line += ',';
    AppendPosition(line, point);
    line += ",0\r\n";
    sink.Write(line);
  }
}

uint32_t ParseOziTrack(std::string_view bytes, PointLists& lists, ConversionContext& context) {
  auto& track = AddList<CGpsTrack>(lists);
  ReadPointLines(bytes, kPltHeadLines, kPltHeadLines, kPltFields, context,
                 [&](const Fields& fields) {
                   CGpsPoint& point = track.points.emplace_back();
                   point.latitude = ParseReal(fields[0]);
                   point.longitude = ParseReal(fields[1]);
                   point.altitude = FeetToMetres(fields[3]);
                   NoteDay(fields[4], context);
                 });
  return kStatusSuccess;
}

void WriteOziTrackBody(ByteSink& sink, const CGpsPointArray& list) {
  sink.Write(
      "OziExplorer Track Point File Version 2.1\r\nWGS 84\r\n"
      "Altitude is in Feet\r\nReserved 3\r\n");
  sink.Printf("0, 2, 65280, %s, 1, 0, 0, 65280\r\n", NarrowUtf8(list.name));
  sink.Printf(" %d\r\n", list.Count());
  std::string line;
  for (const CGpsPoint& point : list.points) {
    // "%+011.7f, %+012.7f, 0, %.5f, , ,\r\n"
    line.clear();
    AppendSignedPosition(line, point);
    line += ", 0, ";
    AppendFeet(line, point.altitude);
    line += ", , ,\r\n";
    sink.Write(line);
  }
}

uint32_t ParseOziWaypoints(std::string_view bytes, PointLists& lists, ConversionContext& context) {
  auto& waypoints = AddList<CGpsWaypointList>(lists);
  ReadPointLines(bytes, kWptSkippedLines, kWptHeadLines, kWptFields, context,
                 [&](const Fields& fields) {
                   CGpsPoint& point = waypoints.points.emplace_back();
                   point.name = WidenToUtf8(fields[1]);
                   point.latitude = ParseReal(fields[2]);
                   point.longitude = ParseReal(fields[3]);
                   NoteDay(fields[4], context);
                   if (fields.size() > 10) point.comment = WidenToUtf8(fields[10]);
                   if (fields.size() > 14) point.altitude = FeetToMetres(fields[14]);
                 });
  return kStatusSuccess;
}

void WriteOziWaypointsBody(ByteSink& sink, const CGpsPointArray& list) {
  sink.Write("OziExplorer Waypoint File Version 1.0\r\nWGS 84\r\nReserved 2\r\nReserved 3\r\n");
  std::string line;
  size_t index = 0;
  for (const CGpsPoint& point : list.points) {
    // "%d, %s, %+011.7f, %+012.7f,, 18, 1, 3, 0, 65535, %s, 0, 0, 0, %.5f\r\n"
    line.clear();
    AppendIndex(line, ++index);
    line += ", ";
    AppendFieldText(line, point.name);
    line += ", ";
    AppendSignedPosition(line, point);
    line += ",, 18, 1, 3, 0, 65535, ";
    AppendCommentText(line, point.comment);
    line += ", 0, 0, 0, ";
    AppendFeet(line, point.altitude);
    line += "\r\n";
    sink.Write(line);
  }
}
