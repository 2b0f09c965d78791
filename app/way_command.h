#pragma once

#include "app/options.h"
#include "conversion/conversion_context.h"
#include "conversion/format_table.h"

/// Prints the way along the stops of the file of --way: legs, totals and instructions. Returns the
/// exit status.
int RunWay(const Options& options, const FormatTable& table, ConversionContext& context);
