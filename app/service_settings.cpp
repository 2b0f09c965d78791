#include "app/service_settings.h"

#include <algorithm>
#include <charconv>

#include <fmt/format.h>

#include "base/format_text.h"
#include "base/text.h"
#include "base/text_ids.h"
#include "net/url.h"

namespace {

constexpr std::string_view kPrefix = "service.";
constexpr std::string_view kMask = "********";

std::string SettingNames() {
  std::string names;
  for (const ServiceSetting& setting : ServiceSettings()) {
    if (!names.empty()) names += ", ";
    names += setting.name;
  }
  return names;
}

const ServiceSetting* FindSetting(std::string_view name) {
  const auto settings = ServiceSettings();
  const auto found = std::ranges::find(settings, ToLowerAscii(name), &ServiceSetting::name);
  return found == settings.end() ? nullptr : &*found;
}

// Visible ASCII alone can stand in an address, a header or a parameter without being changed.
bool IsPlain(std::string_view text) {
  return std::ranges::all_of(text, [](char c) { return c > 0x20 && c < 0x7F; });
}

bool IsPort(std::string_view text) {
  uint16_t port = 0;
  const char* const end = text.data() + text.size();
  const auto [read, error] = std::from_chars(text.data(), end, port);
  return error == std::errc() && read == end;
}

// Scheme and host, perhaps a port and a path, and nothing behind them. A name and a password in
// front of the host would show in messages.
bool IsAddress(std::string_view text) {
  if (text.starts_with("http://"))
    text.remove_prefix(7);
  else if (text.starts_with("https://"))
    text.remove_prefix(8);
  else
    return false;
  if (!IsPlain(text) || text.find_first_of("?#@\\") != std::string_view::npos) return false;
  const std::string_view server = text.substr(0, text.find('/'));
  const size_t colon = server.find(':');
  return IsHostName(server.substr(0, colon)) &&
         (colon == std::string_view::npos || IsPort(server.substr(colon + 1)));
}

// An address as the HTTP client takes it: its scheme in small letters, no slashes at its end.
std::string PlainAddress(std::string_view typed) {
  const std::string_view address = TrimRight(typed, "/");
  const size_t scheme = std::min(address.find("://"), address.size());
  return ToLowerAscii(address.substr(0, scheme)).append(address.substr(scheme));
}

// A value as it may be typed.
bool TakeValue(const ServiceSetting& setting, std::string_view typed, std::string& value) {
  if (setting.name == "url") {
    value = PlainAddress(typed);
    return value.empty() ? typed.empty() : IsAddress(value);
  }
  value = typed;
  return IsPlain(value);
}

}  // namespace

bool IsServiceAssignment(std::string_view assignment) {
  return ToLowerAscii(assignment.substr(0, kPrefix.size())) == kPrefix;
}

bool ParseServiceAssignment(std::string_view assignment, ServiceAssignment& parsed,
                            std::string& error) {
  const size_t equals = assignment.find('=');
  const std::string_view key = assignment.substr(0, equals);
  if (equals == std::string_view::npos) {
    error = FormatText(kTextNoAssignment, key);
    return false;
  }
  const std::string_view names = key.substr(kPrefix.size());
  const size_t dot = names.find('.');
  parsed.service = FindService(names.substr(0, dot));
  if (!parsed.service) {
    error = FormatText(kTextUnknownService, names.substr(0, dot));
    return false;
  }
  parsed.setting = dot == std::string_view::npos ? nullptr : FindSetting(names.substr(dot + 1));
  if (!parsed.setting) {
    error = FormatText(kTextUnknownServiceSetting, key, SettingNames());
    return false;
  }
  if (!TakeValue(*parsed.setting, assignment.substr(equals + 1), parsed.value)) {
    error = FormatText(parsed.setting->name == "url" ? kTextNoAddress : kTextNoPlainValue, key);
    return false;
  }
  return true;
}

std::vector<SettingListing> ListServiceSettings(const ServiceValuesByName& values) {
  std::vector<SettingListing> listings;
  for (const Service& service : Services()) {
    const auto found = values.find(service.name);
    if (found == values.end()) continue;
    for (const ServiceSetting& setting : ServiceSettings()) {
      const std::optional<std::string>& value = found->second.*setting.value;
      if (!value) continue;
      listings.push_back({fmt::format("{}{}.{}", kPrefix, service.name, setting.name),
                          FormatText(kTextKindText), setting.isSecret ? std::string(kMask) : *value,
                          setting.name == "url" ? std::string(service.address) : std::string(),
                          FormatText(setting.meaningTextId)});
    }
  }
  return listings;
}
