#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "conversion/geocoder.h"
#include "markup/json.h"

// What all replies of services have in common. They come from strangers: they are read with limits,
// and their texts become valid UTF-8 before they reach the model.

/// Statuses of what runs in the background, beside the ServiceStatus.
inline constexpr uint32_t kServiceBusy = 7;      ///< still running
inline constexpr uint32_t kServiceTimedOut = 9;  ///< waiting for the end took too long
/// Plus the number of the transport's failure.
inline constexpr uint32_t kServiceTransport = 100;

/// Values that a reply may have. More take more memory than any answer to a question about places
/// is worth.
inline constexpr size_t kReplyValues = 1'000'000;

/// The text as the model may hold it: valid UTF-8 without zero bytes. JSON escapes give single
/// bytes ("\u00e9" the byte 0xE9), so a byte that starts no character stands for the character of
/// its value.
std::string TextForModel(std::string_view text);

/// A text of a reply for the model; throws CJsonException when the value is no string.
std::string ReplyText(const CJsonValue& value);

/// The same of a member that may be missing, null or something else: empty then.
std::string OptionalText(const CJsonValue& object, std::string_view name);

/// True when no more than `most` values can stand in the text.
bool HasFewValues(std::string_view json, size_t most);

/// Parses a reply and gives what `read(document, hasStatus)` makes of it. What is no JSON, or lacks
/// a value that is asked for, is `kServiceInvalid`; `kServiceOther` once `read` has set `hasStatus`
/// because the service's own status had been read.
template <typename Read>
uint32_t ReadJsonReply(std::string_view reply, Read read, size_t mostValues = kReplyValues) {
  if (!HasFewValues(reply, mostValues)) return kServiceInvalid;
  bool hasStatus = false;
  try {
    CJsonDocument document;
    if (document.Parse(reply) != 0) return kServiceInvalid;
    return read(static_cast<const CJsonValue&>(document), hasStatus);
  } catch (const CJsonException&) {
    return hasStatus ? kServiceOther : kServiceInvalid;
  }
}

/// Takes the call of a page's function off a reply of ViaMichelin: "HTTPResponseLoaded(...)". False
/// for any other text.
bool TakeViaMichelinWrapper(std::string_view& reply);

/// The status for a status word of Google's services.
uint32_t GoogleStatus(std::string_view word);
