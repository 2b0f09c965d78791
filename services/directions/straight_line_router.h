#pragma once

#include "services/directions/route_provider.h"

/// Straight lines from point to point. Nothing is asked of anybody, and it ends within `Calculate`.
class CStraightLineRouter final : public CRouteProvider {
 public:
  ~CStraightLineRouter() override { Stop(); }

  using CRouteProvider::Calculate;
  void Calculate(std::unique_ptr<CGpsPointList> points, uint32_t travelMode,
                 const CRouteOptions& options) override;
  void Cancel() override {}
  uint32_t Wait(int32_t timeoutMs) override;
  int32_t GetId() const override;
  size_t GetMaxPoints() const override { return kAllPoints; }
  uint32_t BuildRequest(const CGpsPointList& chunk, uint32_t travelMode,
                        const CRouteOptions& options, CHttpRequestSpec& spec) override;
  uint32_t ParseResponse(std::string_view text, uint32_t travelMode, const CRouteOptions& options,
                         Legs& legs) override;
};
