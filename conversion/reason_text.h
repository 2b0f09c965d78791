#pragma once

#include <cstdint>
#include <string>

#include "base/wide_string.h"
#include "conversion/failure_reason.h"

/// Why a file operation failed, as a sentence of its own that begins with a blank; empty when
/// nothing is known, 0. `path` is the file it was about.
std::string DescribeReason(uint32_t platformError, const WideString& path);

/// The same for a conversion: without a failed file operation, where in the file the fault is, and
/// what the user can do about it.
std::string DescribeFailure(const FailureReason& reason, const WideString& path);

/// The same for a file that could not be read, whose content may tell more.
std::string DescribeReadFailure(const FailureReason& reason, const WideString& path);
