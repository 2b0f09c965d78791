#pragma once

#include <cstddef>
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

/// What the number means that a writer takes as its third argument.
enum class WriterOption {
  kNone,           ///< nothing: the writer ignores it
  kSplit,          ///< most points in one file
  kRemoveCommas,   ///< other than 0: names and comments are written without commas
  kMarkViaPoints,  ///< other than 0: inner stops are marked as via points
  kExplorist,      ///< other than 0: the form of the eXplorist, with the route's name
  kHandOff,        ///< other than 0: given to the device's companion program instead of a file
  kPrintable,      ///< other than 0: the printable version of the page
};

/// What the texts of a format's files are made of.
enum class TextForm {
  kUnicode,
  kNarrow,  ///< bytes of an encoding that the file does not tell; when writing U+00FF at most
  kLatin1,  ///< the same, and the file tells that it is so
};

/// As much as a format can hold, of texts in bytes of the file, in Unicode in UTF-16 units.
inline constexpr size_t kNoLimit = static_cast<size_t>(-1);

/// What a written file can hold.
struct WriterLimits {
  /// Characters that mean something else inside a text.
  std::string_view separators = {};
  size_t longestName = kNoLimit;     ///< 0: no names are written
  size_t longestComment = kNoLimit;  ///< 0: no comments are written
  size_t mostPoints = kNoLimit;      ///< in one file, for the devices that it is for
  bool writesListName = true;
};

/// What else is known of a row.
struct RowFacts {
  FormatParseFn parse = nullptr;  ///< the inner function of `read`
  FormatEmitFn emit = nullptr;    ///< the inner function of `write`; null where there is no file
  WriterOption option = WriterOption::kNone;
  size_t largestList = kAllPoints;  ///< points that the writer can write
  bool isFile = true;               ///< false: the writer opens a page or calls a program
  bool readsBack = true;            ///< false: no reader of the table understands what is written
  bool findsByName = false;  ///< stops are found again by their names, which should be unique
  bool takesWay = false;     ///< the writer can write the way between the stops
  TextForm text = TextForm::kUnicode;
  WriterLimits limits = {};
  bool handsPointsOn = false;  ///< `read` takes its file piece by piece and hands every point on
};

/// One row of the format table.
struct CItineraryFormat {
  const char16_t* extension;  ///< key of the row: a file extension or a target that is no file
  uint32_t textId;            ///< label, bar, patterns, bar; 0 = never listed
  FormatReadFn read;          ///< may be null
  FormatWriteFn write;        ///< may be null
  uint32_t optionTextId;      ///< label of the writer's option, 0 = none
  RowFacts facts = {};
};

/// The rows in their order, which decides every search.
using FormatTable = std::vector<CItineraryFormat>;
