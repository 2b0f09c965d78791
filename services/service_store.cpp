#include "services/service_store.h"

#include "base/status.h"
#include "base/text_ids.h"

namespace {

constexpr ServiceSetting kSettings[] = {
    {"url", kTextServiceUrl, false, &ServiceValues::url},
    {"key", kTextServiceKey, true, &ServiceValues::key},
    {"app-id", kTextServiceAppId, true, &ServiceValues::appId},
    {"language", kTextServiceLanguage, false, &ServiceValues::language},
    {"referrer", kTextServiceReferrer, false, &ServiceValues::referrer},
};

}  // namespace

std::span<const ServiceSetting> ServiceSettings() { return kSettings; }

uint32_t StoreServiceValues(const storage::Storage& storage,
                            std::span<const ServiceAssignment> changes) {
  if (changes.empty()) return kStatusSuccess;
  ServiceValuesByName stored;
  if (const uint32_t status = LoadServiceValues(storage, stored)) return status;
  ServiceValuesByName changed;
  for (const ServiceAssignment& change : changes) {
    const std::string name(change.service->name);
    ServiceValues& values = changed.try_emplace(name, stored[name]).first->second;
    std::optional<std::string>& value = values.*change.setting->value;
    const bool isTakenAway =
        change.value.empty() && change.setting->value != &ServiceValues::language;
    value = isTakenAway ? std::nullopt : std::optional(change.value);
  }
  return SaveServiceValues(storage, changed);
}
