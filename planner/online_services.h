#pragma once

#include "net/request_queue.h"
#include "planner/page_services.h"
#include "planner/post_box.h"
#include "planner/service_directions.h"
#include "settings/settings.h"

/// What the page asks of the network, answered by the services of the registry. Only services that
/// are set up are asked.
class OnlineServices : public PageServices {
 public:
  /// Both must outlive this.
  OnlineServices(CSettings& settings, PostBox& posts)
      : m_settings(settings), m_posts(posts), m_directions(settings, posts) {}

  int32_t WaitMs() const override { return waitMs; }

  std::string Get(const std::string& url, const std::string& referrer,
                  const std::string& host) override;
  WideString Download(const std::string& url, const std::string& referrer,
                      const WideString& target) override;
  void Enqueue(int32_t queue, const std::string& url, const std::string& referrer,
               const std::string& host, ScriptFunctionPtr callback) override;
  std::optional<CGpsNamedPoint> FindAddress(const CGpsCoordinate& position) override;
  std::optional<CGpsNamedPoint> FindPanorama(const CGpsCoordinate& position) override;
  std::optional<CGpsNamedPoint> FindElevation(const CGpsCoordinate& position) override;
  RoadDirections* Directions() override { return &m_directions; }
  std::optional<UserCountry> FindCountry() override;
  void UpdateProviders(const std::string& json) override;

  int32_t waitMs = PageServices::WaitMs();  ///< to be set before the first question

 private:
  CSettings& m_settings;
  PostBox& m_posts;
  ServiceDirections m_directions;
  HttpRequestQueues m_queues;
};
