#include "app/service_commands.h"

#include "app/country_command.h"
#include "app/elevation_command.h"
#include "app/find_command.h"
#include "app/locate_command.h"
#include "app/panorama_command.h"
#include "app/providers_command.h"
#include "app/service_outcome.h"

namespace {

struct ServiceCommand {
  bool (*isGiven)(const ServiceOptions& options);
  int (*run)(const Options& options);
};

constexpr ServiceCommand kCommands[] = {
    {[](const ServiceOptions& options) { return options.providers; }, RunProviders},
    {[](const ServiceOptions& options) { return options.typed.find.has_value(); }, RunFind},
    {[](const ServiceOptions& options) { return options.typed.locate.has_value(); }, RunLocate},
    {[](const ServiceOptions& options) { return options.typed.elevation.has_value(); },
     RunElevation},
    {[](const ServiceOptions& options) { return options.typed.panorama.has_value(); }, RunPanorama},
    {[](const ServiceOptions& options) { return options.typed.country.has_value(); }, RunCountry},
};

}  // namespace

std::optional<int> RunServiceCommand(const Options& options) {
  for (const ServiceCommand& command : kCommands) {
    if (!command.isGiven(options.services)) continue;
    PrepareServices();
    const int status = command.run(options);
    TellRequests(options);
    return status;
  }
  return std::nullopt;
}
