// Directions and requests that run on the HTTP thread while the window's thread calculates,
// cancels, edits and closes.

#include <atomic>
#include <chrono>
#include <random>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "planner/posted_function.h"
#include "planner/service_directions.h"
#include "services/service_registry.h"
#include "tests/loopback_server.h"
#include "tests/planner/played_window.h"

namespace {

constexpr int32_t kLoopbackRouter = 900;

/// Asks a server of the test's; its reply is a distance for each leg.
class LoopbackRouter : public CRouteProvider {
 public:
  explicit LoopbackRouter(std::string url) : m_url(std::move(url)) {}
  ~LoopbackRouter() override { Stop(); }

  int32_t GetId() const override { return kLoopbackRouter; }
  size_t GetMaxPoints() const override { return 10; }
  uint32_t BuildRequest(const CGpsPointList& chunk, uint32_t, const CRouteOptions&,
                        CHttpRequestSpec& spec) override {
    spec.url = m_url + "/route?points=" + std::to_string(chunk.points.size());
    return 0;
  }
  uint32_t ParseResponse(std::string_view text, uint32_t travelMode, const CRouteOptions& options,
                         Legs& legs) override {
    if (text.empty()) return kRouteNothingFound;
    CRouteData& leg = legs.emplace_back();
    leg.travelMode = travelMode;
    leg.options = options.Clone();
    leg.measure.distance = static_cast<uint32_t>(text.size());
    leg.measure.duration = 60;
    leg.measure.flag = 1;
    return 0;
  }

 private:
  std::string m_url;
};

class Threads : public testing::Test {
 protected:
  Threads() {
    settings.routeProvider = kLoopbackRouter;
    CServiceRegistry::Instance().RegisterRouteProvider(
        kLoopbackRouter, [this] { return std::make_unique<LoopbackRouter>(server.Url()); });
  }
  ~Threads() override {
    CServiceRegistry::Instance().RegisterRouteProvider(kLoopbackRouter, nullptr);
  }

  std::string Answer() {
    if (slow) std::this_thread::sleep_for(std::chrono::milliseconds(requests % 4));
    return HttpReply(++requests % 17 == 0 ? "" : std::string(700, 'x'));
  }

  /// Pumps until `done`, or for ten seconds.
  static bool PumpUntil(PostBox& posts, const std::function<bool()>& done) {
    for (int i = 0; i < 5000 && !done(); ++i) {
      if (posts.Pump() == 0) std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    return done();
  }

  const SettingsHome home;
  CSettings settings;
  std::atomic<bool> slow = false;
  std::atomic<uint32_t> requests = 0;
  LoopbackServer server{[this](const std::string&) { return Answer(); }};
};

std::vector<CGpsPoint> TwoPoints() { return {MakePoint(1, 2, "A"), MakePoint(2, 3, "B")}; }

bool Always() { return true; }

TEST_F(Threads, AskWaitsForTheAnswer) {
  PostBox posts;
  ServiceDirections directions(settings, posts);
  const DirectionsAnswer answer = directions.Ask(TwoPoints(), Always);
  EXPECT_EQ(answer.status, 0u);
  EXPECT_EQ(answer.provider, kLoopbackRouter);
  ASSERT_EQ(answer.legs.size(), 1u);
  EXPECT_EQ(answer.legs[0].measure.distance, 700u);
  EXPECT_EQ(directions.Ask({MakePoint(1, 2)}, Always).status, 8u);
}

TEST_F(Threads, AskEndsWhenItIsToldTo) {
  LoopbackServer silent(LoopbackServer::Talk([](LoopbackConnection& connection) {
    connection.ReadRequest();
    connection.WaitForEnd();
  }));
  CServiceRegistry::Instance().RegisterRouteProvider(
      kLoopbackRouter, [&] { return std::make_unique<LoopbackRouter>(silent.Url()); });
  PostBox posts;
  ServiceDirections directions(settings, posts);
  int looks = 0;
  EXPECT_EQ(directions.Ask(TwoPoints(), [&] { return ++looks < 3; }).status, 100u + 12017u);
  EXPECT_EQ(looks, 3);
}

TEST_F(Threads, AskTellsWhyThereIsNoConnection) {
  CServiceRegistry::Instance().RegisterRouteProvider(
      kLoopbackRouter, [] { return std::make_unique<LoopbackRouter>("http://127.0.0.1:1"); });
  PostBox posts;
  ServiceDirections directions(settings, posts);
  EXPECT_EQ(directions.Ask(TwoPoints(), Always).status, 100u + 12029u);
}

TEST_F(Threads, AProviderThatIsNotThereIsNotAsked) {
  PostBox posts;
  ServiceDirections directions(settings, posts);
  settings.routeProvider = 901;
  EXPECT_EQ(directions.Ask(TwoPoints(), Always).status, 4u);
  settings.routeProvider = 2;  // needs a key that nobody has set
  EXPECT_EQ(directions.Ask(TwoPoints(), Always).status, 4u);
  uint32_t status = 99;
  directions.AskLater(TwoPoints(), [&](const DirectionsAnswer& answer) { status = answer.status; });
  EXPECT_EQ(status, 99u);
  posts.Pump();
  EXPECT_EQ(status, 4u);
}

TEST_F(Threads, LaterAnswersComeByTheBox) {
  PostBox posts;
  ServiceDirections directions(settings, posts);
  const auto window = std::this_thread::get_id();
  int answers = 0;
  for (int i = 0; i < 30; ++i) {
    directions.AskLater(TwoPoints(), [&](const DirectionsAnswer&) {
      ++answers;
      EXPECT_EQ(std::this_thread::get_id(), window);
    });
  }
  EXPECT_TRUE(PumpUntil(posts, [&] { return answers == 30; }));
}

TEST_F(Threads, AnswersBehindTheEndAreForgotten) {
  PostBox posts;
  bool answered = false;
  {
    ServiceDirections directions(settings, posts);
    directions.AskLater(TwoPoints(), [&](const DirectionsAnswer&) { answered = true; });
  }
  posts.Pump();
  EXPECT_FALSE(answered);
}

TEST_F(Threads, QueuedRequestsCallBackOnTheWindowsThread) {
  CallLog log;
  PostBox posts;
  HttpRequestQueues queues;
  const auto function = std::make_shared<PlayedFunction>(log);
  queues.EnqueueRequest(0, server.Url("/a"), "", "", MakePostedFunction(posts, function));
  EXPECT_TRUE(PumpUntil(posts, [&] { return !log.empty(); }));
  EXPECT_EQ(log[0], "callback(0, " + std::string(700, 'x') + ")");
  queues.EnqueueRequest(0, "http://127.0.0.1:1/", "", "", MakePostedFunction(posts, function));
  EXPECT_TRUE(PumpUntil(posts, [&] { return log.size() == 2; }));
  EXPECT_EQ(log[1], "callback(12029, )");
}

TEST_F(Threads, AFunctionThatThrowsIsDropped) {
  CallLog log;
  PostBox posts;
  HttpRequestQueues queues;
  queues.EnqueueRequest(0, server.Url("/a"), "", "",
                        MakePostedFunction(posts, std::make_shared<PlayedFunction>(log, true)));
  EXPECT_TRUE(PumpUntil(posts, [&] { return !log.empty(); }));
}

TEST_F(Threads, FunctionsOfAClosedWindowAreNotCalledAndGoWithTheBox) {
  CallLog log;
  const auto function = std::make_shared<PlayedFunction>(log);
  {
    PostBox posts;
    HttpRequestQueues queues;
    queues.EnqueueRequest(0, server.Url("/a"), "", "", MakePostedFunction(posts, function));
    posts.Close();
    for (int i = 0; i < 500 && requests == 0; ++i)
      std::this_thread::sleep_for(std::chrono::milliseconds(2));
    posts.Pump();
  }
  EXPECT_TRUE(log.empty());
  EXPECT_EQ(function.use_count(), 1);
}

TEST(PostBox, WorkThatThrowsHoldsNothingUp) {
  int wakes = 0;
  int done = 0;
  PostBox posts([&] { ++wakes; });
  posts.Post([] { throw std::runtime_error("no"); });
  posts.Post([&] { ++done; });
  posts.Post([&] {
    posts.Post([&] { ++done; });
    posts.Pump();
  });
  EXPECT_EQ(posts.Pump(), 3u);
  EXPECT_EQ(done, 2);
  EXPECT_EQ(wakes, 4);
  posts.Post([&] { posts.Close(); });
  posts.Post([&] { ++done; });
  posts.Pump();
  EXPECT_EQ(done, 2);
}

/// One window's life: a calculation with everything that a user and a page may do meanwhile.
void LiveAndClose(std::mt19937& random, CSettings& settings, const std::string& url) {
  const auto chance = [&](uint32_t of) { return random() % of == 0; };
  CallLog log;
  PostBox posts;
  PlayedPage page(log);
  CPlannerScript script(&page);
  PlayedRows rows;
  PlayedProgress progress(log);
  PlayedStatus status(log);
  PlayedWindow window(log);
  ServiceDirections directions(settings, posts);
  HttpRequestQueues queues;
  CGpsRoute list;
  for (const CGpsPoint& point : NamedPoints(6)) list.points.push_back(point);
  CPointListView view(kListItinerary, PinKind::kItinerary, rows, settings);
  view.list = &list;
  view.planner = &script;
  view.progress = &progress;
  view.statusField = &status;
  view.SetCalculation(&directions, &window);
  view.Rebuild();

  bool closed = false;
  settings.autoCalc = chance(3);
  window.dispatch = [&] {
    posts.Pump();
    if (chance(12)) progress.cancelled = true;
    if (chance(12) && list.Count() > 0) view.RemoveRows(0);
    if (chance(20)) view.ReverseAll();
    if (chance(12)) directions.AskLater(TwoPoints(), [&](const DirectionsAnswer&) { log.clear(); });
    if (chance(6)) {
      queues.EnqueueRequest(0, url, "", "",
                            MakePostedFunction(posts, std::make_shared<PlayedFunction>(log)));
    }
    if (chance(25)) {
      closed = true;
      posts.Close();
      view.Close();
    }
  };
  window.answers.assign(3, chance(2) ? kAnswerOk : kAnswerCancel);
  view.CalculateAll(true);
  posts.Pump();
  if (!closed && chance(2)) view.CalculateFrom(1);
  posts.Close();
  EXPECT_EQ(rows.count, list.Count());
}

TEST_F(Threads, AThousandWindowsCloseAtRandomMoments) {
  slow = true;
  std::mt19937 random(3);
  for (int i = 0; i < 1000 && !HasFailure(); ++i) LiveAndClose(random, settings, server.Url("/q"));
}

}  // namespace
