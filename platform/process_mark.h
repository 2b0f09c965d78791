#pragma once

#include <string>
#include <string_view>

/// A name that this process alone has, also among those that had its number before: the number and
/// when the process began, for instance "4711-123456".
std::string OwnProcessMark();

/// Whether the process of a mark is still there. False for a text that is no mark.
bool IsProcessThere(std::string_view mark);
