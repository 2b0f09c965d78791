#pragma once

#include "services/directions/route_provider.h"

/// openrouteservice, version 2 of its interface.
class OrsRouter final : public CRouteProvider {
 public:
  ~OrsRouter() override { Stop(); }

  int32_t GetId() const override;
  size_t GetMaxPoints() const override { return 50; }
  uint32_t BuildRequest(const CGpsPointList& chunk, uint32_t travelMode,
                        const CRouteOptions& options, CHttpRequestSpec& spec) override;
  uint32_t ParseResponse(std::string_view text, uint32_t travelMode, const CRouteOptions& options,
                         Legs& legs) override;
};
