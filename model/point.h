#pragma once

#include <cstdint>
#include <memory>
#include <string>

class CGridSegment;
class CRouteLeg;

/// Half-width, in degrees, of the square inside which two positions count as the same.
inline constexpr double kDefaultTolerance = 0.0001;

/// Radius of the sphere of all distances and of the Mercator plane, in metres.
inline constexpr double kEarthRadius = 6378137.0;

inline constexpr double kDegreesPerRadian = 57.29577951308232;

/// A position: decimal degrees (WGS84 by convention), north and east positive. Nothing is checked
/// on assignment; a position at exactly 0, 0 counts as none.
class CGpsCoordinate {
 public:
  virtual ~CGpsCoordinate() = default;
  /// A new object of the class that owns this operation.
  virtual std::unique_ptr<CGpsCoordinate> Clone() const;
  virtual bool IsValid() const;
  /// True when latitude and longitude are both exactly 0.
  virtual bool IsNull() const;
  /// True when both positions lie inside the larger of the two tolerances. Altitude is ignored.
  virtual bool IsNear(const CGpsCoordinate& other) const;
  virtual bool IsFar(const CGpsCoordinate& other) const;
  /// Distance in whole projected metres to the endless line through the segment; 0 when the
  /// segment has no length.
  virtual uint32_t DistanceToSegment(const CGridSegment& segment) const;
  /// Length of the chord through the sphere in whole metres.
  virtual uint32_t DistanceTo(const CGpsCoordinate& other) const;
  /// Brings latitude into -90 to 90 and longitude into -180 to 180, without wrapping.
  virtual void Clamp();
  /// Back to the defaults.
  virtual void Reset();

  double tolerance = kDefaultTolerance;  ///< degrees
  double latitude = 0.0;                 ///< degrees
  double longitude = 0.0;                ///< degrees
  double altitude = 0.0;                 ///< metres; 0 also stands for unknown

  CGpsCoordinate() = default;
  CGpsCoordinate(const CGpsCoordinate&) = default;
  CGpsCoordinate(CGpsCoordinate&&) = default;
  CGpsCoordinate& operator=(const CGpsCoordinate&) = default;
  CGpsCoordinate& operator=(CGpsCoordinate&&) = default;
};

/// A named position. Texts are UTF-8.
class CGpsNamedPoint : public CGpsCoordinate {
 public:
  std::unique_ptr<CGpsCoordinate> Clone() const override;
  void Reset() override;
  /// Near, and the same name and comment byte for byte.
  virtual bool operator==(const CGpsNamedPoint& other) const;
  virtual bool operator!=(const CGpsNamedPoint& other) const;
  /// By latitude; by longitude where the latitudes lie within the larger tolerance. Not a strict
  /// weak order: sort with `SortAndUnique` only.
  bool operator<(const CGpsNamedPoint& other) const;

  std::string name;
  std::string comment;
};

/// The element of all lists. Owns the directions for the way that leads to it, if there are any.
class CGpsPoint : public CGpsNamedPoint {
 public:
  CGpsPoint();
  /// Copies have a leg of their own.
  CGpsPoint(const CGpsPoint& other);
  CGpsPoint(CGpsPoint&& other) noexcept;
  CGpsPoint& operator=(const CGpsPoint& other);
  CGpsPoint& operator=(CGpsPoint&& other) noexcept;
  /// Takes position and texts, without a leg.
  explicit CGpsPoint(const CGpsNamedPoint& other);
  ~CGpsPoint() override;

  void Reset() override;
  /// Replaces the leg by a copy of `leg`.
  virtual void SetRouteLeg(const CRouteLeg& leg);
  /// The leg, owned by the point; may be null.
  virtual CRouteLeg* GetRouteLeg() const;
  virtual void ClearRouteLeg();

  std::unique_ptr<CRouteLeg> routeLeg;
};
