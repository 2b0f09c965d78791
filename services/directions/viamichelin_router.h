#pragma once

#include "services/directions/route_provider.h"

/// ViaMichelin, whose replies are script calls.
class CViaMichelinRouter final : public CRouteProvider {
 public:
  ~CViaMichelinRouter() override { Stop(); }

  int32_t GetId() const override;
  size_t GetMaxPoints() const override { return 8; }
  uint32_t BuildRequest(const CGpsPointList& chunk, uint32_t travelMode,
                        const CRouteOptions& options, CHttpRequestSpec& spec) override;
  uint32_t ParseResponse(std::string_view text, uint32_t travelMode, const CRouteOptions& options,
                         Legs& legs) override;
};
