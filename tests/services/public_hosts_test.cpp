// Hosts that others run for everybody.

#include <chrono>

#include <gtest/gtest.h>

#include "services/request_log.h"

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

// Whatever a user has typed of its address.
TEST(PublicHosts, NominatimIsHeldHoweverItIsAddressed) {
  const Service& nominatim = ServiceNamed("nominatim");
  const steady_clock::time_point start = steady_clock::now();
  BeforeRequest(nominatim, "http://Nominatim.openstreetmap.org/search?q=a");
  BeforeRequest(nominatim, "https://nominatim.openstreetmap.org:443/search?q=b");
  EXPECT_GE(steady_clock::now() - start, milliseconds(1000));
}

// If one of them were held, its third request would wait for two seconds.
TEST(PublicHosts, NobodyElseIsHeld) {
  const steady_clock::time_point start = steady_clock::now();
  for (int i = 0; i < 3; ++i) {
    BeforeRequest(ServiceNamed("nominatim"), "https://nominatim.example/search?q=a");
    BeforeRequest(ServiceNamed("nominatim"), "https://nominatim.openstreetmap.org.example/");
    BeforeRequest(ServiceNamed("osrm"), "http://127.0.0.1:5000/router.project-osrm.org/");
    BeforeRequest(ServiceNamed("google"), "https://maps.googleapis.com/");
  }
  EXPECT_LT(steady_clock::now() - start, milliseconds(2000));
}

}  // namespace
