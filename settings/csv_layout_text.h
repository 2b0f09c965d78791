#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "settings/csv_layout.h"

/// A layout from a command line, or why there is none: a message for the user in the current
/// language.
struct CsvLayoutText {
  std::optional<CCsvLayout> layout;
  std::string refusal;
};

/// Reads a layout given as UTF-8 text: the name of a preset other than "Manual", in English or as
/// the windows label it, or fields with commas between them, in any order and case:
///
///     lat=1,lon=2,ele=0,name=3,comment=0,decimal=.,separator=;
///
/// `lat`, `lon`, `ele`, `name` and `comment` are columns from 1; 0, or no such field, is no column.
/// `decimal` (default ".") and `separator` (default ",", or ";" beside a decimal comma) are one to
/// four characters, or one of the words comma, semicolon, tab, space and point. A comma may also
/// stand for itself, at the end or before the next field's own comma: "decimal=,,separator=;".
/// `locale=1` takes both from the user's regional settings instead.
/// The columns of latitude and longitude are needed, and no column may hold two things.
CsvLayoutText ParseCsvLayoutText(std::string_view text);

/// A layout in the same words, without the columns that it lacks.
std::string CsvLayoutAsText(const CCsvLayout& layout);
