#pragma once

#include <string>
#include <vector>

#include "app/options.h"
#include "model/point_list.h"

/// The indices of the lists that a choice means; none when it means none of them, or one that is
/// not there. The default is the first route, without one the first list of points, without one
/// the first track.
std::vector<size_t> SelectLists(const PointLists& lists, const ListChoice& choice);

/// The word for a list's kind as options and JSON spell it.
std::string_view KindName(unsigned kind);

/// A list for the user, such as `track "Day 1" (210 points)`.
std::string DescribeList(const CGpsPointArray& list);
