#pragma once

#include "services/directions/route_provider.h"

/// IGN Géoplateforme: start, end and up to 15 points between them.
class GeoplateformeRouter final : public CRouteProvider {
 public:
  ~GeoplateformeRouter() override { Stop(); }

  int32_t GetId() const override;
  size_t GetMaxPoints() const override { return 17; }
  uint32_t BuildRequest(const CGpsPointList& chunk, uint32_t travelMode,
                        const CRouteOptions& options, CHttpRequestSpec& spec) override;
  uint32_t ParseResponse(std::string_view text, uint32_t travelMode, const CRouteOptions& options,
                         Legs& legs) override;
};
