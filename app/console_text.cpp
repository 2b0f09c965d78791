#include "app/console_text.h"

#include "base/status.h"
#include "base/text.h"
#include "base/unicode.h"
#include "platform/folder.h"

namespace {

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
      return kTextReasonWrongValue;
    case kStatusDiskFull:
      return kTextReasonDiskFull;
    case kStatusNameTooLong:
      return kTextReasonLongName;
    default:
      return kTextReasonSystem;
  }
}

}  // namespace

std::string Printable(std::string_view text) {
  std::string shown;
  for (size_t i = 0; i < text.size();) {
    const DecodedCodePoint decoded = DecodeUtf8(text, i);
    const bool isControl =
        decoded.codePoint < 0x20 || (decoded.codePoint >= 0x7F && decoded.codePoint < 0xA0);
    shown.append(decoded.valid && !isControl ? text.substr(i, decoded.length) : "\uFFFD");
    i += decoded.length;
  }
  return shown;
}

std::string ShownPath(const WideString& path) { return WideToUtf8Lossy(path); }

void Complain(const std::string& message) { WriteError(message + "\n"); }

void Complain(const WideString& path, const std::string& message) {
  Complain(Printable(ShownPath(path)) + ": " + message);
}

std::string DescribeReason(uint32_t platformError, const WideString& path) {
  if (platformError == kStatusSuccess) return {};
  return " " + Text(kTextReason, LoadTextUtf8(ReasonText(platformError, path)));
}
