#include "app/service_outcome.h"

#include <utility>

#include "app/console_text.h"
#include "app/settings_command.h"
#include "app/unattended_conversion.h"
#include "base/format_text.h"
#include "base/text_ids.h"
#include "conversion/geocoder.h"
#include "markup/json_string.h"
#include "services/directions/route_providers.h"
#include "services/offline/offline_finders.h"
#include "services/request_log.h"
#include "services/service_registry.h"

void PrepareServices() {
  static bool isPrepared = false;
  if (std::exchange(isPrepared, true)) return;
  LoadUserSettings();
  CServiceRegistry& registry = CServiceRegistry::Instance();
  FillServiceRegistry(registry);
  RegisterOwnRouteProviders(registry);
  RegisterOfflinePlaces(registry);
  SetServiceValues(UserServiceValues());
}

void TellRequests(const Options& options) {
  if (options.quiet) return;
  for (const auto& [service, count] : RequestsMade())
    Complain(FormatText(kTextRequestsTo, service->name, count));
}

ServiceOutcome OutcomeOf(uint32_t status) {
  switch (status) {
    case kServiceSuccess:
      return {};
    case kServiceNoResults:
    case kServiceNotFound:
      return {status, std::string(LoadTextUtf8(kTextNothingFound))};
    case kServiceDenied:
      return {status, std::string(LoadTextUtf8(kTextServiceRefused))};
    default:
      return {status, std::string(LoadTextUtf8(kTextSearchFailed))};
  }
}

ServiceOutcome OutcomeOf(const ServiceChoice& refused) {
  return {kServiceInvalid, refused.message};
}

void WriteJsonProvider(ByteSink& sink, const Service& provider) {
  sink.Write("{\"id\": ");
  sink.Write(provider.id == kNoProviderId ? "null" : std::to_string(provider.id));
  sink.Write(", \"name\": ");
  WriteJsonString(sink, provider.name);
  sink.Put('}');
}

void WriteJsonStatus(ByteSink& sink, const ServiceOutcome& outcome) {
  sink.Printf("\"status\": %u, \"message\": ", outcome.status);
  if (outcome.status == kServiceSuccess)
    sink.Write("null");
  else
    WriteJsonString(sink, outcome.message);
}

void WriteJsonOutcome(ByteSink& sink, const ServiceChoice& choice, const ServiceOutcome& outcome) {
  sink.Write("{\"provider\": ");
  WriteJsonProvider(sink, *choice.provider);
  sink.Write(", ");
  WriteJsonStatus(sink, outcome);
}

int Conclude(const ServiceChoice& choice, const ServiceOutcome& outcome, bool isWritten) {
  if (choice.exitStatus != 0) {
    Complain(Printable(outcome.message));
    return choice.exitStatus;
  }
  if (outcome.status != kServiceSuccess) {
    Complain(
        FormatText(kTextServiceFailed, choice.provider->name, outcome.message, outcome.status));
    return kExitFailed;
  }
  return isWritten ? kExitConverted : kExitFailed;
}
