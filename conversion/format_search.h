#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "base/wide_string.h"
#include "conversion/conversion_context.h"
#include "conversion/format_table.h"
#include "model/point_list.h"

/// The text of a row in the current language, cut at its first bar. Empty for a row without text.
std::string FormatLabel(const CItineraryFormat& row);
/// The file patterns of a row, such as "*.rte;*.wpt".
std::string FormatPatterns(const CItineraryFormat& row);

/// True for a target that is no file: its writer opens a page or calls a program.
bool IsPseudoFormat(const CItineraryFormat& row);

/// The first row with a writer for a key: an extension without regard to case, or
/// "extension:textId" for one particular row. Null when there is none.
const CItineraryFormat* FindWriter(const FormatTable& table, std::u16string_view key);

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

/// Calls the reader of a row, which must have one, with `context` in place. An exception is a
/// status like any other; lists without points are removed, and kStatusBadFormat is the result when
/// none remains. What a reader notes counts only with the result 0, for the notes of one that the
/// file was not for mean nothing; what was asked of a service is told in any case.
uint32_t CallReader(const CItineraryFormat& row, const WideString& path, PointLists& lists,
                    bool silent, ConversionContext& context);

/// Takes the lists of a successful reader, none of them without points. What it returns is the
/// result of that reader's call.
using AcceptLists = std::function<uint32_t(const CItineraryFormat& row, PointLists& lists)>;

/// Calls the reader of a row, drops lists without points, and offers the others to `accept`.
/// kStatusBadFormat when none is left.
uint32_t ReadWithRow(const CItineraryFormat& row, const WideString& path, bool silent,
                     ConversionContext& context, const AcceptLists& accept);

/// Tries the readers of the path's extension in table order until one ends with success, with a
/// file that is locked, or with the user's cancelling; returns the last result. A file that no
/// reader knows gives kStatusBadFormat. Lists that the user declines do not end the search: the
/// next reader may see others in the file.
uint32_t SearchReaders(const FormatTable& table, const WideString& path, bool silent,
                       ConversionContext& context, const AcceptLists& accept);
