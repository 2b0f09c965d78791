#pragma once

#include "services/directions/route_provider.h"

/// HERE, version 8 of its interface.
class HereV8Router final : public CRouteProvider {
 public:
  ~HereV8Router() override { Stop(); }

  int32_t GetId() const override;
  size_t GetMaxPoints() const override { return 25; }
  uint32_t BuildRequest(const CGpsPointList& chunk, uint32_t travelMode,
                        const CRouteOptions& options, CHttpRequestSpec& spec) override;
  uint32_t ParseResponse(std::string_view text, uint32_t travelMode, const CRouteOptions& options,
                         Legs& legs) override;
};
