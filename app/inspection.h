#pragma once

#include "app/options.h"
#include "conversion/conversion_context.h"
#include "conversion/format_table.h"

/// Shows what the reader search finds in a file, `options.tokens[0]`: the format's row, the lists
/// and their points, as text or as JSON. Returns the exit status.
int RunInspection(const Options& options, const FormatTable& table, ConversionContext& context);
