#pragma once

#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "services/directions/route_provider.h"
#include "services/offline/road_databases.h"

/// Ways from the road databases of this machine. They are searched on a thread of its own, leg
/// after leg; a leg comes from the first database with roads near both its ends.
class OfflineRouter final : public CRouteProvider {
 public:
  OfflineRouter() = default;
  ~OfflineRouter() override;

  using CRouteProvider::Calculate;
  void Calculate(std::unique_ptr<CGpsPointList> points, uint32_t travelMode,
                 const CRouteOptions& options) override;
  void Cancel() override { NoteCancel(); }
  uint32_t Wait(int32_t timeoutMs) override;
  int32_t GetId() const override;
  size_t GetMaxPoints() const override { return kAllPoints; }
  /// There are no requests.
  uint32_t BuildRequest(const CGpsPointList& chunk, uint32_t travelMode,
                        const CRouteOptions& options, CHttpRequestSpec& spec) override;
  uint32_t ParseResponse(std::string_view text, uint32_t travelMode, const CRouteOptions& options,
                         Legs& legs) override;
  std::string FailureText() const override;

 private:
  void End();
  void Run(const CGpsPointList& points, uint32_t travelMode, const CRouteOptions& options);
  uint32_t CalculateLeg(const std::vector<RoadDatabase>& databases, RoadQuery& query,
                        const CGpsNamedPoint& from, const CGpsNamedPoint& to, CRouteData& leg);
  uint32_t ExplainNoDatabase(const std::vector<RoadDatabase>& databases, const CGpsNamedPoint& from,
                             const CGpsNamedPoint& to);
  uint32_t Fail(uint32_t status, std::string text);

  std::thread m_thread;
  mutable std::mutex m_mutex;  ///< guards what follows
  std::condition_variable m_ended;
  bool m_isRunning = false;
  std::string m_failureText;
};
