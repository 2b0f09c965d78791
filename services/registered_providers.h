#pragma once

#include "services/service_registry.h"
#include "settings/settings.h"

/// The directions providers of a registry, as the settings ask for them.
class RegisteredProviders : public RouteProviders {
 public:
  /// `registry` must outlive this.
  explicit RegisteredProviders(const CServiceRegistry& registry) : m_registry(registry) {}

  int32_t DefaultProvider() const override { return m_registry.LowestId(); }
  std::vector<int32_t> Providers() const override;
  std::optional<std::set<int32_t>> VehiclesOf(int32_t provider) const override;

 private:
  const CServiceRegistry& m_registry;
};
