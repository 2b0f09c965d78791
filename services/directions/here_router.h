#pragma once

#include "services/directions/route_provider.h"

/// HERE, version 7.2 of its interface.
class CHereRouter final : public CRouteProvider {
 public:
  ~CHereRouter() override { Stop(); }

  int32_t GetId() const override;
  size_t GetMaxPoints() const override { return 10; }
  uint32_t BuildRequest(const CGpsPointList& chunk, uint32_t travelMode,
                        const CRouteOptions& options, CHttpRequestSpec& spec) override;
  uint32_t ParseResponse(std::string_view text, uint32_t travelMode, const CRouteOptions& options,
                         Legs& legs) override;
};
