#pragma once

#include <cstdint>
#include <memory>

#include "services/directions/route_provider.h"

/// A new directions provider of those that the program brings; null for a number without one.
/// `CServiceRegistry::CreateRouteProvider` also knows those that others have registered.
std::unique_ptr<CRouteProvider> MakeRouteProvider(int32_t id);
