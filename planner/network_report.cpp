#include "planner/network_report.h"

#include <algorithm>
#include <iterator>

#include "base/format_text.h"
#include "base/localized_text.h"
#include "base/text_ids.h"
#include "planner/script_error.h"

namespace {

// What the browser control tells of navigations that fail: one text for each HRESULT from the first
// on, in their order.
constexpr uint32_t kFirstNavigationError = 0x800C0002;
constexpr uint32_t kLastNavigationError = 0x800C0016;

struct TransportText {
  uint32_t error;
  uint32_t textId;
};

constexpr TransportText kTransportTexts[] = {
    {122, kTextReplyTooLarge},                    // the reply is too large
    {12002, kTextServiceTimedOut},                // time-out
    {12005, kTextServiceAddressInvalid},          // bad address
    {12006, kTextServiceSchemeUnknown},           // unknown scheme
    {12007, kTextServerNameNotFound},             // name not found
    {12017, kTextRequestCancelled},               // cancelled
    {12029, kTextServerNotConnected},             // no connection
    {12030, kTextServerConnectionBroken},         // connection broken
    {12037, kTextCertificateExpired},             // date of the certificate
    {12038, kTextCertificateOfOtherName},         // name of the certificate
    {12045, kTextCertificateOfUnknownAuthority},  // authority of the certificate
    {12156, kTextTooManyRedirects},               // too many redirects
    {12157, kTextNoSecureConnection},             // other failures of TLS
};

uint32_t NavigationTextId(uint32_t hresult) {
  if (hresult < kFirstNavigationError || hresult > kLastNavigationError)
    return kTextNetworkInternalError;
  return kTextFirstNavigationError + (hresult - kFirstNavigationError);
}

uint32_t TransportTextId(uint32_t error) {
  const auto* const found =
      std::find_if(std::begin(kTransportTexts), std::end(kTransportTexts),
                   [error](const TransportText& row) { return row.error == error; });
  return found == std::end(kTransportTexts) ? kTextNetworkInternalError : found->textId;
}

int32_t Report(PlannerWindow& window, uint32_t hresult, uint32_t textId) {
  return window.ShowBox(FormatText(kTextNetworkError, hresult, LoadTextUtf8(textId)),
                        kBoxRetryCancel | kBoxErrorIcon);
}

}  // namespace

int32_t ReportNavigationError(PlannerWindow& window, uint32_t hresult) {
  if (hresult == 0) return kAnswerOk;
  return Report(window, hresult, NavigationTextId(hresult));
}

int32_t ReportTransportError(PlannerWindow& window, uint32_t transportError) {
  return Report(window, TransportHresult(transportError), TransportTextId(transportError));
}
