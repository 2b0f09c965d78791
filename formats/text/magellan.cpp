#include "formats/text/magellan.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

#include "base/numbers.h"
#include "base/text.h"
#include "base/units.h"
#include "conversion/conversion_lines.h"
#include "formats/text/padded_number.h"

namespace {

using Fields = std::vector<std::string_view>;

constexpr std::string_view kSentences = "$PMGN";  // what all of them begin with
constexpr std::string_view kWaypointSentence = "$PMGNWPL";
constexpr std::string_view kRouteSentence = "$PMGNRTE";
constexpr std::string_view kTrackSentence = "$PMGNTRK";

constexpr size_t kFewestWaypointFields = 10;
constexpr size_t kFewestRouteFields = 6;

// How much text the copies of waypoints that are named again and again may hold. A small file could
// fill any memory otherwise.
constexpr size_t kRepeatedTextLimit = size_t{64} << 20;

// Both "," and "*" end a field, so that the checksum is the last one.
void SplitSentence(std::string_view sentence, Fields& fields) {
  fields.clear();
  size_t start = 0;
  for (size_t i = 0; i < sentence.size(); ++i) {
    if (sentence[i] != ',' && sentence[i] != '*') continue;
    fields.push_back(sentence.substr(start, i - start));
    start = i + 1;
  }
  fields.push_back(sentence.substr(start));
}

// "4830.000" is 48 degrees and 30 minutes.
double ParseAngle(std::string_view text, std::string_view hemisphere, char negative) {
  const double value = ParseReal(text);
  const double degrees = std::trunc(value / 100.0);
  const double angle = (value - degrees * 100.0) / 60.0 + degrees;
  return hemisphere.starts_with(negative) ? -angle : angle;
}

// Degrees and minutes in one number, without a sign.
double DegreesAndMinutes(double angle) {
  const double degrees = std::trunc(angle);
  return std::abs(degrees * 100.0 + (angle - degrees) * 60.0);
}

// Removes the commas from `start` on.
void RemoveCommas(std::string& text, size_t start = 0) {
  text.erase(std::remove(text.begin() + static_cast<std::ptrdiff_t>(start), text.end(), ','),
             text.end());
}

// "WPT001"
void AppendId(std::string& sentence, size_t index) {
  sentence += "WPT";
  AppendWhole(sentence, static_cast<int64_t>(index), 3);
}

// Closes the sentence with its checksum, which covers what stands between "$" and "*".
void WriteSentence(ByteSink& sink, std::string& sentence) {
  constexpr std::string_view kHexDigits = "0123456789ABCDEF";
  uint8_t checksum = 0;
  for (const char c : std::string_view(sentence).substr(1)) checksum ^= static_cast<uint8_t>(c);
  sentence += {'*', kHexDigits[checksum >> 4], kHexDigits[checksum & 0xF], '\r', '\n'};
  sink.Write(sentence);
}

}  // namespace

CGpsPoint& MagellanPool::Add(std::string_view id) {
  m_ids.push_back(id);
  CGpsPoint& waypoint = m_waypoints.points.emplace_back();
  waypoint.comment = WidenToUtf8(id);
  return waypoint;
}

bool MagellanPool::AppendTo(CGpsPointArray& list, std::string_view id) {
  IndexNewWaypoints();
  const uint32_t number = m_index.Find(id);
  if (number == NameIndex<IdAt>::kNone) return false;
  const CGpsPoint*& stop = m_stops[number];
  if (!stop) {
    stop = &list.points.emplace_back(std::move(m_waypoints.points[number]));
    return true;
  }
  if (m_copiedSize > kRepeatedTextLimit) return false;
  m_copiedSize += stop->name.size() + stop->comment.size();
  list.points.push_back(*stop);
  return true;
}

void MagellanPool::MoveTo(CGpsPointArray& list) { list.TakePoints(m_waypoints); }

void MagellanPool::IndexNewWaypoints() {
  const size_t indexed = m_stops.size();
  if (indexed == m_ids.size()) return;
  if (indexed == 0) m_index.Reserve(m_ids.size());
  m_stops.resize(m_ids.size());
  for (size_t i = indexed; i < m_ids.size(); ++i) m_index.Add(static_cast<uint32_t>(i));
}

uint32_t ParseMagellan(std::string_view bytes, PointLists& lists, ConversionContext& context) {
  MagellanPool pool;
  auto& route = AddList<CGpsRoute>(lists);
  size_t nameShift = 0;

  ConversionLines lines(bytes, context);
  Fields fields;
  for (std::string_view line; lines.Next(line);) {
    if (!line.starts_with(kSentences)) continue;
    SplitSentence(line, fields);
    if (fields[0] == kWaypointSentence) {
      ParseMagellanWaypoint(fields, pool, context);
    } else if (fields[0] == kRouteSentence) {
      ParseMagellanRoute(fields, pool, route, nameShift, context);
    } else if (fields[0] == kTrackSentence) {
      context.Note(ConversionNote::kLinePassedOver);
    }
  }
  if (route.points.empty()) {
    // A file of waypoints only is a route of them, without a name.
    route.name.clear();
    pool.MoveTo(route);
  }
  return kStatusSuccess;
}

void ParseMagellanWaypoint(const Fields& fields, MagellanPool& pool, ConversionContext& context) {
  if (fields.size() < kFewestWaypointFields) {
    context.Note(ConversionNote::kLinePassedOver);
    return;
  }
  CGpsPoint& point = pool.Add(fields[7]);
  point.latitude = ParseAngle(fields[1], fields[2], 'S');
  point.longitude = ParseAngle(fields[3], fields[4], 'W');
  point.altitude = ParseReal(fields[5]);
  if (fields[6].starts_with('F')) point.altitude *= kMetresPerFoot;
  point.name = fields[8].empty() ? point.comment : WidenToUtf8(fields[8]);
}

void ParseMagellanRoute(const Fields& fields, MagellanPool& pool, CGpsRoute& route,
                        size_t& nameShift, ConversionContext& context) {
  if (fields.size() < kFewestRouteFields) {
    context.Note(ConversionNote::kLinePassedOver);
    return;
  }
  // A sentence with the route's name has an odd number of fields, the checksum included.
  if (ParseWhole(fields[2]) == 1) nameShift = fields.size() % 2;
  if (!fields[3].starts_with('c')) {
    context.Note(ConversionNote::kLinePassedOver);
    return;
  }
  if (nameShift == 1 && route.name.empty()) route.name = WidenToUtf8(fields[5]);
  // An id and an icon in turn.
  for (size_t i = nameShift + 5; i + 1 < fields.size(); i += 2) {
    if (!pool.AppendTo(route, fields[i])) context.Note(ConversionNote::kStopWithoutWaypoint);
  }
}

uint32_t WriteMagellan(const WideString& path, const CGpsPointArray& list, uint32_t explorist,
                       bool) {
  std::optional<std::string> routeName;
  if (explorist != 0) {
    routeName = NarrowForFile(FileTitleOfPath(path));
    RemoveCommas(*routeName);
  }
  return WriteFileWith(path, ContextInPlace(),
                       [&](ByteSink& sink) { WriteMagellanBody(sink, list, routeName); });
}

uint32_t EmitMagellan(ByteSink& sink, const CGpsPointArray& list, uint32_t explorist,
                      ConversionContext&) {
  std::optional<std::string> routeName;
  if (explorist != 0) {
    routeName = NarrowUtf8(list.name);
    RemoveCommas(*routeName);
  }
  WriteMagellanBody(sink, list, routeName);
  return kStatusSuccess;
}

void WriteMagellanBody(ByteSink& sink, const CGpsPointArray& list,
                       const std::optional<std::string>& routeName) {
  std::string sentence;
  size_t index = 0;
  for (const CGpsPoint& point : list.points) {
    // "$PMGNWPL,%08.03f,%c,%09.03f,%c,%07.f,M,WPT%03d,%s,a"
    sentence = kWaypointSentence;
    sentence += ',';
    AppendPaddedFixed(sentence, DegreesAndMinutes(point.latitude), 3, 8);
    sentence += point.latitude < 0.0 ? ",S," : ",N,";
    AppendPaddedFixed(sentence, DegreesAndMinutes(point.longitude), 3, 9);
    sentence += point.longitude < 0.0 ? ",W," : ",E,";
    AppendPaddedFixed(sentence, point.altitude, 0, 7);
    sentence += ",M,";
    AppendId(sentence, ++index);
    sentence += ',';
    const size_t nameStart = sentence.size();
    AppendNarrowUtf8(sentence, point.name);
    RemoveCommas(sentence, nameStart);
    sentence += ",a";
    WriteSentence(sink, sentence);
  }

  const size_t count = list.Count();
  const size_t total = (count + 1) / 2;
  for (size_t i = 1; i <= total; ++i) {
    // "$PMGNRTE,%d,%d,c,1", the name, and ",WPT%03d,a" for each stop
    sentence = kRouteSentence;
    sentence += ',';
    AppendWhole(sentence, static_cast<int64_t>(total));
    sentence += ',';
    AppendWhole(sentence, static_cast<int64_t>(i));
    sentence += ",c,1";
    if (routeName) {
      sentence += ',';
      sentence += *routeName;
    }
    const size_t first = 2 * i - 1;
    const size_t last = std::min(first + 1, count);
    for (size_t k = first; k <= last; ++k) {
      sentence += ',';
      AppendId(sentence, k);
      sentence += ",a";
    }
    WriteSentence(sink, sentence);
  }
}
