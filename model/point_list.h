#pragma once

#include <cstddef>
#include <cstdint>
#include <list>
#include <memory>
#include <string>
#include <vector>

#include "model/point.h"
#include "model/point_queue.h"

/// A polyline: owned points of any kind in a linked list.
class CGpsPointList {
 public:
  CGpsPointList() = default;
  /// Copies own copies of the points, legs included.
  CGpsPointList(const CGpsPointList& other);
  CGpsPointList(CGpsPointList&&) = default;
  CGpsPointList& operator=(const CGpsPointList& other);
  CGpsPointList& operator=(CGpsPointList&&) = default;
  virtual ~CGpsPointList() = default;

  /// Count minus one; 0 when empty.
  virtual size_t LastIndex() const;
  virtual void SortAndUnique();
  virtual void RemoveNullPoints();
  /// Reduces a rising sequence of indices to those that keep the shape within `maximum` metres.
  virtual void Simplify(std::vector<size_t>& indices, uint32_t maximum) const;

  std::list<std::unique_ptr<CGpsNamedPoint>> points;
};

/// Kinds of lists, in the order in which a list is taken when nobody can be asked.
enum ListKind : unsigned { kKindRoute = 0, kKindTrack = 1, kKindWaypoints = 2, kKindPois = 3 };

/// Count of a range that leads up to the last point.
inline constexpr size_t kAllPoints = static_cast<size_t>(-1);

/// The named list of points that readers make and writers take. An operation that changes which
/// point stands before another clears that other point's route leg.
class CGpsPointArray {
 public:
  virtual ~CGpsPointArray() = default;
  /// Overwrites the points slot by slot, without legs; the name stays.
  virtual void AssignPoints(const CGpsPointList& other);
  virtual void Assign(const CGpsPointArray& other);
  /// Appends copies, legs included.
  virtual void AppendPoints(const CGpsPointList& other);
  /// Appends copies, legs included; the name stays. Appending a list to itself does nothing.
  virtual void Append(const CGpsPointArray& other);
  virtual unsigned GetKind() const = 0;
  virtual void SetName(const std::string& newName);
  virtual const std::string& GetName() const;
  virtual void Clear();
  /// Count minus one; 0 for an empty list.
  virtual size_t LastIndex() const;
  /// Inserts a copy in front of the point at `index`; an index equal to the count appends.
  /// Beyond it throws std::out_of_range, as all operations with an index do.
  virtual void InsertAt(size_t index, const CGpsPoint& point);
  virtual void RemoveAt(size_t index);
  /// Moves a point in front of the one at `to`, as counted before the move.
  virtual void MoveTo(size_t from, size_t to);
  virtual void Reverse();
  /// Ramer-Douglas-Peucker with the largest deviation in metres. The runs to erase are found
  /// first and erased by their old indices, without allowing for what is gone already.
  virtual void Simplify(uint32_t maximum);
  /// Stable sort by the bytes of the names.
  virtual void SortByName();
  /// Stable sort by position; of neighbours that are near each other the first stays.
  virtual void SortAndUnique();
  virtual void RemoveNullPoints();

  /// The point at `index`; throws std::out_of_range beyond the last.
  CGpsPoint& At(size_t index);
  const CGpsPoint& At(size_t index) const;
  size_t Count() const { return points.size(); }
  /// Moves all points of `other` to the end of this list and leaves `other` without points.
  void TakePoints(CGpsPointArray& other);

  PointQueue points;
  std::string name;  ///< UTF-8

 protected:
  CGpsPointArray() = default;
  /// Name and a range of another list; the range ends with the list.
  CGpsPointArray(const CGpsPointArray& other, size_t start, size_t count);
  CGpsPointArray(const CGpsPointArray&) = default;
  CGpsPointArray& operator=(const CGpsPointArray&) = default;
};

/// Free points.
class CGpsWaypointList : public CGpsPointArray {
 public:
  CGpsWaypointList() = default;
  CGpsWaypointList(const CGpsWaypointList&) = default;
  explicit CGpsWaypointList(const CGpsPointArray& other, size_t start = 0,
                            size_t count = kAllPoints)
      : CGpsPointArray(other, start, count) {}
  unsigned GetKind() const override { return kKindWaypoints; }
  virtual CGpsWaypointList& operator=(const CGpsWaypointList& other);
};

/// Points of interest.
class CGpsPoiList : public CGpsPointArray {
 public:
  CGpsPoiList() = default;
  CGpsPoiList(const CGpsPoiList&) = default;
  explicit CGpsPoiList(const CGpsPointArray& other, size_t start = 0, size_t count = kAllPoints)
      : CGpsPointArray(other, start, count) {}
  unsigned GetKind() const override { return kKindPois; }
  virtual CGpsPoiList& operator=(const CGpsPoiList& other);
};

/// A recorded way.
class CGpsTrack : public CGpsPointArray {
 public:
  CGpsTrack() = default;
  CGpsTrack(const CGpsTrack&) = default;
  explicit CGpsTrack(const CGpsPointArray& other, size_t start = 0, size_t count = kAllPoints)
      : CGpsPointArray(other, start, count) {}
  unsigned GetKind() const override { return kKindTrack; }
  virtual CGpsTrack& operator=(const CGpsTrack& other);
};

/// A planned way; the itinerary that the user edits is one.
class CGpsRoute : public CGpsPointArray {
 public:
  CGpsRoute() = default;
  CGpsRoute(const CGpsRoute&) = default;
  /// A range of another list, which is also the new route's `snapshot`.
  explicit CGpsRoute(const CGpsPointArray& other, size_t start = 0, size_t count = kAllPoints);
  unsigned GetKind() const override { return kKindRoute; }
  /// Also empties `snapshot`.
  void Clear() override;
  /// Takes points and name; `snapshot` stays.
  virtual CGpsRoute& operator=(const CGpsRoute& other);

  CGpsWaypointList snapshot;  ///< the state at the last load or save
};

/// What readers hand over; the caller owns the lists.
using PointLists = std::vector<std::unique_ptr<CGpsPointArray>>;

/// Appends a new empty list to `lists` and returns it.
template <typename List>
List& AddList(PointLists& lists) {
  auto list = std::make_unique<List>();
  List& added = *list;
  lists.push_back(std::move(list));
  return added;
}
