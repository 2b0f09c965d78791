#include "services/directions/route_providers.h"

#include "services/directions/bing_router.h"
#include "services/directions/brouter_router.h"
#include "services/directions/geoplateforme_router.h"
#include "services/directions/google_router.h"
#include "services/directions/google_routes_router.h"
#include "services/directions/here_router.h"
#include "services/directions/here_v8_router.h"
#include "services/directions/ign_router.h"
#include "services/directions/openroute_router.h"
#include "services/directions/ors_router.h"
#include "services/directions/osrm_router.h"
#include "services/directions/straight_line_router.h"
#include "services/directions/tomtom_router.h"
#include "services/directions/tripy_router.h"
#include "services/directions/valhalla_router.h"
#include "services/directions/viamichelin_router.h"
#include "services/directions/waze_router.h"
#include "services/offline/offline_router.h"
#include "services/service_registry.h"
#include "services/service_table.h"

namespace {

struct OwnProvider {
  int32_t id;
  std::unique_ptr<CRouteProvider> (*make)();
};

template <typename Provider>
std::unique_ptr<CRouteProvider> Make() {
  return std::make_unique<Provider>();
}

constexpr OwnProvider kOwnProviders[] = {
    {provider::kOfflineRoads, Make<OfflineRouter>},
    {provider::kValhalla, Make<ValhallaRouter>},
    {provider::kBRouter, Make<BRouterRouter>},
    {provider::kOrs, Make<OrsRouter>},
    {provider::kHereV8, Make<HereV8Router>},
    {provider::kGoogleRoutes, Make<GoogleRoutesRouter>},
    {provider::kGeoplateforme, Make<GeoplateformeRouter>},
};

}  // namespace

std::unique_ptr<CRouteProvider> MakeRouteProvider(int32_t id) {
  switch (id) {
    case provider::kStraight:
      return Make<CStraightLineRouter>();
    case provider::kGoogle:
      return Make<CGoogleRouter>();
    case provider::kBing:
      return Make<CBingRouter>();
    case provider::kTomTom:
    case provider::kTomTom6:
      return std::make_unique<CTomTomRouter>(id);
    case provider::kViaMichelin:
      return Make<CViaMichelinRouter>();
    case provider::kOsrm:
      return Make<COsrmRouter>();
    case provider::kIgn:
      return Make<CIgnRouter>();
    case provider::kWazeUs:
    case provider::kWazeWorld:
      return std::make_unique<CWazeRouter>(id);
    case provider::kHere:
      return Make<CHereRouter>();
    case provider::kOpenRouteService:
      return Make<COpenRouteRouter>();
    case provider::kTripy:
      return Make<CTripyRouter>();
    default:
      return nullptr;
  }
}

void RegisterOwnRouteProviders(CServiceRegistry& registry) {
  for (const OwnProvider& row : kOwnProviders) registry.RegisterRouteProvider(row.id, row.make);
}

std::unique_ptr<CRouteProvider> CServiceRegistry::CreateRouteProvider(int32_t id) const {
  RouteProviderMaker maker;
  {
    const std::lock_guard lock(m_mutex);
    const auto found = m_routeProviders.find(id);
    if (found != m_routeProviders.end()) maker = found->second;
  }
  return maker ? maker() : MakeRouteProvider(id);
}
