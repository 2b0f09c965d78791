#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/point.h"

// What the links of all web planners have in common.

/// The pieces of a link as they stand in it, escapes included. They are views into the link.
struct LinkPieces {
  std::string host;  ///< lower case, without user and port
  std::string_view path;
  std::string_view query;     ///< without its "?"
  std::string_view fragment;  ///< without its "#"
};

/// Takes a link apart. It needs no scheme; blanks around it do not count.
LinkPieces SplitLink(std::string_view link);

/// Path segments without their slashes, empty ones included.
std::vector<std::string_view> PathSegments(std::string_view path);

/// A piece of a link as text: escapes decoded once, "+" a blank, valid UTF-8 without control
/// characters. A "%" that begins no escape stays.
std::string LinkText(std::string_view piece);

/// The values of a query by their keys, decoded; of equal keys the first counts.
using LinkQuery = std::map<std::string, std::string, std::less<>>;
LinkQuery ParseLinkQuery(std::string_view query);
/// The value of a key; empty without one.
std::string_view ValueOf(const LinkQuery& query, std::string_view key);

/// A position from text of the form "latitude,longitude" and nothing else.
std::optional<CGpsCoordinate> ParseLinkPosition(std::string_view text);

/// "latitude,longitude" with six decimals, as links hold it.
std::string LinkPosition(const CGpsCoordinate& position);

/// A text of a point, such as its name, as the value of a query. Control characters are blanks.
std::string LinkValue(std::string_view text, std::string_view keep = {});
