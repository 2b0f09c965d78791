#include "services/offline/road_engine.h"

#include "platform/program_module.h"

RoutingEngine* RoadEngine() {
  static RoutingEngine* const engine = [] {
    const auto entry =
        reinterpret_cast<RoadModuleEntry>(LoadModuleEntry(kRoadModule, kRoadModuleEntry));
    return entry ? entry() : nullptr;
  }();
  return engine;
}
