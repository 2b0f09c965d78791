#include "app/directions_choice.h"

#include "app/console_text.h"
#include "base/format_text.h"
#include "base/text_ids.h"
#include "net/network_error.h"
#include "services/service_registry.h"
#include "settings/settings.h"

namespace {

ServiceChoice ChooseBySettings(const Options& options) {
  const Service* const stored = FindService(CSettings::Instance().routeProvider);
  ServiceChoice choice =
      ChooseNamedService(options, kCanDirections, stored ? stored->name : std::string_view());
  if (choice.exitStatus == 0) return choice;
  if (!options.quiet) {
    if (stored) Complain(choice.message);
    Complain(FormatText(kTextStraightLinesTaken));
  }
  return ChooseNamedService(options, kCanDirections, ServiceNamed("straight").name);
}

uint32_t TextOf(uint32_t status) {
  switch (status) {
    case kRouteNothingFound:
      return kTextRouteNothingFound;
    case kRouteOverQueryLimit:
      return kTextRouteOverQueryLimit;
    case kRouteDenied:
      return kTextRouteDenied;
    case kRouteInvalidRequest:
      return kTextRouteInvalidRequest;
    case kRouteNotFound:
      return kTextRouteNotFound;
    case kRouteBusy:
      return kTextRouteBusy;
    case kRoutePointCount:
      return kTextRoutePointCount;
    case kRouteTimedOut:
      return kTextRouteTimedOut;
    default:
      return kTextRouteFailed;
  }
}

}  // namespace

DirectionsChoice ChooseDirections(const Options& options, const std::optional<std::string>& typed) {
  DirectionsChoice chosen;
  chosen.service =
      typed ? ChooseNamedService(options, kCanDirections, *typed) : ChooseBySettings(options);
  if (!chosen.service.provider || !(chosen.service.provider->abilities & kCanDirections))
    return chosen;
  const Service& service = *chosen.service.provider;
  chosen.provider = CServiceRegistry::Instance().CreateRouteProvider(service.id);
  const CSettings& settings = CSettings::Instance();
  const RouteWishes& wishes = options.directions.wishes;
  chosen.request = RequestFor(wishes, settings, *chosen.provider);
  if (options.quiet || !chosen.IsToBeAsked()) return chosen;
  for (const std::string_view word : NotOffered(wishes, settings, *chosen.provider))
    Complain(FormatText(kTextServiceDoesNotOffer, service.name, word));
  return chosen;
}

ServiceOutcome OutcomeOfWay(uint32_t status, std::string failureText) {
  if (status == kRouteSuccess) return {};
  std::string message = std::move(failureText);
  // Below them, some services count errors of their own.
  constexpr uint32_t kFirstTransportError = 12000;
  if (message.empty() && status >= TransportStatus(kFirstTransportError))
    message = NetworkErrorText(status - kRouteTransport);
  if (message.empty()) message = LoadTextUtf8(TextOf(status));
  return {status, std::move(message)};
}

std::string NameOfStop(const CGpsNamedPoint& stop, size_t index) {
  return stop.name.empty() ? FormatText(kTextStopNumber, index + 1) : stop.name;
}
