#pragma once

#include <string_view>

#include "conversion/format_table.h"
#include "tests/temporary_folder.h"

// What the fuzzers share. Which reader is tried stands in the argument --row=N, which libFuzzer
// hands on to the processes that it starts; --rows lists the readers and ends the process.

/// Takes the arguments; ends the process with status 2 when there is no such reader.
void ChooseRow(int argumentCount, char** arguments);

/// All rows, in their order.
const FormatTable& Rows();

/// The chosen row.
const CItineraryFormat& FuzzedRow();

/// The folder of this process, below TMPDIR, which ought to lie in memory.
const TemporaryFolder& WorkFolder();

// Readers and writers are called as the driver does, which answers what they throw with a status.
// An index out of range, a length that no memory holds and their kin end the process all the same.

/// Reads a file and returns its lists, those of a failed reader too.
PointLists ReadFile(const CItineraryFormat& row, const WideString& path);

/// Writes a file. True when the writer says that it has.
bool WriteFile(const CItineraryFormat& row, const WideString& path, const CGpsPointArray& list);

/// Writes `bytes` to a file with the chosen row's extension and reads it.
PointLists ReadFuzzed(std::string_view bytes);
