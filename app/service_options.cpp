#include "app/service_options.h"

#include <charconv>

#include <CLI/CLI.hpp>

#include "app/position_text.h"
#include "base/format_text.h"
#include "base/text_ids.h"

namespace {

constexpr OptionHelp kHelp[] = {
    {"    --providers", kTextHelpProviders},
    {"    --provider NAME", kTextHelpProvider},
    {"    --find TEXT", kTextHelpFind},
    {"    --near LAT,LON", kTextHelpNear},
    {"    --radius METRES", kTextHelpRadius},
    {"    --locate LAT,LON", kTextHelpLocate},
    {"    --elevation LAT,LON", kTextHelpElevation},
    {"    --panorama LAT,LON", kTextHelpPanorama},
    {"    --country [WHERE]", kTextHelpCountry},
    {"    --offline", kTextHelpOffline},
};

bool TakePosition(const std::optional<std::string>& typed, CGpsCoordinate& position,
                  std::string& error) {
  if (!typed) return true;
  const std::optional<CGpsCoordinate> parsed = ParsePosition(*typed);
  if (!parsed) {
    error = FormatText(kTextNoPosition, *typed);
    return false;
  }
  position = *parsed;
  return true;
}

bool TakeRadius(ServiceOptions& options, std::string& error) {
  if (!options.typed.radius) return true;
  const std::string& typed = *options.typed.radius;
  uint32_t metres = 0;
  const auto parsed = std::from_chars(typed.data(), typed.data() + typed.size(), metres);
  if (parsed.ec != std::errc() || parsed.ptr != typed.data() + typed.size() || metres == 0) {
    error = FormatText(kTextNoRadius, typed);
    return false;
  }
  options.radius = metres;
  return true;
}

bool IsLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

bool TakeCountry(ServiceOptions& options, std::string& error) {
  if (!options.typed.country || options.typed.country->empty()) return true;
  const std::string& typed = *options.typed.country;
  if (const std::optional<CGpsCoordinate> position = ParsePosition(typed)) {
    options.position = *position;
    return true;
  }
  if (typed.size() != 2 || !IsLetter(typed[0]) || !IsLetter(typed[1])) {
    error = FormatText(kTextNoCountry, typed);
    return false;
  }
  // The case of letters differs by one bit.
  for (const char letter : typed) options.countryCode += static_cast<char>(letter & ~0x20);
  return true;
}

}  // namespace

void AddServiceOptions(CLI::App& parser, ServiceOptions& options) {
  parser.add_flag("--providers", options.providers);
  parser.add_flag("--offline", options.offline);
  ServiceOptions::Typed& typed = options.typed;
  parser.add_option("--provider", typed.provider);
  parser.add_option("--find", typed.find);
  parser.add_option("--near", typed.near);
  parser.add_option("--radius", typed.radius);
  parser.add_option("--locate", typed.locate);
  parser.add_option("--elevation", typed.elevation);
  parser.add_option("--panorama", typed.panorama);
  parser
      .add_option_function<std::vector<std::string>>(
          "--country",
          [&typed](const std::vector<std::string>& values) {
            typed.country = values.empty() ? std::string() : values.front();
          })
      ->expected(0, 1);
}

bool TakeServiceOptions(ServiceOptions& options, std::string& error) {
  const ServiceOptions::Typed& typed = options.typed;
  for (const auto* const position : {&typed.locate, &typed.elevation, &typed.panorama}) {
    if (!TakePosition(*position, options.position, error)) return false;
  }
  if (typed.near && !TakePosition(typed.near, options.near.emplace(), error)) return false;
  return TakeRadius(options, error) && TakeCountry(options, error);
}

std::span<const OptionHelp> ServiceOptionHelp() { return kHelp; }
