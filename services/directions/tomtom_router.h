#pragma once

#include "services/directions/route_provider.h"

/// TomTom. Two numbers lead to it, each with an account of its own.
class CTomTomRouter final : public CRouteProvider {
 public:
  explicit CTomTomRouter(int32_t id) : m_id(id) {}
  ~CTomTomRouter() override { Stop(); }

  int32_t GetId() const override { return m_id; }
  size_t GetMaxPoints() const override { return 50; }
  uint32_t BuildRequest(const CGpsPointList& chunk, uint32_t travelMode,
                        const CRouteOptions& options, CHttpRequestSpec& spec) override;
  uint32_t ParseResponse(std::string_view text, uint32_t travelMode, const CRouteOptions& options,
                         Legs& legs) override;

 private:
  const int32_t m_id;
};
