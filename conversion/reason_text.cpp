#include "conversion/reason_text.h"

#include <string_view>

#include "base/format_text.h"
#include "base/status.h"
#include "base/text_ids.h"
#include "platform/folder.h"
#include "platform/sequential_file.h"

namespace {

bool IsStream(const WideString& path) {
  return FileAttributes(path) == kAttributeNormal && !IsRegularFile(path);
}

// Whether a file begins as what gzip packs does.
bool IsGzip(const WideString& path) {
  SequentialFile file;
  char start[2] = {};
  return IsRegularFile(path) && file.Open(path) == kStatusSuccess &&
         file.Read(start, sizeof start) == sizeof start &&
         std::string_view(start, sizeof start) == "\x1F\x8B";
}

uint32_t ReasonText(uint32_t status, const WideString& path) {
  switch (status) {
    case kStatusFileNotFound:
      return kTextReasonNotFound;
    case kStatusAccessDenied:
      return FileAttributes(path) == kAttributeDirectory ? kTextReasonFolder : kTextReasonAccess;
    case kStatusOutOfMemory:
      return kTextReasonMemory;
    case kStatusSharingViolation:
      return kTextReasonInUse;
    case kStatusInvalidParameter:
      return IsStream(path) ? kTextReasonPipe : kTextReasonWrongValue;
    case kStatusDiskFull:
      return kTextReasonDiskFull;
    case kStatusNameTooLong:
      return kTextReasonLongName;
    default:
      return kTextReasonSystem;
  }
}

}  // namespace

std::string DescribeReason(uint32_t platformError, const WideString& path) {
  if (platformError == kStatusSuccess) return {};
  return " " + FormatText(kTextReason, LoadTextUtf8(ReasonText(platformError, path)));
}

std::string DescribeFailure(const FailureReason& reason, const WideString& path) {
  std::string text;
  if (reason.platformError != kStatusSuccess || reason.line == 0)
    text = DescribeReason(reason.platformError, path);
  else if (reason.column == 0)
    text = " " + FormatText(kTextFaultInLine, reason.line);
  else
    text = " " + FormatText(kTextFaultAtColumn, reason.line, reason.column,
                            LoadTextUtf8(reason.detailTextId));
  if (reason.adviceTextId != 0) text.append(" ").append(LoadTextUtf8(reason.adviceTextId));
  return text;
}

std::string DescribeReadFailure(const FailureReason& reason, const WideString& path) {
  if (reason.platformError == kStatusSuccess && IsGzip(path))
    return " " + FormatText(kTextReason, LoadTextUtf8(kTextReasonGzip));
  return DescribeFailure(reason, path);
}
