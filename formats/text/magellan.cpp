#include "formats/text/magellan.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

#include <fmt/printf.h>

#include "core/conversion_notes.h"
#include "core/format_file.h"
#include "core/numbers.h"
#include "core/text.h"
#include "core/units.h"

namespace {

using Fields = std::vector<std::string_view>;

constexpr std::string_view kSentences = "$PMGN";  // what all of them begin with
constexpr std::string_view kWaypointSentence = "$PMGNWPL";
constexpr std::string_view kRouteSentence = "$PMGNRTE";
constexpr std::string_view kTrackSentence = "$PMGNTRK";

constexpr size_t kFewestWaypointFields = 10;
constexpr size_t kFewestRouteFields = 6;

// How much text the copies of waypoints that are named again and again may hold beyond the texts
// of the pool itself. A small file could fill any memory otherwise.
constexpr size_t kRepeatedTextLimit = size_t{64} << 20;

size_t TextSize(const CGpsPoint& point) { return point.name.size() + point.comment.size(); }

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

std::string WithoutCommas(std::string text) {
  std::erase(text, ',');
  return text;
}

// The checksum covers what stands between "$" and "*".
void WriteSentence(ByteSink& sink, std::string_view sentence) {
  uint8_t checksum = 0;
  for (const char c : sentence.substr(1)) checksum ^= static_cast<uint8_t>(c);
  sink.Write(sentence);
  sink.Printf("*%02X\r\n", checksum);
}

}  // namespace

void MagellanPool::Add(CGpsPoint waypoint) {
  m_textSize += TextSize(waypoint);
  m_waypoints.points.push_back(std::move(waypoint));
}

bool MagellanPool::AppendTo(CGpsPointArray& list, const std::string& id) {
  IndexNewWaypoints();
  const auto found = m_firstById.find(id);
  if (found == m_firstById.end() || m_copiedSize > m_textSize + kRepeatedTextLimit) return false;
  list.points.push_back(*found->second);
  m_copiedSize += TextSize(*found->second);
  return true;
}

void MagellanPool::MoveTo(CGpsPointArray& list) {
  m_firstById.clear();
  m_indexed = 0;
  list.TakePoints(m_waypoints);
}

void MagellanPool::IndexNewWaypoints() {
  const size_t count = m_waypoints.Count();
  if (m_indexed == 0) m_firstById.reserve(count);
  for (; m_indexed < count; ++m_indexed) {
    const CGpsPoint& waypoint = m_waypoints.points[m_indexed];
    m_firstById.try_emplace(waypoint.comment, &waypoint);
  }
}

uint32_t ReadMagellan(const WideString& path, PointLists& lists, bool) {
  return ReadFormatFile(path,
                        [&lists](std::string_view bytes) { return ParseMagellan(bytes, lists); });
}

uint32_t ParseMagellan(std::string_view bytes, PointLists& lists) {
  MagellanPool pool;
  auto& route = AddList<CGpsRoute>(lists);
  size_t nameShift = 0;

  LineSplitter lines(bytes);
  Fields fields;
  for (std::string_view line; lines.Next(line);) {
    if (!line.starts_with(kSentences)) continue;
    SplitSentence(line, fields);
    if (fields[0] == kWaypointSentence) {
      ParseMagellanWaypoint(fields, pool);
    } else if (fields[0] == kRouteSentence) {
      ParseMagellanRoute(fields, pool, route, nameShift);
    } else if (fields[0] == kTrackSentence) {
      NoteConversion(EConversionNote::kLinePassedOver);
    }
  }
  if (route.points.empty()) {
    // A file of waypoints only is a route of them, without a name.
    route.name.clear();
    pool.MoveTo(route);
  }
  return kStatusSuccess;
}

void ParseMagellanWaypoint(const Fields& fields, MagellanPool& pool) {
  if (fields.size() < kFewestWaypointFields) {
    NoteConversion(EConversionNote::kLinePassedOver);
    return;
  }
  CGpsPoint point;
  point.latitude = ParseAngle(fields[1], fields[2], 'S');
  point.longitude = ParseAngle(fields[3], fields[4], 'W');
  point.altitude = ParseReal(fields[5]);
  if (fields[6].starts_with('F')) point.altitude *= kMetresPerFoot;
  point.comment = WidenToUtf8(fields[7]);
  point.name = fields[8].empty() ? point.comment : WidenToUtf8(fields[8]);
  pool.Add(std::move(point));
}

void ParseMagellanRoute(const Fields& fields, MagellanPool& pool, CGpsRoute& route,
                        size_t& nameShift) {
  if (fields.size() < kFewestRouteFields) {
    NoteConversion(EConversionNote::kLinePassedOver);
    return;
  }
  // A sentence with the route's name has an odd number of fields, the checksum included.
  if (ParseWhole(fields[2]) == 1) nameShift = fields.size() % 2;
  if (!fields[3].starts_with('c')) {
    NoteConversion(EConversionNote::kLinePassedOver);
    return;
  }
  if (nameShift == 1 && route.name.empty()) route.name = WidenToUtf8(fields[5]);
  // An id and an icon in turn.
  for (size_t i = nameShift + 5; i + 1 < fields.size(); i += 2) {
    if (!pool.AppendTo(route, WidenToUtf8(fields[i])))
      NoteConversion(EConversionNote::kStopWithoutWaypoint);
  }
}

uint32_t WriteMagellan(const WideString& path, const CGpsPointArray& list, uint32_t explorist,
                       bool) {
  std::optional<std::string> routeName;
  if (explorist != 0) routeName = WithoutCommas(NarrowForFile(FileTitleOfPath(path)));
  return WriteFormatFile(path, [&](ByteSink& sink) { WriteMagellanBody(sink, list, routeName); });
}

void WriteMagellanBody(ByteSink& sink, const CGpsPointArray& list,
                       const std::optional<std::string>& routeName) {
  size_t index = 0;
  for (const CGpsPoint& point : list.points) {
    WriteSentence(
        sink, fmt::sprintf("$PMGNWPL,%08.03f,%c,%09.03f,%c,%07.f,M,WPT%03d,%s,a",
                           DegreesAndMinutes(point.latitude), point.latitude < 0.0 ? 'S' : 'N',
                           DegreesAndMinutes(point.longitude), point.longitude < 0.0 ? 'W' : 'E',
                           point.altitude, ++index, WithoutCommas(NarrowUtf8(point.name))));
  }

  const size_t count = list.Count();
  const size_t total = (count + 1) / 2;
  for (size_t i = 1; i <= total; ++i) {
    std::string sentence = fmt::sprintf("$PMGNRTE,%d,%d,c,1", total, i);
    if (routeName) sentence += ',' + *routeName;
    const size_t first = 2 * i - 1;
    const size_t last = std::min(first + 1, count);
    for (size_t k = first; k <= last; ++k) sentence += fmt::sprintf(",WPT%03d,a", k);
    WriteSentence(sink, sentence);
  }
}
