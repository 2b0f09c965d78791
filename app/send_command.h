#pragma once

#include "app/options.h"
#include "conversion/conversion_context.h"
#include "conversion/format_table.h"

/// Hands the itinerary of a file, or one stop of it, to the companion program of a device.
/// `options.tokens` begin with the file. Returns the exit status of the program.
int RunSend(const Options& options, const FormatTable& table, ConversionContext& context);
