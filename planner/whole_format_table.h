#pragma once

#include "conversion/format_table.h"

/// The table of all formats, with the writers that need more than files: that of the hand-off to
/// TomTom HOME.
FormatTable WholeFormatTable();

/// Lists the rows of the companion programs that are on this desktop, so that they can be chosen.
/// Looks at the desktop's files.
void ListCompanionRows(FormatTable& table);
