#pragma once

#include <cstdint>

#include "model/point.h"

/// Whole metres on a projected plane.
class CGridCoordinate {
 public:
  CGridCoordinate() = default;
  CGridCoordinate(int32_t east, int32_t north) : x(east), y(north) {}
  CGridCoordinate(const CGridCoordinate&) = default;
  virtual ~CGridCoordinate() = default;

  virtual bool IsValid() const;
  virtual bool IsNull() const;
  virtual bool operator==(const CGridCoordinate& other) const;
  virtual bool operator!=(const CGridCoordinate& other) const;
  virtual CGridCoordinate& operator=(const CGridCoordinate& other);
  virtual CGridCoordinate& operator+=(int32_t scalar);
  virtual CGridCoordinate& operator+=(const CGridCoordinate& other);
  virtual CGridCoordinate& operator-=(int32_t scalar);
  virtual CGridCoordinate& operator-=(const CGridCoordinate& other);
  virtual CGridCoordinate& operator*=(int32_t scalar);
  /// Truncates toward zero; `scalar` must not be 0. The remainder has the sign of the member.
  virtual CGridCoordinate& operator/=(int32_t scalar);
  virtual CGridCoordinate& operator%=(int32_t scalar);
  virtual CGridCoordinate operator+(const CGridCoordinate& other) const;
  virtual CGridCoordinate operator-() const;
  virtual CGridCoordinate operator-(const CGridCoordinate& other) const;
  virtual void Reset();

  int32_t x = 0;
  int32_t y = 0;
};

/// A straight piece of a way on the Mercator plane, by its start and its extent.
class CGridSegment : public CGridCoordinate {
 public:
  CGridSegment(const CGpsCoordinate& start, const CGpsCoordinate& end);
  using CGridCoordinate::operator=;

  double dx;
  double dy;
  double length;
};

/// A plane onto which positions are projected.
class IGridProjection {
 public:
  virtual ~IGridProjection() = default;
  virtual CGridCoordinate Project(const CGpsCoordinate& position) const = 0;
  /// The position of a grid point, clamped to the range of degrees.
  virtual CGpsCoordinate Unproject(const CGridCoordinate& grid) const = 0;
};

/// Spherical Mercator. Positions at the poles and outside the world end at the limits of 32 bits.
class CMercatorProjection : public IGridProjection {
 public:
  CMercatorProjection() : CMercatorProjection(kEarthRadius) {}
  CGridCoordinate Project(const CGpsCoordinate& position) const override;
  CGpsCoordinate Unproject(const CGridCoordinate& grid) const override;

 protected:
  /// `radius` in metres.
  explicit CMercatorProjection(double radius) : m_radius(radius) {}

 private:
  double m_radius;
};

/// The same on the sphere of 6371 km that several navigation products reckon with.
class CMercatorProjection6371 : public CMercatorProjection {
 public:
  CMercatorProjection6371() : CMercatorProjection(6371000.0) {}
};
