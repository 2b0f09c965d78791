#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

#include <fmt/printf.h>

#include "base/localized_text.h"
#include "base/wide_string.h"
#include "platform/console.h"

// Numbers of the console's own texts.
enum EConsoleText : uint32_t {
  kTextUsage = 1000,
  kTextUnknownKey = 1001,
  kTextNoSource = 1002,
  kTextListsTaken = 1003,
  kTextNoTerminal = 1004,
  kTextYes = 1005,
  kTextNo = 1006,
  kTextSummary = 1007,
  kTextKindRoute = 1008,
  kTextKindTrack = 1009,
  kTextKindWaypoints = 1010,
  kTextKindPois = 1011,
  kTextPointCount = 1012,
  kTextNoSuchList = 1013,
  kTextStopsLookedUp = 1014,
  kTextReason = 1015,
  kTextReasonNotFound = 1016,
  kTextReasonAccess = 1017,
  kTextReasonDiskFull = 1018,
  kTextReasonInUse = 1019,
  kTextReasonFolder = 1020,
  kTextReasonWrongValue = 1021,
  kTextReasonSystem = 1022,
  kTextUnnamed = 1023,
  kTextInspectedRow = 1025,
  kTextPurpose = 1026,
  kTextHelpKey = 1027,
  kTextHelpSource = 1028,
  kTextHelpHelp = 1029,
  kTextHelpVersion = 1030,
  kTextHelpFormats = 1031,
  kTextHelpInspect = 1032,
  kTextHelpJson = 1033,
  kTextHelpOutput = 1034,
  kTextHelpList = 1035,
  kTextHelpSplit = 1036,
  kTextHelpQuiet = 1037,
  kTextNoFileFormat = 1038,
  kTextTargetIsSource = 1039,
  kTextReads = 1040,
  kTextWrites = 1041,
  kTextReadsAndWrites = 1042,
  kTextCountriesNotFound = 1043,
  kTextReasonMemory = 1044,
  kTextReasonLongName = 1045,
  kTextWrongUsage = 1046,
  kTextWrongListChoice = 1047,
  kTextOptions = 1048,
  kTextNoWindow = 1049,
  kTextSettingsNotStored = 1058,
  kTextHelpCsvRead = 1092,
  kTextHelpCsvWrite = 1093,
  kTextHelpRemember = 1094,
  kTextHelpSettings = 1095,
  kTextHelpSet = 1096,
  kTextNothingLost = 1100,
  kTextOnlyWritten = 1101,
  kTextStopsLost = 1102,
  kTextNamesChanged = 1103,
  kTextDetailsLost = 1104,
  kTextListsMerged = 1105,
  kTextPassedOver = 1106,
  kTextFilesWithLosses = 1107,
  kTextHelpCheck = 1108,
  kTextHelpStrict = 1109,
  kTextNotReadBack = 1110,
  kTextReplacedInFolder = 1111,
  kTextReasonFile = 1112,
  kTextDashHint = 1113,
};

/// Text that is safe to show: control characters, with which a file could command the terminal, and
/// bytes that are no text come out as U+FFFD.
std::string Printable(std::string_view text);

/// An argument of a text as it may be shown.
template <typename Value>
auto ShownValue(const Value& value) {
  if constexpr (std::is_convertible_v<Value, std::string_view>)
    return Printable(value);
  else
    return value;
}

/// The text of a number, filled in as printf does.
template <typename... Args>
std::string Text(uint32_t id, const Args&... args) {
  const std::string_view format = LoadTextUtf8(id);
  return fmt::sprintf(fmt::string_view(format.data(), format.size()), ShownValue(args)...);
}

/// A path for the user: bytes that are no text come out as U+FFFD.
std::string ShownPath(const WideString& path);

/// Writes a line to standard error, "path: message" where there is a path.
void Complain(const std::string& message);
void Complain(const WideString& path, const std::string& message);

/// Why a file operation failed, as a sentence of its own that begins with a blank; empty when
/// nothing is known, 0. `path` is the file it was about.
std::string DescribeReason(uint32_t platformError, const WideString& path);
