#pragma once

#include "services/directions/route_provider.h"

/// Waze, in its variants for North America and for the rest of the world, which differ in their
/// addresses only.
class CWazeRouter final : public CRouteProvider {
 public:
  explicit CWazeRouter(int32_t id) : m_id(id) {}
  ~CWazeRouter() override { Stop(); }

  int32_t GetId() const override { return m_id; }
  size_t GetMaxPoints() const override { return 2; }
  uint32_t BuildRequest(const CGpsPointList& chunk, uint32_t travelMode,
                        const CRouteOptions& options, CHttpRequestSpec& spec) override;
  uint32_t ParseResponse(std::string_view text, uint32_t travelMode, const CRouteOptions& options,
                         Legs& legs) override;

 private:
  const int32_t m_id;
};
