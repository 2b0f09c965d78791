#pragma once

#include <string>
#include <string_view>

#include "model/point_list.h"

/// The word for a list's kind as options and JSON spell it.
std::string_view KindName(unsigned kind);

/// A list for the user, such as `track "Day 1" (210 points)`.
std::string DescribeList(const CGpsPointArray& list);
