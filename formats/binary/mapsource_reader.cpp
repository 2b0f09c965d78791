#include "formats/binary/mapsource_reader.h"

#include <algorithm>
#include <array>

#include "base/status.h"
#include "conversion/conversion_context.h"

namespace {

// Types of records.
constexpr uint8_t kVersionRecord = 'D';
constexpr uint8_t kApplicationRecord = 'A';
constexpr uint8_t kWaypointRecord = 'W';
constexpr uint8_t kRouteRecord = 'R';
constexpr uint8_t kTrackRecord = 'T';

// Class of a waypoint that stands for itself. All others are there for the routes.
constexpr int32_t kUserWaypoint = 0;

constexpr size_t kTrackHeadGap = 5;
constexpr size_t kRoutePointClassSize = 4;

// Bodies are read by their fields, which may lead further than the length of the record, each stop
// takes a copy of its waypoint, and a list without points takes a hundred times the memory of its
// record. So that a hostile file cannot grow without end, these together may cost this many times
// its own size, and a small one so much anyway. Real files stay far below.
constexpr size_t kAllowedRepeats = 4;
constexpr size_t kSmallAllowance = size_t{1} << 20;
constexpr size_t kEmptyListCost = 1024;

// Positions have single precision here, although the file carries more.
double FromSemicircles(int32_t value) {
  constexpr double kHalfTurnPart = 1.0 / 2147483648.0;
  return static_cast<double>(static_cast<float>(value * 180.0 * kHalfTurnPart));
}

}  // namespace

uint32_t MapSourceReader::Read(std::string_view bytes, PointLists& lists) {
  if (!bytes.starts_with(m_magic)) return kStatusInvalidArgument;
  auto& userWaypoints = AddList<CGpsWaypointList>(lists);
  m_allowance = bytes.size() * kAllowedRepeats + kSmallAllowance;

  ByteCursor file(bytes, m_magic.size());
  bool offFrame = false;
  while (m_allowance > 0 && m_context.GoesOn(file.Position())) {
    const int32_t length = file.Int32();
    const uint8_t type = file.Uint8();
    if (file.Overrun()) break;
    if (length < 0) {
      // Behind a record that is longer than it says no record begins, and none is lost.
      if (!offFrame) m_context.Note(ConversionNote::kLinePassedOver);
      break;
    }
    ByteCursor record = file;
    file.Skip(static_cast<size_t>(length));
    if (type == kVersionRecord) {
      const uint8_t letter = record.Uint8();
      if (record.Overrun()) break;
      if (const uint32_t status = TakeVersion(letter); status != kStatusSuccess) return status;
    } else if (type == kApplicationRecord) {
      SkipBehindApplication(file);
    } else if (type == kWaypointRecord) {
      ReadWaypoint(record, userWaypoints);
    } else if (type == kTrackRecord) {
      ReadTrack(record, AddList<CGpsTrack>(lists));
      SpendIfEmpty(*lists.back());
    } else if (type == kRouteRecord) {
      ReadRoute(record, AddList<CGpsRoute>(lists));
      SpendIfEmpty(*lists.back());
    }
    if (record.Position() > file.Position()) {
      offFrame = true;
      Spend(record.Position() - file.Position());
    }
  }
  if (m_allowance == 0) m_context.Note(ConversionNote::kLinePassedOver);
  return kStatusSuccess;
}

void MapSourceReader::ReadWaypoint(ByteCursor& record, CGpsPointArray& userWaypoints) {
  Waypoint waypoint;
  waypoint.name = record.ZeroTerminated();
  const int32_t waypointClass = record.Int32();
  record.ZeroTerminated();  // country
  record.Skip(SubclassSize());
  waypoint.position = ReadPosition(record);
  if (record.Overrun()) {
    m_context.Note(ConversionNote::kLinePassedOver);
    return;
  }
  waypoint.comment = record.ZeroTerminated();
  if (waypointClass == kUserWaypoint) {
    AppendWaypoint(userWaypoints, waypoint);
  } else {
    m_pool.push_back(waypoint);
  }
}

void MapSourceReader::ReadTrack(ByteCursor& record, CGpsPointArray& track) const {
  track.name = Text(record.ZeroTerminated());
  record.Skip(kTrackHeadGap);
  const int32_t count = record.Int32();
  for (int32_t i = 0; i < count; ++i) {
    const Position position = ReadPosition(record);
    if (record.Overrun()) {
      m_context.Note(ConversionNote::kLinePassedOver);
      break;
    }
    AppendPosition(track, position);
    SkipTrackPointDetails(record);
  }
}

void MapSourceReader::ReadRoute(ByteCursor& record, CGpsPointArray& route) {
  m_poolIndex.Reserve(m_pool.size());
  for (; m_indexed < m_pool.size(); ++m_indexed) m_poolIndex.Add(m_indexed);

  route.name = Text(record.ZeroTerminated());
  record.Uint8();
  const bool noBox = record.Uint8() != 0;
  if (!noBox) SkipBox(record);

  std::vector<std::string_view> stops;
  const int32_t count = record.Int32();
  for (int32_t i = 0; i < count; ++i) {
    const std::string_view name = record.ZeroTerminated();
    if (record.Overrun()) {
      m_context.Note(ConversionNote::kLinePassedOver);
      break;
    }
    if (stops.size() == NameIndex<NameInPool>::kMostAtOnce) {
      AppendStops(route, stops);
      stops.clear();
    }
    stops.push_back(name);

    // Where the way runs between the stops is for the device alone.
    record.Skip(kRoutePointClassSize);
    record.ZeroTerminated();  // country
    record.Skip(SubclassSize());
    SkipToLinkCount(record);
    const int32_t links = record.Int32();
    for (int32_t link = 0; link < links && !record.Overrun(); ++link) ReadPosition(record);
    // The first and the last of them are the stops.
    if (links > 2 && !record.Overrun()) {
      m_context.Note(ConversionNote::kShapingPoint, static_cast<uint64_t>(links) - 2);
    }
    const bool isLast = record.Uint8() != 0;
    if (!isLast) SkipBox(record);
    record.Skip(RoutePointTailSize());
  }
  AppendStops(route, stops);
}

// Appends for each name a copy of the first waypoint of the pool that has it.
void MapSourceReader::AppendStops(CGpsPointArray& route, std::span<const std::string_view> names) {
  std::array<uint32_t, NameIndex<NameInPool>::kMostAtOnce> numbers;
  m_poolIndex.Find(names, numbers.data());
  for (size_t i = 0; i < names.size() && m_allowance > 0; ++i) {
    if (numbers[i] == NameIndex<NameInPool>::kNone) {
      m_context.Note(ConversionNote::kStopWithoutWaypoint);
      continue;
    }
    const Waypoint& waypoint = m_pool[numbers[i]];
    AppendWaypoint(route, waypoint);
    Spend(waypoint.comment.size());
  }
}

void MapSourceReader::AppendWaypoint(CGpsPointArray& list, const Waypoint& waypoint) const {
  AppendPosition(list, waypoint.position);
  list.points.back().name = Text(waypoint.name);
  list.points.back().comment = Text(waypoint.comment);
}

void MapSourceReader::AppendPosition(CGpsPointArray& list, const Position& position) {
  CGpsPoint& point = list.points.emplace_back();
  point.latitude = position.latitude;
  point.longitude = position.longitude;
  point.altitude = position.altitude;
}

MapSourceReader::Position MapSourceReader::ReadPosition(ByteCursor& record) const {
  Position position{};
  position.latitude = FromSemicircles(record.Int32());
  position.longitude = FromSemicircles(record.Int32());
  const bool hasAltitude = record.Uint8() != 0;
  if (hasAltitude || !m_altitudeIsOptional) {
    const double altitude = record.Double();
    if (hasAltitude) position.altitude = altitude;
  }
  return position;
}

void MapSourceReader::SkipBox(ByteCursor& record) const {
  ReadPosition(record);
  ReadPosition(record);
}

void MapSourceReader::SpendIfEmpty(const CGpsPointArray& list) {
  if (list.points.empty()) Spend(kEmptyListCost);
}

void MapSourceReader::Spend(size_t bytes) { m_allowance -= std::min(bytes, m_allowance); }
