#pragma once

#include "conversion/format_table.h"

/// All formats of the program, 69 rows. The order decides which reader is tried first on a shared
/// extension, and which writer an extension alone means.
FormatTable DefaultFormatTable();
