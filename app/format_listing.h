#pragma once

#include "conversion/format_table.h"

/// Lists the formats that are read or written, with their keys and labels, to standard output.
bool ListFormats(const FormatTable& table, bool asJson);
