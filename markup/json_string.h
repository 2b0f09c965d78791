#pragma once

#include <string_view>

#include "io/byte_sink.h"

/// Appends `text` as a JSON string. Bytes that are no UTF-8 come out as U+FFFD.
void WriteJsonString(ByteSink& sink, std::string_view text);
