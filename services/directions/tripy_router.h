#pragma once

#include <mutex>
#include <stop_token>

#include "services/directions/route_provider.h"

/// Tripy RoadTracer Web. Its server keeps a session of two points, so it is asked in a loop of its
/// own, twice a pair of points, on the thread that calls `Calculate`.
class CTripyRouter final : public CRouteProvider {
 public:
  ~CTripyRouter() override { Stop(); }

  using CRouteProvider::Calculate;
  void Calculate(std::unique_ptr<CGpsPointList> points, uint32_t travelMode,
                 const CRouteOptions& options) override;
  void Cancel() override;
  uint32_t Wait(int32_t timeoutMs) override;
  int32_t GetId() const override;
  size_t GetMaxPoints() const override { return kAllPoints; }
  /// The request that sets the start of a pair of points, or with `isEnd` its end.
  void BuildPointRequest(const CGpsCoordinate& point, bool isEnd, CHttpRequestSpec& spec) const;
  /// The request for the end of a pair.
  uint32_t BuildRequest(const CGpsPointList& chunk, uint32_t travelMode,
                        const CRouteOptions& options, CHttpRequestSpec& spec) override;
  uint32_t ParseResponse(std::string_view text, uint32_t travelMode, const CRouteOptions& options,
                         Legs& legs) override;
  std::string FailureText() const override;

 private:
  uint32_t CalculateLeg(const CGpsPointList& pair, uint32_t travelMode,
                        const CRouteOptions& options);
  std::stop_token StopToken() const;

  mutable std::mutex m_stopMutex;  ///< guards which source there is
  std::stop_source m_stop;         ///< of the calculation; asked to stop by `Cancel`
};
