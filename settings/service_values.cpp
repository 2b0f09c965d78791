#include "settings/service_values.h"

#include <utility>

#include "base/status.h"
#include "base/text.h"

namespace {

constexpr std::string_view kFolder = "Services";

struct StoredValue {
  std::string_view name;
  std::optional<std::string> ServiceValues::*field;
};

constexpr StoredValue kStoredValues[] = {
    {"Url", &ServiceValues::url},           {"Key", &ServiceValues::key},
    {"AppId", &ServiceValues::appId},       {"Language", &ServiceValues::language},
    {"Referrer", &ServiceValues::referrer},
};

ServiceValues ReadService(const storage::SFolder& folder) {
  ServiceValues values;
  for (const StoredValue& stored : kStoredValues) {
    try {
      const storage::SValue value = folder.OpenValue(stored.name);
      if (value.Exists()) values.*stored.field = WideToUtf8Lossy(value.ReadText());
    } catch (const storage::Exception& failure) {
      // Of another kind: none of ours.
      if (failure.reason != storage::Reason::kInvalidData) throw;
    }
  }
  return values;
}

}  // namespace

uint32_t LoadServiceValues(const storage::Storage& storage, ServiceValuesByName& values,
                           std::string_view root) {
  ServiceValuesByName stored;
  const uint32_t status = storage::StatusOf([&] {
    const storage::SFolder services = storage.OpenFolder(storage::PathOf(root, kFolder));
    for (const std::string& name : services.FolderNames())
      stored[ToLowerAscii(name)] = ReadService(services.OpenFolder(name));
  });
  if (status == kStatusSuccess) values = std::move(stored);
  return status;
}

uint32_t SaveServiceValues(storage::Storage storage, const ServiceValuesByName& services,
                           std::string_view root) {
  return storage::StatusOf([&] {
    storage::Transaction transaction(storage);
    storage::SFolder parent = storage.CreateFolder(storage::PathOf(root, kFolder));
    for (const auto& [name, values] : services) {
      parent.RemoveFolder(name);
      if (values == ServiceValues()) continue;
      storage::SFolder folder = parent.CreateFolder(name);
      for (const StoredValue& stored : kStoredValues) {
        const std::optional<std::string>& value = values.*stored.field;
        if (value) folder.CreateValue(stored.name).WriteText(Utf8ToWideLossy(*value));
      }
    }
    transaction.Commit();
  });
}
