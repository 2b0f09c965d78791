#pragma once

#include "services/directions/route_provider.h"

/// Google Routes, version 2: origin, destination and up to 25 points between them.
class GoogleRoutesRouter final : public CRouteProvider {
 public:
  ~GoogleRoutesRouter() override { Stop(); }

  int32_t GetId() const override;
  size_t GetMaxPoints() const override { return 27; }
  uint32_t BuildRequest(const CGpsPointList& chunk, uint32_t travelMode,
                        const CRouteOptions& options, CHttpRequestSpec& spec) override;
  uint32_t ParseResponse(std::string_view text, uint32_t travelMode, const CRouteOptions& options,
                         Legs& legs) override;
};
