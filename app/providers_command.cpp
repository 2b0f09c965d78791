#include "app/providers_command.h"

#include <algorithm>
#include <string>

#include "app/console_text.h"
#include "app/output_sink.h"
#include "app/unattended_conversion.h"
#include "base/format_text.h"
#include "base/text_ids.h"
#include "markup/json_string.h"
#include "services/directions/route_provider.h"
#include "services/service_access.h"
#include "services/service_registry.h"

namespace {

struct NamedAbility {
  ServiceAbility ability;
  std::string_view name;
};

constexpr NamedAbility kAbilities[] = {
    {kCanDirections, "directions"}, {kCanGeocode, "geocoding"},   {kCanReverse, "reverse"},
    {kCanSearch, "search"},         {kCanElevation, "elevation"}, {kCanPanorama, "panorama"},
    {kCanCountry, "country"},       {kCanLinks, "links"},
};

// Kinds of roads that a mode can avoid, by the words of --avoid.
struct NamedAvoidance {
  OfferedAndDefault (CTravelModeInfo::*offered)() const;
  std::string_view name;
};

constexpr NamedAvoidance kAvoidances[] = {
    {&CTravelModeInfo::Motorways, "motorways"},
    {&CTravelModeInfo::Tolls, "tolls"},
    {&CTravelModeInfo::BoatFerries, "boat-ferries"},
    {&CTravelModeInfo::RailFerries, "rail-ferries"},
    {&CTravelModeInfo::Tunnels, "tunnels"},
    {&CTravelModeInfo::DirtRoads, "dirt-roads"},
};
constexpr std::string_view kUsedRoads = "used-roads";

// Puts commas between its entries and brackets around them.
class JsonList {
 public:
  explicit JsonList(ByteSink& sink) : m_sink(sink) { m_sink.Put('['); }
  ByteSink& Next() {
    if (!m_isFirst) m_sink.Write(", ");
    m_isFirst = false;
    return m_sink;
  }
  void End() { m_sink.Put(']'); }

 private:
  ByteSink& m_sink;
  bool m_isFirst = true;
};

void WriteMode(ByteSink& sink, uint32_t mode, const CTravelModeInfo& info) {
  sink.Printf("{\"mode\": %u, \"types\": ", mode);
  JsonList types(sink);
  for (const uint32_t type : info.RouteTypes()) types.Next().Printf("%u", type);
  types.End();
  sink.Write(", \"avoid\": ");
  JsonList avoidances(sink);
  for (const NamedAvoidance& avoidance : kAvoidances) {
    if ((info.*avoidance.offered)().first) WriteJsonString(avoidances.Next(), avoidance.name);
  }
  if (const auto* const character = dynamic_cast<const RouteCharacterModeInfo*>(&info);
      character && character->AvoidUsedRoads().first)
    WriteJsonString(avoidances.Next(), kUsedRoads);
  avoidances.End();
  sink.Put('}');
}

// The travel modes and the most points of a request; no modes without directions, and null where
// there is no limit.
void WriteDirections(ByteSink& sink, const Service& service) {
  const auto provider = service.abilities & kCanDirections
                            ? CServiceRegistry::Instance().CreateRouteProvider(service.id)
                            : nullptr;
  sink.Write(", \"modes\": ");
  JsonList modes(sink);
  if (provider) {
    for (const auto& [mode, info] : provider->GetTravelModes())
      WriteMode(modes.Next(), mode, *info);
  }
  modes.End();
  sink.Write(", \"maxPoints\": ");
  const size_t most = provider ? provider->GetMaxPoints() : kAllPoints;
  sink.Write(most == kAllPoints ? std::string("null") : std::to_string(most));
}

void WriteJson(ByteSink& sink, const Service& service) {
  sink.Write("{\"id\": ");
  sink.Write(service.id == kNoProviderId ? std::string("null") : std::to_string(service.id));
  sink.Write(", \"name\": ");
  WriteJsonString(sink, service.name);
  sink.Write(", \"label\": ");
  WriteJsonString(sink, LoadTextUtf8(service.labelTextId));
  sink.Write(", \"can\": ");
  JsonList can(sink);
  for (const NamedAbility& row : kAbilities) {
    if (service.abilities & row.ability) WriteJsonString(can.Next(), row.name);
  }
  can.End();
  const std::vector<std::string_view> missing = MissingSettings(service);
  sink.Write(missing.empty() ? ", \"usable\": true, \"missing\": "
                             : ", \"usable\": false, \"missing\": ");
  JsonList settings(sink);
  for (const std::string_view setting : missing) WriteJsonString(settings.Next(), setting);
  settings.End();
  WriteDirections(sink, service);
  if (!service.closedSince.empty()) {
    sink.Write(", \"closed\": ");
    WriteJsonString(sink, service.closedSince);
    sink.Write(", \"successor\": ");
    WriteJsonString(sink, service.successor);
  }
  sink.Put('}');
}

void AppendWord(std::string& words, std::string_view word) {
  if (!words.empty()) words += ", ";
  words += word;
}

std::string DescribeState(const Service& service) {
  std::string missing;
  for (const std::string_view setting : MissingSettings(service)) AppendWord(missing, setting);
  std::string state = missing.empty() ? std::string(LoadTextUtf8(kTextServiceUsable))
                                      : FormatText(kTextServiceNeeds, missing);
  if (!service.closedSince.empty())
    AppendWord(state, FormatText(kTextServiceClosed, service.closedSince, service.successor));
  return state;
}

void WriteText(ByteSink& sink, const Service& service) {
  std::string can;
  for (const NamedAbility& row : kAbilities) {
    if (service.abilities & row.ability) AppendWord(can, row.name);
  }
  const std::string id = service.id == kNoProviderId ? "" : std::to_string(service.id);
  sink.Write(fmt::format("{:>3}  {:<18}  {:<24}  {}\n{:>25}{}\n", id, service.name,
                         LoadTextUtf8(service.labelTextId), DescribeState(service), "", can));
}

}  // namespace

int RunProviders(const Options& options) {
  OutputSink sink;
  const char* separator = "[";
  for (const Service& service : Services()) {
    if (options.json) {
      sink.Write(separator);
      WriteJson(sink, service);
      separator = ",\n ";
    } else {
      WriteText(sink, service);
    }
  }
  if (options.json) sink.Write("]\n");
  return sink.Finish() ? kExitConverted : kExitFailed;
}
