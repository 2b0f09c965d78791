#pragma once

#include <cstdint>
#include <memory>

#include "services/directions/route_provider.h"

class CServiceRegistry;

/// A new directions provider of the numbers below 100; null for a number without one.
/// `CServiceRegistry::CreateRouteProvider` also knows those that have been registered.
std::unique_ptr<CRouteProvider> MakeRouteProvider(int32_t id);

/// Registers our own providers, those from 100 on; once, at start.
void RegisterOwnRouteProviders(CServiceRegistry& registry);
