#include "services/service_store.h"

#include "base/text.h"
#include "base/text_ids.h"

namespace {

constexpr std::string_view kFolder = "Services";

constexpr ServiceSetting kSettings[] = {
    {"url", "Url", kTextServiceUrl, false, &ServiceValues::url},
    {"key", "Key", kTextServiceKey, true, &ServiceValues::key},
    {"app-id", "AppId", kTextServiceAppId, true, &ServiceValues::appId},
    {"language", "Language", kTextServiceLanguage, false, &ServiceValues::language},
    {"referrer", "Referrer", kTextServiceReferrer, false, &ServiceValues::referrer},
};

// Empty values are as good as none: that is how a value is taken away.
std::optional<std::string> ReadValue(const storage::SFolder& folder, std::string_view name) {
  const storage::SValue value = folder.OpenValue(name);
  if (!value.Exists()) return std::nullopt;
  std::string text = WideToUtf8Lossy(value.ReadText());
  if (text.empty()) return std::nullopt;
  return text;
}

}  // namespace

std::span<const ServiceSetting> ServiceSettings() { return kSettings; }

ServiceValuesByName LoadServiceValues(const storage::Storage& storage) {
  ServiceValuesByName all;
  const storage::SFolder root = storage.OpenFolder(kSettingsRoot).OpenFolder(kFolder);
  for (const Service& service : Services()) {
    const storage::SFolder folder = root.OpenFolder(service.name);
    ServiceValues values;
    bool isSet = false;
    for (const ServiceSetting& setting : kSettings) {
      std::optional<std::string> value = ReadValue(folder, setting.valueName);
      isSet = isSet || value;
      values.*setting.value = std::move(value);
    }
    if (isSet) all[std::string(service.name)] = std::move(values);
  }
  return all;
}

void StoreServiceValues(storage::Storage& storage, std::span<const ServiceAssignment> changes) {
  if (changes.empty()) return;
  storage::Transaction transaction(storage);
  storage::SFolder root = storage.CreateFolder(kSettingsRoot).CreateFolder(kFolder);
  for (const ServiceAssignment& change : changes) {
    root.CreateFolder(change.service->name)
        .CreateValue(change.setting->valueName)
        .WriteText(Utf8ToWideLossy(change.value));
  }
  transaction.Commit();
}
