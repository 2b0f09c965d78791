#include "app/service_choice.h"

#include <charconv>

#include "app/unattended_conversion.h"
#include "base/format_text.h"
#include "base/text_ids.h"
#include "services/service_access.h"
#include "settings/settings.h"

namespace {

// A provider is typed by its name or its number.
const Service* FindTyped(std::string_view typed) {
  int32_t id = kNoProviderId;
  const auto parsed = std::from_chars(typed.data(), typed.data() + typed.size(), id);
  if (parsed.ec == std::errc() && parsed.ptr == typed.data() + typed.size()) return FindService(id);
  return FindService(typed);
}

std::string NamesOfThoseThatCan(ServiceAbility ability) {
  std::string names;
  for (const Service& service : Services()) {
    if (!(service.abilities & ability)) continue;
    if (!names.empty()) names += ", ";
    names += service.name;
  }
  return names;
}

ServiceChoice Refuse(ServiceChoice choice, int exitStatus, std::string message) {
  choice.exitStatus = exitStatus;
  choice.message = std::move(message);
  return choice;
}

}  // namespace

std::string DefaultFinder(ServiceAbility ability) {
  const Service* const finder = FindService(CSettings::Instance().findProvider);
  const bool isAble = finder && (ServiceFor(*finder, ability).abilities & ability);
  return std::string(isAble ? finder->name : ServiceNamed("offline-places").name);
}

std::string DescribeMissingSettings(const Service& service) {
  std::string names;
  std::string assignments;
  for (const std::string_view setting : MissingSettings(service)) {
    if (!names.empty()) names += ", ";
    names += setting;
    // An address is the service's own, all else is that of the account.
    const std::string_view owner = setting == "url" ? service.name : service.account;
    assignments += fmt::format(" --set service.{}.{}=...", owner, setting);
  }
  return FormatText(kTextServiceNotSetUp, service.name, names, assignments);
}

ServiceChoice ChooseService(const Options& options, ServiceAbility ability,
                            std::string_view defaultProvider) {
  const std::optional<std::string>& typed = options.services.typed.provider;
  return ChooseNamedService(options, ability, typed ? *typed : defaultProvider);
}

ServiceChoice ChooseNamedService(const Options& options, ServiceAbility ability,
                                 std::string_view name) {
  ServiceChoice choice;
  choice.provider = FindTyped(name);
  if (!choice.provider)
    return Refuse(choice, kExitWrongUsage, FormatText(kTextUnknownService, name));
  choice.service = &ServiceFor(*choice.provider, ability);
  if (!(choice.service->abilities & ability)) {
    return Refuse(
        choice, kExitWrongUsage,
        FormatText(kTextServiceCannot, choice.provider->name, NamesOfThoseThatCan(ability)));
  }
  if (options.services.offline && !IsOnThisMachine(*choice.service))
    return Refuse(choice, kExitFailed, FormatText(kTextServiceOffline, choice.provider->name));
  if (!IsUsable(*choice.service))
    return Refuse(choice, kExitFailed, DescribeMissingSettings(*choice.service));
  return choice;
}
