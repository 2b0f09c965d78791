#pragma once

#include <optional>
#include <string_view>

#include "settings/csv_layout.h"

// What the columns of a CSV text hold, found by its first line or by its content. The text is UTF-8
// or 8-bit; both are understood.

/// The layout that the first line tells by names in English, French, German or Dutch: latitude and
/// longitude at least. None for a text without such a line. The decimal separator is that of the
/// lines below.
std::optional<CCsvLayout> CsvLayoutOfHeader(std::string_view text);

/// The same, or else by content: two columns of real numbers that can be angles. Which of them is
/// the latitude is told by numbers above 90, or else by what lies in Europe; failing that the
/// longitude stands first.
std::optional<CCsvLayout> FindCsvLayout(std::string_view text);

/// Whether a text whose first line tells the layout `header` is read wrongly with `layout`.
bool Contradicts(const CCsvLayout& header, const CCsvLayout& layout);
