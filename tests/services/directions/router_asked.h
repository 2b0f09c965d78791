#pragma once

#include <initializer_list>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "services/directions/route_options.h"
#include "services/directions/route_providers.h"
#include "services/service_access.h"
#include "services/service_registry.h"
#include "tests/services/directions/points_of.h"

/// Values of the user's for one test, by the services' names. Afterwards there are none.
class ServiceValuesForTest {
 public:
  explicit ServiceValuesForTest(ServiceValuesByName values) { SetServiceValues(std::move(values)); }
  ~ServiceValuesForTest() { SetServiceValues({}); }
  ServiceValuesForTest(const ServiceValuesForTest&) = delete;
  ServiceValuesForTest& operator=(const ServiceValuesForTest&) = delete;
};

/// A service at http://server, with these values.
inline ServiceValues ValuesOf(std::string key, std::string language, std::string referrer = {},
                              std::string appId = {}) {
  ServiceValues values;
  values.url = "http://server";
  values.key = std::move(key);
  values.language = std::move(language);
  values.referrer = std::move(referrer);
  values.appId = std::move(appId);
  return values;
}

/// Any directions provider of the program.
inline std::unique_ptr<CRouteProvider> RouterOf(int32_t id) {
  if (std::unique_ptr<CRouteProvider> router = MakeRouteProvider(id)) return router;
  CServiceRegistry registry;
  RegisterOwnRouteProviders(registry);
  return registry.CreateRouteProvider(id);
}

/// What a provider asks for a chunk; fails the test when it refuses.
inline CHttpRequestSpec AskedOf(int32_t id, const CGpsPointList& chunk, uint32_t travelMode,
                                const CRouteOptions& options = {}) {
  CHttpRequestSpec spec;
  EXPECT_EQ(RouterOf(id)->BuildRequest(chunk, travelMode, options, spec), 0u);
  return spec;
}

/// Avoids the given kinds of roads.
inline AvoidanceOptions Without(std::initializer_list<bool AvoidanceOptions::*> kinds,
                                uint32_t type = 0) {
  AvoidanceOptions options;
  options.mode = type;
  for (const auto kind : kinds) options.*kind = false;
  return options;
}

/// Options of one route type.
inline CRouteOptions OfType(uint32_t type) {
  CRouteOptions options;
  options.mode = type;
  return options;
}

/// What stands in a text behind `mark`; fails the test without it.
inline std::string Behind(const std::string& text, const std::string& mark) {
  const size_t found = text.find(mark);
  EXPECT_NE(found, std::string::npos) << mark << " in " << text;
  return found == std::string::npos ? std::string() : text.substr(found + mark.size());
}
