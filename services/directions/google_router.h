#pragma once

#include "services/directions/route_provider.h"

/// Google Directions. Of the points of a chunk only the first and the last go out.
class CGoogleRouter final : public CRouteProvider {
 public:
  ~CGoogleRouter() override { Stop(); }

  int32_t GetId() const override;
  size_t GetMaxPoints() const override { return 23; }
  uint32_t BuildRequest(const CGpsPointList& chunk, uint32_t travelMode,
                        const CRouteOptions& options, CHttpRequestSpec& spec) override;
  uint32_t ParseResponse(std::string_view text, uint32_t travelMode, const CRouteOptions& options,
                         Legs& legs) override;
};
