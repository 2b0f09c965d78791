#pragma once

#include "services/directions/route_provider.h"

/// A Valhalla server of the user's choice.
class ValhallaRouter final : public CRouteProvider {
 public:
  ~ValhallaRouter() override { Stop(); }

  int32_t GetId() const override;
  size_t GetMaxPoints() const override { return 20; }
  uint32_t BuildRequest(const CGpsPointList& chunk, uint32_t travelMode,
                        const CRouteOptions& options, CHttpRequestSpec& spec) override;
  uint32_t ParseResponse(std::string_view text, uint32_t travelMode, const CRouteOptions& options,
                         Legs& legs) override;
};
