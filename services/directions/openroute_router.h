#pragma once

#include "services/directions/route_provider.h"

/// The first interface of OpenRouteService. Its replies are not read: every calculation ends with
/// status 4, as programs have come to rely on.
class COpenRouteRouter final : public CRouteProvider {
 public:
  ~COpenRouteRouter() override { Stop(); }

  int32_t GetId() const override;
  size_t GetMaxPoints() const override { return 25; }
  uint32_t BuildRequest(const CGpsPointList& chunk, uint32_t travelMode,
                        const CRouteOptions& options, CHttpRequestSpec& spec) override;
  uint32_t ParseResponse(std::string_view text, uint32_t travelMode, const CRouteOptions& options,
                         Legs& legs) override;
};
