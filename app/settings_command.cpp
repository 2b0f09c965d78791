#include "app/settings_command.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

#include "app/console_text.h"
#include "app/layer_settings.h"
#include "app/output_sink.h"
#include "app/service_settings.h"
#include "app/unattended_conversion.h"
#include "base/format_text.h"
#include "base/status.h"
#include "base/text_ids.h"
#include "markup/json_string.h"
#include "services/directions/route_providers.h"
#include "services/registered_providers.h"
#include "settings/settings.h"
#include "settings/settings_list.h"
#include "settings/storage.h"

namespace {

// Damage shows when a store is read, or only when it is looked through before it is written.
void TellOfTheFile() {
  for (const std::string& message : TakeSettingsMessages()) Complain(message);
}

void WriteListing(ByteSink& sink, const SettingListing& setting, bool asJson) {
  if (!asJson) {
    sink.Write(fmt::format("{:<22} {:<8} {:<12} {:<8} {}\n", Printable(setting.key), setting.kind,
                           Printable(setting.value), setting.defaultValue, setting.meaning));
    return;
  }
  const struct {
    const char* name;
    const std::string& text;
  } kMembers[] = {{"{\"key\": ", setting.key},
                  {", \"kind\": ", setting.kind},
                  {", \"value\": ", setting.value},
                  {", \"default\": ", setting.defaultValue},
                  {", \"meaning\": ", setting.meaning}};
  for (const auto& member : kMembers) {
    sink.Write(member.name);
    WriteJsonString(sink, member.text);
  }
  sink.Put('}');
}

// False when not everything could be written.
bool WriteListings(const CSettings& settings, bool asJson) {
  OutputSink sink;
  const char* separator = asJson ? "[" : "";
  std::vector<SettingListing> listings = ListSettings(settings);
  std::ranges::move(ListServiceSettings(UserServiceValues()), std::back_inserter(listings));
  LayerSettings ofLayers;
  if (LoadLayerSettings(storage::OpenUserStorage(), ofLayers) != kStatusSuccess) TellOfTheFile();
  std::ranges::move(ListLayerSettings(ofLayers), std::back_inserter(listings));
  for (const SettingListing& setting : listings) {
    sink.Write(separator);
    WriteListing(sink, setting, asJson);
    separator = asJson ? ",\n " : "";
  }
  if (asJson) sink.Write("]\n");
  return sink.Finish();
}

}  // namespace

ServiceValuesByName UserServiceValues() {
  ServiceValuesByName values;
  if (LoadServiceValues(storage::OpenUserStorage(), values) != kStatusSuccess) TellOfTheFile();
  return values;
}

void LoadUserSettings() {
  if (CSettings::Instance().IsLoaded()) return;
  CSettings::Instance().Load();
  TellOfTheFile();
}

uint32_t StoredLanguage() {
  LoadUserSettings();
  const CSettings& settings = CSettings::Instance();
  return static_cast<uint32_t>(settings.language != 0 ? settings.language
                                                      : settings.programLanguage);
}

bool RememberCsvLayouts(const Options& options) {
  try {
    storage::Storage storage = storage::OpenUserStorage();
    StoreCsvLayouts(storage, options.csvRead, options.csvWrite);
  } catch (const storage::Exception&) {
    TellOfTheFile();
    Complain(FormatText(kTextSettingsNotStored));
    return false;
  }
  TellOfTheFile();
  return true;
}

int ChangeSettings(const Options& options) {
  if (options.assignments.empty()) return kExitConverted;
  LoadUserSettings();
  CSettings& settings = CSettings::Instance();
  CServiceRegistry registry;
  RegisterOwnRouteProviders(registry);
  const RegisteredProviders providers(registry);
  std::vector<ServiceAssignment> ofServices;
  std::optional<LayerSettings> ofLayers;
  uint32_t status = kStatusSuccess;
  std::string error;
  for (const std::string& assignment : options.assignments) {
    if (IsServiceAssignment(assignment)) {
      if (!ParseServiceAssignment(assignment, ofServices.emplace_back(), error)) break;
    } else if (IsLayerAssignment(assignment)) {
      if (!ofLayers) status = LoadLayerSettings(storage::OpenUserStorage(), ofLayers.emplace());
      if (status != kStatusSuccess) break;
      if (!ChangeLayer(*ofLayers, assignment, error)) break;
    } else {
      error = DescribeRefusal(SetSetting(settings, assignment, &providers));
      if (!error.empty()) break;
    }
  }
  if (error.empty() && ofLayers) CheckLayers(*ofLayers, error);
  if (!error.empty()) {
    Complain(error);
    return kExitWrongUsage;
  }
  // Layers that could not be read must not be replaced by fewer.
  if (status == 0) status = settings.Save();
  if (status == 0) status = StoreServiceValues(storage::OpenUserStorage(), ofServices);
  if (status == 0 && ofLayers) status = StoreLayerSettings(storage::OpenUserStorage(), *ofLayers);
  TellOfTheFile();
  if (status == 0) return kExitConverted;
  Complain(FormatText(kTextSettingsNotStored));
  return kExitFailed;
}

int RunSettings(const Options& options) {
  LoadUserSettings();
  return WriteListings(CSettings::Instance(), options.json) ? kExitConverted : kExitFailed;
}
