#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/wide_string.h"
#include "conversion/format_table.h"

/// The text of a row in the current language, cut at its first bar. Empty for a row without text.
std::string FormatLabel(const CItineraryFormat& row);
/// The file patterns of a row, such as "*.rte;*.wpt".
std::string FormatPatterns(const CItineraryFormat& row);

/// True for a target that is no file: its writer opens a page or calls a program.
inline bool IsPseudoFormat(const CItineraryFormat& row) { return !row.facts.isFile; }

/// The first row with a writer for a key: an extension without regard to case, or
/// "extension:textId" for one particular row, or one of `FormatAliases`. Null when there is none.
const CItineraryFormat* FindWriter(const FormatTable& table, std::u16string_view name);

/// The key that leads `FindWriter` to this row of the table: the bare extension where that is
/// enough.
std::string FormatKey(const FormatTable& table, const CItineraryFormat& row);

/// The rows that a user can export to, in table order.
std::vector<const CItineraryFormat*> ExportList(const FormatTable& table);

/// Filter of the open dialog: label and patterns of all formats together, of each, and of all
/// files, joined by bars.
WideString OpenFilter(const FormatTable& table);
/// Filter of the save dialog for one row.
WideString SaveFilter(const CItineraryFormat& row);
