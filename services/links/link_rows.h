#pragma once

#include "conversion/format_table.h"

/// Gives the rows of the web planners their writers, and that of stored links its reader.
void AddLinkFunctions(FormatTable& table);
