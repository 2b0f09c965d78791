#pragma once

#include <string_view>

#include "base/wide_string.h"
#include "conversion/conversion_context.h"
#include "conversion/format_table.h"

/// True for a path that says nothing of the format: a name without a dot.
bool HasNoExtension(std::u16string_view path);

/// The key of the format that the bytes of a file are in: by what only files of that format begin
/// with, and else by trying all readers, of which one must take the bytes and pass over nothing;
/// those that take nearly every text count only when no other does. Empty when the content does not
/// tell. `context` is that of the reading.
WideString KeyOfContent(const FormatTable& table, std::string_view bytes,
                        const ConversionContext& context);
