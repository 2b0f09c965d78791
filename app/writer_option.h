#pragma once

#include <string>

#include "app/options.h"
#include "conversion/format_table.h"

/// Takes what the options give to a row's writer, whether as a number or as a word. False, and why,
/// when the row knows no such thing.
bool TakeWriterOption(const Options& options, const CItineraryFormat& row, uint32_t& option,
                      std::string& error);

/// What a number does that is a switch for this row; empty where there is nothing to tell.
std::string DescribeSwitch(const Options& options, const CItineraryFormat& row);
