#pragma once

#include "app/options.h"
#include "conversion/conversion_context.h"
#include "conversion/format_table.h"

/// Exit statuses of the program.
enum ExitCode : int {
  kExitConverted = 0,
  kExitFailed = 1,      ///< a file could not be read or written, or none was converted
  kExitWrongUsage = 2,  ///< wrong usage, an unknown key, a source that is not there
  kExitLosses = 3,      ///< with --strict: converted, with losses
};

/// Converts one file, or every file of a folder that a reader knows. `options.tokens` are the
/// source, the key and whatever else, without the language. Returns the exit status.
int RunConversion(const Options& options, const FormatTable& table, ConversionContext& context);
