// Any bytes as the reply of any directions provider. Legs come with the status of success only.
// The first byte chooses the provider, the second the travel mode.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <vector>

#include "services/directions/route_options.h"
#include "services/directions/route_provider.h"
#include "services/directions/route_providers.h"
#include "services/service_registry.h"
#include "services/service_table.h"

namespace {

void Expect(bool holds) {
  if (!holds) std::abort();
}

std::vector<std::unique_ptr<CRouteProvider>> MakeProviders() {
  CServiceRegistry& registry = CServiceRegistry::Instance();
  FillServiceRegistry(registry);
  RegisterOwnRouteProviders(registry);
  std::vector<std::unique_ptr<CRouteProvider>> providers;
  for (const Service& service : Services()) {
    if (service.id == kNoProviderId) continue;
    if (auto provider = registry.CreateRouteProvider(service.id))
      providers.push_back(std::move(provider));
  }
  return providers;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  constexpr size_t kChoices = 2;
  if (size < kChoices) return 0;
  static const auto providers = MakeProviders();
  CRouteProvider& provider = *providers[data[0] % providers.size()];
  const std::string_view reply(reinterpret_cast<const char*>(data + kChoices), size - kChoices);
  CRouteProvider::Legs legs;
  const auto options = MakeRouteOptions(kRouteTypeOnly);
  const uint32_t status = provider.ParseResponse(reply, data[1] % (kBus + 1U), *options, legs);
  Expect(status == kRouteSuccess || legs.empty());
  return 0;
}
