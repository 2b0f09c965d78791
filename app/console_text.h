#pragma once

#include <string>

#include "base/wide_string.h"
#include "conversion/failure_reason.h"
#include "platform/console.h"

/// A path for the user: bytes that are no text come out as U+FFFD.
std::string ShownPath(const WideString& path);

/// Writes a line to standard error, "path: message" where there is a path.
void Complain(const std::string& message);
void Complain(const WideString& path, const std::string& message);

/// Why a file operation failed, as a sentence of its own that begins with a blank; empty when
/// nothing is known, 0. `path` is the file it was about.
std::string DescribeReason(uint32_t platformError, const WideString& path);

/// The same for a conversion: without a failed file operation, where in the file the fault is, and
/// what the user can do about it.
std::string DescribeFailure(const FailureReason& reason, const WideString& path);

/// The same for a file that could not be read, whose content may tell more.
std::string DescribeReadFailure(const FailureReason& reason, const WideString& path);
