#pragma once

#include "planner/page_services.h"
#include "planner/service_directions.h"

/// Services of the page that asks nobody but the directions provider.
class QuietServices : public PageServices {
 public:
  QuietServices(CSettings& settings, PostBox& posts) : m_directions(settings, posts) {}
  std::string Get(const std::string&, const std::string&, const std::string&) override {
    return {};
  }
  WideString Download(const std::string&, const std::string&, const WideString&) override {
    return {};
  }
  void Enqueue(int32_t, const std::string&, const std::string&, const std::string&,
               ScriptFunctionPtr) override {}
  std::optional<CGpsNamedPoint> FindAddress(const CGpsCoordinate&) override { return {}; }
  std::optional<CGpsNamedPoint> FindPanorama(const CGpsCoordinate&) override { return {}; }
  std::optional<CGpsNamedPoint> FindElevation(const CGpsCoordinate&) override { return {}; }
  RoadDirections* Directions() override { return &m_directions; }
  std::optional<UserCountry> FindCountry() override { return {}; }
  void UpdateProviders(const std::string&) override {}

 private:
  ServiceDirections m_directions;
};
