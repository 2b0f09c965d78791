#include "formats/binary/mapsource_writer.h"

#include <algorithm>
#include <string>
#include <vector>

#include "base/numbers.h"
#include "base/text.h"
#include "model/point_order.h"
#include "platform/prefetch.h"

namespace {

using std::string_view_literals::operator""sv;

// Class of the waypoints that belong to a route.
constexpr int32_t kRouteWaypoint = 8;

// Country (an empty text) and map object: none.
constexpr std::string_view kSubclass =
    "\x00\x00\x00\x00\x00\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\x00\x00"
    "\xFF\xFF\xFF\xFF"sv;

constexpr size_t kPrefetchDistance = 16;

constexpr size_t kIntegerSize = 4;
constexpr size_t kPositionSize = 9;
constexpr size_t kAltitudeSize = 8;

// The last point of a route has no link; every other one links its own position to the next.
constexpr int32_t kLinkPositions = 2;

int32_t ToSemicircles(double degrees) { return TruncateToInt32(degrees * 2147483648.0 / 180.0); }

// Texts end at a zero byte: one inside would end them early and break the frame.
std::string_view UpToZero(std::string_view text) { return text.substr(0, text.find('\0')); }

// The bytes of a text without its zero byte, made in `buffer`.
std::string_view Narrowed(std::string_view text, std::string& buffer) {
  buffer.clear();
  AppendNarrowUtf8(buffer, UpToZero(text));
  return buffer;
}

void WriteText(ByteSink& sink, std::string_view text) {
  sink.Narrow(UpToZero(text));
  sink.Put('\0');
}

bool HasAltitude(const CGpsCoordinate& position) { return position.altitude != 0.0; }

void WritePosition(ByteSink& sink, const CGpsCoordinate& position, bool flag, bool withAltitude) {
  sink.Int32(ToSemicircles(position.latitude));
  sink.Int32(ToSemicircles(position.longitude));
  sink.Put(flag ? '\1' : '\0');
  if (withAltitude) sink.Double(position.altitude);
}

void WritePlace(ByteSink& sink, const CGpsCoordinate& position, const MapSourceLayout& layout) {
  const bool flag = HasAltitude(position);
  WritePosition(sink, position, flag, flag || !layout.altitudeIsOptional);
}

void WriteCorner(ByteSink& sink, const CGpsCoordinate& position, const MapSourceLayout& layout) {
  WritePosition(sink, position, layout.altitudeIsOptional || HasAltitude(position), true);
}

// Highest and lowest latitude, longitude and altitude, each by itself.
class Box {
 public:
  explicit Box(const CGpsCoordinate& first) : m_highest(first), m_lowest(first) {}

  void Include(const CGpsCoordinate& position) {
    Widen(m_highest.latitude, m_lowest.latitude, position.latitude);
    Widen(m_highest.longitude, m_lowest.longitude, position.longitude);
    Widen(m_highest.altitude, m_lowest.altitude, position.altitude);
  }

  void Write(ByteSink& sink, const MapSourceLayout& layout) const {
    WriteCorner(sink, m_highest, layout);
    WriteCorner(sink, m_lowest, layout);
  }

 private:
  static void Widen(double& highest, double& lowest, double value) {
    highest = std::max(highest, value);
    lowest = std::min(lowest, value);
  }

  CGpsCoordinate m_highest;
  CGpsCoordinate m_lowest;
};

// By rule and not by counting: where altitudes are optional it is 8 bytes off when only one of the
// two ends of the route has one. Readers go by the fields of a route.
size_t RouteLength(const CGpsPointArray& list, const MapSourceLayout& layout) {
  std::string buffer;
  size_t length = Narrowed(list.name, buffer).size() + layout.routeSize;
  bool isFirst = true;
  for (const CGpsPoint& point : list.points) {
    length += Narrowed(point.name, buffer).size();
    length += isFirst ? layout.firstRoutePointSize : layout.nextRoutePointSize;
    if (!isFirst && HasAltitude(point)) length += layout.nextRoutePointAltitudeSize;
    isFirst = false;
  }
  return length;
}

void WriteRoutePoint(ByteSink& sink, const CGpsPoint& point, const CGpsPoint* next,
                     const MapSourceLayout& layout) {
  WriteText(sink, point.name);
  sink.Int32(layout.routePointClass);
  sink.Write(kSubclass);
  sink.Write(layout.routePointMiddle);
  if (next != nullptr) {
    sink.Int32(kLinkPositions);
    WritePlace(sink, point, layout);
    WritePlace(sink, *next, layout);
    sink.Put('\0');
    Box box(point);
    box.Include(*next);
    box.Write(sink, layout);
  } else {
    sink.Int32(0);
    sink.Put('\1');
  }
  sink.Write(layout.routePointTail);
}

}  // namespace

void WriteMapSourceHead(ByteSink& sink, char type, size_t length) {
  sink.Uint32(static_cast<uint32_t>(length));
  sink.Put(type);
}

void WriteMapSourceVersion(ByteSink& sink, char letter) {
  WriteMapSourceHead(sink, 'D', 2);
  sink.Put(letter);
  sink.Put('\0');
}

void WriteMapSourceWaypoints(ByteSink& sink, const CGpsPointArray& list,
                             const MapSourceLayout& layout) {
  const std::vector<const CGpsPoint*> points = SortedUniquePoints(list.points);
  std::string buffer;
  for (size_t i = 0; i < points.size(); ++i) {
    // Neighbours on the earth lie far apart in memory.
    if (i + kPrefetchDistance < points.size()) Prefetch(points[i + kPrefetchDistance]);
    const CGpsPoint& point = *points[i];
    const bool withAltitude = !layout.altitudeIsOptional || HasAltitude(point);
    const std::string_view name = Narrowed(point.name, buffer);
    WriteMapSourceHead(sink, 'W',
                       name.size() + 1 + kIntegerSize + kSubclass.size() + kPositionSize +
                           (withAltitude ? kAltitudeSize : 0) + layout.waypointTail.size());
    sink.Write(name);
    sink.Put('\0');
    sink.Int32(kRouteWaypoint);
    sink.Write(kSubclass);
    WritePlace(sink, point, layout);
    sink.Write(layout.waypointTail);
  }
}

void WriteMapSourceRoute(ByteSink& sink, const CGpsPointArray& list,
                         const MapSourceLayout& layout) {
  if (list.points.empty()) return;
  WriteMapSourceHead(sink, 'R', RouteLength(list, layout));
  WriteText(sink, list.name);
  sink.Zeros(2);  // the second byte says that there is a box

  Box box(list.points.front());
  for (const CGpsPoint& point : list.points) box.Include(point);
  box.Write(sink, layout);

  sink.Int32(static_cast<int32_t>(list.points.size()));
  for (auto point = list.points.begin(); point != list.points.end();) {
    const CGpsPoint& current = *point++;
    WriteRoutePoint(sink, current, point == list.points.end() ? nullptr : &*point, layout);
  }
}

void WriteMapSourceEnd(ByteSink& sink) {
  WriteMapSourceHead(sink, 'V', 2);
  sink.Put('\0');
  sink.Put('\1');
}
