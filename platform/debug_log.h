#pragma once

#include <string_view>

/// Tells whoever debugs the program, and never its user, about a failure. Nothing is seen unless
/// the environment variable CORVANE_DEBUG is set; then the line goes to standard error.
void DebugLog(std::string_view line);
