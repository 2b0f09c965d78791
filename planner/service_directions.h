#pragma once

#include <cstdint>
#include <list>
#include <memory>

#include "planner/directions.h"
#include "planner/post_box.h"
#include "services/directions/route_provider.h"
#include "settings/settings.h"

/// The provider of the setting `RouteProvider`, as the registry makes it. One that is not set up is
/// never asked: its status is that of an invalid request.
class ServiceDirections : public RoadDirections {
 public:
  /// Both must outlive this.
  ServiceDirections(const CSettings& settings, PostBox& posts)
      : m_settings(settings), m_posts(posts) {}
  /// Cancels what runs and waits until that is quiet.
  ~ServiceDirections() override;

  DirectionsAnswer Ask(const std::vector<CGpsPoint>& points,
                       const std::function<bool()>& goesOn) override;
  void AskLater(const std::vector<CGpsPoint>& points,
                std::function<void(const DirectionsAnswer&)> answered) override;
  int32_t Provider() const override { return m_settings.routeProvider; }

 private:
  // A request whose answer is posted.
  struct Running {
    uint64_t number;
    std::unique_ptr<CRouteProvider> provider;
    std::function<void(const DirectionsAnswer&)> answered;
  };

  // The selected provider; null when it cannot be asked.
  std::unique_ptr<CRouteProvider> MakeProvider() const;
  void Begin(CRouteProvider& provider, const std::vector<CGpsPoint>& points) const;
  void Answer(uint64_t number, uint32_t status);

  const CSettings& m_settings;
  PostBox& m_posts;
  std::list<Running> m_running;
  uint64_t m_lastNumber = 0;
  /// Posted answers look here whether this object is still there.
  std::shared_ptr<bool> m_isThere = std::make_shared<bool>(true);
};
