#pragma once

#include <cstdint>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "markup/json.h"
#include "model/route_leg.h"
#include "services/directions/route_provider.h"
#include "services/reply.h"

// How replies of directions services become legs.

/// What one reply may still hold of points that cost its sender a byte or two each: packed lines,
/// parts of a line that several legs share, empty elements. As many as values, for no way has more.
class PointAllowance {
 public:
  /// Takes one; false when there is none left.
  bool Take() { return m_left > 0 && m_left-- > 0; }
  /// The same for replies in JSON: throws CJsonException.
  void TakeOrThrow();

 private:
  size_t m_left = kReplyValues;
};

/// Appends a point without a name, which the caller may complete.
CGpsNamedPoint& AppendPoint(CGpsPointList& points, double latitude, double longitude);
/// Appends a copy of a point's position and texts.
CGpsNamedPoint& AppendPoint(CGpsPointList& points, const CGpsNamedPoint& point);

/// Appends the position of an object with these members. Throws CJsonException.
CGpsNamedPoint& AppendPoint(CGpsPointList& points, const CJsonValue& position,
                            std::string_view latitudeKey, std::string_view longitudeKey);

/// To the nearest whole number, halves away from zero; 0 for what does not fit or is no number.
uint32_t RoundedUint32(double value);
/// The same of a member. Throws CJsonException.
uint32_t RoundedMember(const CJsonValue& object, std::string_view key);
/// The same of a member that the service leaves out when it is 0.
uint32_t RoundedMemberOrZero(const CJsonValue& object, std::string_view key);

/// A measure that is there.
CRouteMeasure MakeMeasure(uint32_t distance, uint32_t duration);

/// A leg that remembers what it was requested with.
CRouteData MakeLeg(uint32_t travelMode, const CRouteOptions& options);

/// Copies the first and the last point of the shape into the path.
void TakePathFromShape(CRouteData& leg);

/// The points of a line by their index, which many services count in.
class ShapeIndex {
 public:
  /// The line must outlive this.
  explicit ShapeIndex(const CGpsPointList& line);

  /// Copies the position of a point; of the last one for an index that is too large.
  void TakePosition(size_t index, CGpsCoordinate& position) const;
  /// Appends copies of the points from `from` to `to`, both included, as far as there are any.
  /// Throws CJsonException when they are too many.
  void Append(size_t from, size_t to, CGpsPointList& points, PointAllowance& allowance) const;

 private:
  std::vector<const CGpsNamedPoint*> m_points;
};

/// Reads a reply in JSON. `readStatus(reply)` gives the service's own status, or nothing where it
/// tells one only when it has failed, and unless it is 0 it ends there. `readLegs(reply, legs)`
/// appends to a vector of its own, whose legs are taken over when it has not thrown. What cannot be
/// read behind a status that was told gives kRouteFailed, all else kRouteInvalidRequest.
template <typename StatusReader, typename LegsReader>
uint32_t ReadReply(std::string_view text, CRouteProvider::Legs& legs, StatusReader readStatus,
                   LegsReader readLegs) {
  CRouteProvider::Legs read;
  const auto readAll = [&](const CJsonValue& reply, bool& hasStatus) -> uint32_t {
    const std::optional<uint32_t> told = readStatus(reply);
    hasStatus = told.has_value();
    const uint32_t status = told.value_or(kRouteSuccess);
    if (status == kRouteSuccess) readLegs(reply, read);
    return status;
  };
  const uint32_t status = ReadJsonReply(text, readAll);
  if (status == kRouteSuccess) std::move(read.begin(), read.end(), std::back_inserter(legs));
  return status;
}

/// The same where the service has no status of its own.
template <typename LegsReader>
uint32_t ReadReply(std::string_view text, CRouteProvider::Legs& legs, LegsReader readLegs) {
  const auto noStatus = [](const CJsonValue&) { return std::optional<uint32_t>(); };
  return ReadReply(text, legs, noStatus, readLegs);
}
