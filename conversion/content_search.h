#pragma once

#include <string_view>

#include "base/wide_string.h"
#include "conversion/conversion_context.h"
#include "conversion/format_table.h"

/// The key of the format that the bytes of a file are in: by what only files of that format begin
/// with, and else by trying all readers, of which exactly one must take the bytes and pass over
/// nothing. Empty when the content does not tell. `context` is that of the reading.
WideString KeyOfContent(const FormatTable& table, std::string_view bytes,
                        const ConversionContext& context);
