#pragma once

#include "services/directions/route_provider.h"

/// A BRouter server of the user's choice. It tells one way a reply, so it is asked leg by leg.
class BRouterRouter final : public CRouteProvider {
 public:
  ~BRouterRouter() override { Stop(); }

  int32_t GetId() const override;
  size_t GetMaxPoints() const override { return 2; }
  uint32_t BuildRequest(const CGpsPointList& chunk, uint32_t travelMode,
                        const CRouteOptions& options, CHttpRequestSpec& spec) override;
  uint32_t ParseResponse(std::string_view text, uint32_t travelMode, const CRouteOptions& options,
                         Legs& legs) override;
};
