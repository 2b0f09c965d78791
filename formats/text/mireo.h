#pragma once

#include <cstdint>
#include <string_view>

#include "base/wide_string.h"
#include "conversion/format_frame.h"
#include "io/byte_sink.h"
#include "model/point_list.h"

// Mireo viaGPS: a text file of one stop a line, 8 bits a character, lines ending in LF:
//
//   #NAME="Round trip"
//   STREET="Paris" PT="2.35222 48.85661"
//
// GoClever and viaGPS 3.0 take `.txt` without the first line, GoRider and viaGPS 4.5 `.rt` with it.

/// Reads both kinds into one new route. The words of a line may stand in any order, and a line
/// with "PT=" makes a point. 0, or 1 when the file cannot be opened.
uint32_t ParseMireo(std::string_view bytes, PointLists& lists, ConversionContext& context);
inline constexpr FormatReadFn ReadMireo = ReadFileOf<ParseMireo>;

/// The device wants file names that begin with "Route ": where `path` ends in another, the word is
/// put in front of it, in the same folder. 0, or 1 on failure.
uint32_t WriteMireoTxt(const WideString& path, const CGpsPointArray& list, uint32_t splitLimit,
                       bool silent);
void WriteMireoTxtBody(ByteSink& sink, const CGpsPointArray& list);

/// 0, or 1 on failure.
void WriteMireoRtBody(ByteSink& sink, const CGpsPointArray& list);
inline constexpr FormatWriteFn WriteMireoRt = kWriterOf<WriteMireoRtBody>;
