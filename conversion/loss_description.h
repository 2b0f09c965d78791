#pragma once

#include <string>

#include "base/wide_string.h"
#include "conversion/loss_check.h"
#include "io/byte_sink.h"

/// One line or several for the user, about a conversion from `source` to `target`.
std::string DescribeCheck(const WideString& source, const WideString& target,
                          const LossCheck& check);

/// The same as a JSON object.
void WriteJsonCheck(ByteSink& sink, const WideString& source, const WideString& target,
                    const LossCheck& check);
