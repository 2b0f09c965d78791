#include "net/network_error.h"

#include <string>

#include "base/format_text.h"
#include "base/localized_text.h"
#include "base/text.h"
#include "base/text_ids.h"
#include "net/internet_exception.h"

namespace {

// The texts of a navigation's failures follow each other like their numbers.
constexpr uint32_t kFirstNavigationError = 0x800C0002;
constexpr uint32_t kLastNavigationError = 0x800C0016;

constexpr uint32_t kWin32Failure = 0x80070000;

uint32_t RequestErrorText(uint32_t code) {
  switch (code) {
    case kInternetTimeout:
      return kTextServerTooSlow;
    case kInternetInvalidUrl:
    case kInternetUnknownScheme:
      return kTextServerAddressInvalid;
    case kInternetNameNotResolved:
      return kTextServerNotFound;
    case kInternetCannotConnect:
      return kTextServerOutOfReach;
    case kInternetConnectionBroken:
      return kTextConnectionLost;
    case kInternetCertificateDate:
    case kInternetCertificateName:
    case kInternetCertificateAuthority:
    case kInternetSecureChannel:
      return kTextServerNotTrusted;
    case kInternetBodyTooLarge:
      return kTextServerAnswerTooLarge;
    case kInternetInvalidReply:
    case kInternetRedirectFailed:
      return kTextServerAnswerInvalid;
    default:
      return kTextNetworkInternalError;
  }
}

}  // namespace

std::string_view NetworkErrorText(uint32_t code) {
  if (code >= kFirstNavigationError && code <= kLastNavigationError) {
    return LoadTextUtf8(kTextFirstNavigationError + (code - kFirstNavigationError));
  }
  const bool isWin32 = (code & 0xFFFF0000) == kWin32Failure;
  return LoadTextUtf8(RequestErrorText(isWin32 ? code & 0xFFFF : code));
}

uint32_t ReportNavigationError(uint32_t code, NetworkErrorFront& front) {
  if (code == 0) return kAnswerNone;
  const std::string text = FormatText(kTextNetworkError, code, std::string(NetworkErrorText(code)));
  return front.AskToRetry(Utf8ToWideLossy(text));
}
