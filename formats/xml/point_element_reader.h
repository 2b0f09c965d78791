#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "base/numbers.h"
#include "base/wide_string.h"
#include "conversion/format_table.h"
#include "conversion/xml_frame.h"
#include "markup/xml_reader.h"
#include "model/point_list.h"

// One reader for the small formats, in which an element makes a point: each describes itself in a
// table.

/// An element, by its name and, unless that is empty, by the value of its attribute "class".
struct ElementKey {
  std::string_view name;
  std::string_view className = {};
};

/// An element or attribute whose text goes into a point.
struct PointField {
  std::string_view name;
  /// False for a text that does not fit and is passed over.
  bool (*store)(CGpsPoint& point, std::string_view text);
};

/// What differs between the small formats.
struct PointFormat {
  /// The elements that hold all else; without any it stands anywhere.
  std::span<const ElementKey> containers = {};
  /// What names the list: an attribute of the container, or the first element outside of points
  /// that isn't empty.
  std::string_view listNameAttribute = {};
  std::string_view listNameElement = {};
  ElementKey point = {};
  /// The attributes of a point and the elements inside it, at any depth. A point without elements
  /// is whole at its start tag.
  std::span<const PointField> attributes = {};
  std::span<const PointField> elements = {};
  /// Whether other elements of a point that hold a text are counted as passed over. Devices fill
  /// theirs with what no user has told them.
  bool tellsOthers = false;
  /// Called with a point that is whole.
  void (*finish)(CGpsPoint& point) = nullptr;
};

inline bool TakeName(CGpsPoint& point, std::string_view text) {
  point.name = text;
  return true;
}
inline bool TakeComment(CGpsPoint& point, std::string_view text) {
  point.comment = text;
  return true;
}
inline bool TakeLatitude(CGpsPoint& point, std::string_view text) {
  point.latitude = ParseReal(text);
  return true;
}
inline bool TakeLongitude(CGpsPoint& point, std::string_view text) {
  point.longitude = ParseReal(text);
  return true;
}
inline bool TakeAltitude(CGpsPoint& point, std::string_view text) {
  point.altitude = ParseReal(text);
  return true;
}

/// Stores the attributes that `fields` name. False when one of them was passed over.
bool StoreAttributes(CGpsPoint& point, const XML_Char** attributes,
                     std::span<const PointField> fields);

/// Reads one route, which stands in `lists` before the file is parsed. 0, or 1 when it cannot be
/// opened or parsed; the points before a fault stay.
uint32_t ReadPoints(const WideString& path, PointLists& lists, const PointFormat& format);
uint32_t ParsePoints(std::string_view bytes, PointLists& lists, const PointFormat& format,
                     ConversionContext& context);

/// The reader and the inner function of a format.
template <const PointFormat& kFormat>
uint32_t ReadPointsOf(const WideString& path, PointLists& lists, bool) {
  return ReadPoints(path, lists, kFormat);
}
template <const PointFormat& kFormat>
uint32_t ParsePointsOf(std::string_view bytes, PointLists& lists, ConversionContext& context) {
  return ParsePoints(bytes, lists, kFormat, context);
}
