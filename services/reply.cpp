#include "services/reply.h"

#include <algorithm>

#include "base/text.h"
#include "base/unicode.h"

namespace {

constexpr std::string_view kViaMichelinCall = "HTTPResponseLoaded";

constexpr struct {
  std::string_view word;
  uint32_t status;
} kGoogleStatuses[] = {
    {"OK", kServiceSuccess},
    {"ZERO_RESULTS", kServiceNoResults},
    {"OVER_QUERY_LIMIT", kServiceOverLimit},
    {"REQUEST_DENIED", kServiceDenied},
    {"INVALID_REQUEST", kServiceInvalid},
    {"NOT_FOUND", kServiceNotFound},
    {"MAX_WAYPOINTS_EXCEEDED", kServiceBusy},
};

}  // namespace

std::string TextForModel(std::string_view text) {
  std::string mended;
  mended.reserve(text.size());
  for (size_t i = 0; i < text.size();) {
    const DecodedCodePoint decoded = DecodeUtf8(text, i);
    if (decoded.codePoint == 0 && decoded.valid)
      mended += "\uFFFD";
    else if (decoded.valid)
      mended += text.substr(i, decoded.length);
    else
      mended += WidenToUtf8(text.substr(i, decoded.length));
    i += decoded.length;
  }
  return mended;
}

std::string ReplyText(const CJsonValue& value) { return TextForModel(value.AsString()); }

std::string OptionalText(const CJsonValue& object, std::string_view name) {
  const CJsonValue* const value = object.AsObject().Find(name);
  return value && value->type == kJsonString ? TextForModel(value->text) : std::string();
}

bool HasFewValues(std::string_view json, size_t most) {
  // Each value but the first stands behind a delimiter.
  const auto startsValue = [](char c) { return c == ',' || c == '[' || c == '{'; };
  return json.size() <= most ||
         static_cast<size_t>(std::ranges::count_if(json, startsValue)) <= most;
}

bool TakeViaMichelinWrapper(std::string_view& reply) {
  std::string_view rest = reply;
  if (!rest.starts_with(kViaMichelinCall)) return false;
  rest.remove_prefix(kViaMichelinCall.size());
  if (!rest.starts_with('(')) return false;
  rest.remove_prefix(1);
  rest = TrimRight(rest, " \t\r\n;");
  if (!rest.ends_with(')')) return false;
  rest.remove_suffix(1);
  reply = rest;
  return true;
}

uint32_t GoogleStatus(std::string_view word) {
  const auto* const found =
      std::ranges::find_if(kGoogleStatuses, [word](const auto& row) { return row.word == word; });
  return found == std::end(kGoogleStatuses) ? uint32_t{kServiceOther} : found->status;
}
