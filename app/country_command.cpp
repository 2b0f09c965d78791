#include "app/country_command.h"

#include <optional>
#include <string>

#include "app/json_point.h"
#include "app/output_sink.h"
#include "app/service_outcome.h"
#include "app/unattended_conversion.h"
#include "base/format_text.h"
#include "base/text_ids.h"
#include "conversion/geocoder.h"
#include "markup/json_string.h"
#include "services/country.h"

namespace {

struct CountryAnswer {
  CCountryInfo country;
  std::optional<CGpsCoordinate> position;
};

uint32_t Ask(const ServiceOptions& options, CountryAnswer& answer) {
  if (!options.countryCode.empty()) return GetCountryInfo(options.countryCode, answer.country);
  if (!options.typed.country->empty()) {
    return GetCountryCode(options.position.latitude, options.position.longitude, answer.country);
  }
  CGpsCoordinate position;
  const uint32_t status = GetCountry(answer.country, position);
  if (status == kServiceSuccess) answer.position = position;
  return status;
}

void WriteJson(ByteSink& sink, const CountryAnswer& answer) {
  const CCountryInfo& country = answer.country;
  const struct {
    const char* name;
    const std::string& text;
  } kMembers[] = {{"code", country.countryCode},    {"name", country.countryName},
                  {"capital", country.capital},     {"currency", country.currencyCode},
                  {"languages", country.languages}, {"isoAlpha3", country.isoAlpha3},
                  {"continent", country.continent}};
  sink.Write(",\n \"country\": {");
  for (const auto& member : kMembers) {
    sink.Printf("\"%s\": ", std::string(member.name));
    WriteJsonString(sink, member.text);
    sink.Write(", ");
  }
  sink.Write("\"latitude\": ");
  const auto writeDegrees = [&](double CGpsCoordinate::*degrees) {
    if (answer.position)
      WriteJsonNumber(sink, (*answer.position).*degrees);
    else
      sink.Write("null");
  };
  writeDegrees(&CGpsCoordinate::latitude);
  sink.Write(", \"longitude\": ");
  writeDegrees(&CGpsCoordinate::longitude);
  sink.Write("}}\n");
}

void WriteLine(ByteSink& sink, uint32_t labelTextId, const std::string& text) {
  if (!text.empty()) sink.Write(FormatText(labelTextId, text) + "\n");
}

void WriteText(ByteSink& sink, const CountryAnswer& answer) {
  const CCountryInfo& country = answer.country;
  sink.Write(Printable(country.countryCode) + "  " + Printable(country.countryName) + "\n");
  WriteLine(sink, kTextCountryCapital, country.capital);
  WriteLine(sink, kTextCountryCurrency, country.currencyCode);
  WriteLine(sink, kTextCountryLanguages, country.languages);
  WriteLine(sink, kTextCountryThreeLetters, country.isoAlpha3);
  WriteLine(sink, kTextCountryContinent, country.continent);
}

}  // namespace

int RunCountry(const Options& options) {
  // Only one service knows where this machine is.
  const bool isOfMachine = options.services.typed.country->empty();
  const std::string_view only = isOfMachine ? "geoip" : "geonames";
  ServiceChoice choice = ChooseService(options, kCanCountry, only);
  if (choice.provider && choice.provider->name != only) {
    choice.exitStatus = kExitWrongUsage;
    choice.message = FormatText(kTextServiceCannot, choice.provider->name, only);
  }
  CountryAnswer answer;
  const ServiceOutcome outcome =
      choice.exitStatus != 0 ? OutcomeOf(choice) : OutcomeOf(Ask(options.services, answer));
  OutputSink sink;
  if (options.json && choice.provider) {
    WriteJsonOutcome(sink, choice, outcome);
    WriteJson(sink, answer);
  } else if (outcome.status == kServiceSuccess) {
    WriteText(sink, answer);
  }
  return Conclude(choice, outcome, sink.Finish());
}
