#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/wide_string.h"

// Where the links go that a conversion has made.

/// Prints them on standard output, one a line. False when not everything could be written.
bool PrintLinks(const std::vector<std::string>& links);

/// Prints them with where they come from and the file that they stand in, empty for none, as one
/// line for other programs. False when not everything could be written.
bool PrintJsonLinks(const WideString& source, const WideString& target,
                    const std::vector<std::string>& links);

/// Opens them in the desktop's browser, where there is a desktop. Returns 0 or the platform's error
/// code.
uint32_t OpenLinks(const std::vector<std::string>& links);

/// Writes them to a file, one a line. Returns 0 or the platform's error code.
uint32_t SaveLinks(const WideString& path, const std::vector<std::string>& links);
