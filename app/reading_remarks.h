#pragma once

#include "base/wide_string.h"
#include "conversion/csv_layouts.h"
#include "model/point_list.h"

/// Tells on standard error what was found out about the columns of a CSV file, and about those that
/// its header has in other places than the layout. Nothing for other files.
void TellColumns(const WideString& source, const CsvLayouts& layouts);

/// Tells on standard error of positions that no latitude or longitude can be.
void TellDoubtfulPositions(const WideString& source, const PointLists& lists);
