#pragma once

#include "services/directions/route_provider.h"

/// The public interface of OSRM.
class COsrmRouter final : public CRouteProvider {
 public:
  ~COsrmRouter() override { Stop(); }

  int32_t GetId() const override;
  size_t GetMaxPoints() const override { return 25; }
  uint32_t BuildRequest(const CGpsPointList& chunk, uint32_t travelMode,
                        const CRouteOptions& options, CHttpRequestSpec& spec) override;
  uint32_t ParseResponse(std::string_view text, uint32_t travelMode, const CRouteOptions& options,
                         Legs& legs) override;
};
