#include "services/service_access.h"

#include <mutex>
#include <utility>

#include "services/service_registry.h"

namespace {

struct ValuesInForce {
  std::mutex mutex;
  ServiceValuesByName values;
};

ValuesInForce& InForce() {
  static ValuesInForce inForce;
  return inForce;
}

ServiceValues ValuesOf(std::string_view name) {
  ValuesInForce& inForce = InForce();
  const std::lock_guard lock(inForce.mutex);
  const auto found = inForce.values.find(name);
  return found == inForce.values.end() ? ServiceValues() : found->second;
}

void TakeAccount(const CServiceRegistry::Account& account, ServiceAccess& access) {
  if (!account) return;
  access.key = account->key;
  access.language = account->language;
  access.referrer = account->referrer;
  if (const auto* const here = dynamic_cast<const CHereAccount*>(account.get()))
    access.appId = here->appId;
}

}  // namespace

void SetServiceValues(ServiceValuesByName values) {
  ValuesInForce& inForce = InForce();
  const std::lock_guard lock(inForce.mutex);
  inForce.values = std::move(values);
}

ServiceAccess AccessTo(const Service& service) {
  ServiceAccess access;
  const Service& account = ServiceNamed(service.account);
  if (account.id != kNoProviderId)
    TakeAccount(CServiceRegistry::Instance().Find(account.id), access);

  ServiceValues values = ValuesOf(account.name);
  access.url = ValuesOf(service.name).url.value_or(std::string(service.address));
  access.key = std::move(values.key).value_or(std::move(access.key));
  access.appId = std::move(values.appId).value_or(std::move(access.appId));
  access.language = std::move(values.language).value_or(std::move(access.language));
  access.referrer = std::move(values.referrer).value_or(std::move(access.referrer));
  return access;
}

ServiceAccess AccessTo(std::string_view name) { return AccessTo(ServiceNamed(name)); }

bool IsOnThisMachine(const Service& service) {
  return service.id == provider::kOfflineRoads || service.id == provider::kOfflinePlaces ||
         service.id == provider::kStraight;
}

bool HasAddressOfUser(const Service& service) { return ValuesOf(service.name).url.has_value(); }

std::vector<std::string_view> MissingSettings(const Service& service) {
  const ServiceAccess access = AccessTo(service);
  std::vector<std::string_view> missing;
  if (service.needs & kNeedsUrl && access.url.empty()) missing.emplace_back("url");
  if (service.needs & kNeedsKey && access.key.empty()) missing.emplace_back("key");
  if (service.needs & kNeedsAppId && access.appId.empty()) missing.emplace_back("app-id");
  return missing;
}

bool IsUsable(const Service& service) { return MissingSettings(service).empty(); }
