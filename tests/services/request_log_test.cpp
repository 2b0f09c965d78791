#include "services/request_log.h"

#include <chrono>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "services/request_pace.h"

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

TEST(RequestPace, HoldsRequestsApart) {
  RequestPace pace(milliseconds(40));
  const steady_clock::time_point start = steady_clock::now();
  pace.Await();
  pace.Await();
  pace.Await();
  EXPECT_GE(steady_clock::now() - start, milliseconds(80));
}

TEST(RequestPace, HoldsRequestsOfManyThreadsApart) {
  RequestPace pace(milliseconds(30));
  const steady_clock::time_point start = steady_clock::now();
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) threads.emplace_back([&pace] { pace.Await(); });
  for (std::thread& thread : threads) thread.join();
  EXPECT_GE(steady_clock::now() - start, milliseconds(90));
}

uint64_t CountOf(const Service& service) {
  for (const auto& [asked, count] : RequestsMade()) {
    if (asked == &service) return count;
  }
  return 0;
}

TEST(RequestLog, CountsTheRequestsOfEachService) {
  const Service& google = ServiceNamed("google");
  const Service& bing = ServiceNamed("bing");
  const uint64_t ofGoogle = CountOf(google);
  const uint64_t ofBing = CountOf(bing);
  BeforeRequest(google, "http://127.0.0.1:1/");
  BeforeRequest(bing, "http://127.0.0.1:1/");
  BeforeRequest(google, "http://127.0.0.1:1/");
  EXPECT_EQ(CountOf(google), ofGoogle + 2);
  EXPECT_EQ(CountOf(bing), ofBing + 1);
}

TEST(RequestLog, HoldsRequestsToPublicHostsASecondApart) {
  const Service& osrm = ServiceNamed("osrm");
  const steady_clock::time_point start = steady_clock::now();
  BeforeRequest(osrm, "https://router.project-osrm.org/route/v1/driving/1,2;3,4?overview=full");
  BeforeRequest(osrm, "https://router.project-osrm.org/route/v1/driving/1,2;3,4?overview=full");
  EXPECT_GE(steady_clock::now() - start, milliseconds(1000));
}

TEST(RequestPace, CountsFromATimeThatIsTold) {
  const steady_clock::time_point start = steady_clock::now();
  RequestPace pace(milliseconds(40), start);
  pace.Await();
  EXPECT_GE(steady_clock::now() - start, milliseconds(40));
  pace.Await();
  EXPECT_GE(steady_clock::now() - start, milliseconds(80));
}

}  // namespace
