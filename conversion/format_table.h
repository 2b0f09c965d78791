#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "base/wide_string.h"
#include "model/point_list.h"

class ByteSink;
class ConversionContext;

/// Reads `path` and appends the lists that it finds to `lists`. Returns 0, kStatusBadFormat for a
/// file of another format, or another status. `silent`: no question may be asked.
using FormatReadFn = uint32_t (*)(const WideString& path, PointLists& lists, bool silent);

/// Writes `list` to `path`. `splitLimit` is 0, or an option whose meaning is the writer's own.
using FormatWriteFn = uint32_t (*)(const WideString& path, const CGpsPointArray& list,
                                   uint32_t splitLimit, bool silent);

/// The inner function of a reader: the bytes of a whole file. They ask no question.
using FormatParseFn = uint32_t (*)(std::string_view bytes, PointLists& lists,
                                   ConversionContext& context);

/// The inner function of a writer: the bytes of one whole file go to `sink`.
using FormatEmitFn = uint32_t (*)(ByteSink& sink, const CGpsPointArray& list, uint32_t option,
                                  ConversionContext& context);

/// One row of the format table.
struct CItineraryFormat {
  const char16_t* extension;  ///< key of the row: a file extension or a target that is no file
  uint32_t textId;            ///< label, bar, patterns, bar; 0 = never listed
  FormatReadFn read;          ///< may be null
  FormatWriteFn write;        ///< may be null
  uint32_t optionTextId;      ///< label of the writer's option, 0 = none
};

/// The rows in their order, which decides every search.
using FormatTable = std::vector<CItineraryFormat>;
