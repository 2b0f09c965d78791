#pragma once

#include <string>

#include "base/wide_string.h"
#include "conversion/reason_text.h"
#include "platform/console.h"

/// A path for the user: bytes that are no text come out as U+FFFD.
std::string ShownPath(const WideString& path);

/// Writes a line to standard error, "path: message" where there is a path.
void Complain(const std::string& message);
void Complain(const WideString& path, const std::string& message);
