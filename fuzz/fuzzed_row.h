#pragma once

#include <string>
#include <string_view>

#include "conversion/format_table.h"

// What the fuzzers share. Which reader is tried stands in the argument --row=N, which libFuzzer
// hands on to the processes that it starts; --rows lists the readers and ends the process.

/// Takes the arguments; ends the process with status 2 when there is no such reader.
void ChooseRow(int argumentCount, char** arguments);

/// All rows, in their order.
const FormatTable& Rows();

/// The chosen row.
const CItineraryFormat& FuzzedRow();

// Readers and writers are called as the driver does, which answers what they throw with a status.
// An index out of range, a length that no memory holds and their kin end the process all the same.

/// Reads the bytes of a file and returns its lists, those of a failed reader too.
PointLists ReadBytes(const CItineraryFormat& row, std::string_view bytes);

/// Gives the bytes of a file. True when the writer says that it has written them.
bool WriteBytes(const CItineraryFormat& row, const CGpsPointArray& list, std::string& bytes);
