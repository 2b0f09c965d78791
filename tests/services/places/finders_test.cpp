#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "services/places/elevation.h"
#include "services/places/panorama.h"
#include "services/places/place_search.h"
#include "services/places/reverse_geocoder.h"
#include "services/service_access.h"
#include "services/service_registry.h"
#include "tests/loopback_server.h"
#include "tests/services/places/replies.h"

namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

std::string_view ReplyOf(std::string_view family) {
  for (const SampleReply& sample : kSampleReplies) {
    if (sample.family == family) return sample.text;
  }
  return {};
}

CGpsCoordinate Colmar() {
  CGpsCoordinate position;
  position.latitude = 48.0777;
  position.longitude = 7.358;
  return position;
}

// Lets a service ask this server, and gives its account the same values everywhere.
void PointAt(const LoopbackServer& server, std::initializer_list<const char*> names) {
  ServiceValuesByName all;
  for (const char* const name : names) {
    ServiceValues values;
    values.url = server.Url();
    values.key = "KEY";
    values.appId = "APP";
    values.language = "fr";
    values.referrer = "https://page.example/";
    all[name] = values;
    all[std::string(ServiceNamed(name).account)].key = "KEY";
    all[std::string(ServiceNamed(name).account)].appId = "APP";
  }
  SetServiceValues(all);
}

std::string FirstLine(const std::string& request) { return request.substr(0, request.find('\r')); }

class Finders : public testing::Test {
 public:
  ~Finders() override { SetServiceValues({}); }
};

// A provider that can geocode: the service that is asked, and what goes out and comes back.
struct GeocoderCase {
  int32_t id;
  const char* service;
  const char* request;  // for "rue des Clefs"
  const char* family;
  const char* reverseService;
  const char* reverseRequest;  // for Colmar
  const char* reverseFamily;
};

const GeocoderCase kGeocoderCases[] = {
    {2, "google",
     "GET /maps/api/geocode/json?sensor=false&address=rue%20des%20Clefs&language=fr&key=KEY "
     "HTTP/1.1",
     "google", "google",
     "GET /maps/api/geocode/json?sensor=false&latlng=48.077700,7.358000&language=fr&key=KEY "
     "HTTP/1.1",
     "google"},
    {3, "bing", "GET /REST/v1/Locations?o=json&query=rue%20des%20Clefs&key=KEY&c=fr HTTP/1.1",
     "bing", "bing", "GET /REST/v1/Locations/48.077700,7.358000?o=json&key=KEY&c=fr HTTP/1.1",
     "bing"},
    {5, "tomtom-search", "GET /search/2/geocode/rue%20des%20Clefs.json?key=KEY HTTP/1.1", "tomtom",
     "tomtom-search", "GET /search/2/reverseGeocode/48.077700,7.358000.json?key=KEY HTTP/1.1",
     "tomtom addresses"},
    {7, "tomtom-search", "GET /search/2/geocode/rue%20des%20Clefs.json?key=KEY HTTP/1.1", "tomtom",
     "tomtom-search", "GET /search/2/reverseGeocode/48.077700,7.358000.json?key=KEY HTTP/1.1",
     "tomtom addresses"},
    {9, "viamichelin",
     "GET /apir/1/geocode1f.json?charset=UTF-8&ie=UTF-8&callback=HTTPResponseLoaded&lg=fr"
     "&authkey=KEY&query=rue%20des%20Clefs HTTP/1.1",
     "viamichelin", "viamichelin",
     "GET /apir/1/rgeocode.json?charset=UTF-8&ie=UTF-8&callback=HTTPResponseLoaded&authkey=KEY"
     "&center=7.358000:48.077700 HTTP/1.1",
     "viamichelin"},
    {17, "waze-us-search", "GET /mozi?lon=0&lat=0&q=rue%20des%20Clefs HTTP/1.1", "waze",
     "waze-us-reverse", "GET /app/getStreet?radius=0.0005&lat=48.077700&lon=7.358000 HTTP/1.1",
     "waze street"},
    {18, "waze-world-search", "GET /mozi?lon=0&lat=0&q=rue%20des%20Clefs HTTP/1.1", "waze",
     "waze-world-reverse", "GET /app/getStreet?radius=0.0005&lat=48.077700&lon=7.358000 HTTP/1.1",
     "waze street"},
    {19, "here-geocoder",
     "GET /6.2/geocode.json?gen=4&searchtext=rue%20des%20Clefs&app_id=APP&app_code=KEY HTTP/1.1",
     "here", "here-reverse",
     "GET /6.2/reversegeocode.json?gen=4&mode=retrieveAddresses&prox=48.077700,7.358000&app_id=APP"
     "&app_code=KEY HTTP/1.1",
     "here"},
    {102, "nominatim",
     "GET /search?q=rue%20des%20Clefs&format=jsonv2&limit=10&accept-language=fr HTTP/1.1",
     "nominatim", "nominatim",
     "GET /reverse?lat=48.077700&lon=7.358000&format=jsonv2&accept-language=fr HTTP/1.1",
     "nominatim place"},
    {106, "here-v8-search", "GET /v1/geocode?q=rue%20des%20Clefs&limit=10&apiKey=KEY HTTP/1.1",
     "here v8", "here-v8-search", "GET /v1/revgeocode?at=48.077700,7.358000&apiKey=KEY HTTP/1.1",
     "here v8"},
    {108, "geoplateforme", "GET /geocodage/search?q=rue%20des%20Clefs&limit=10 HTTP/1.1",
     "geoplateforme", "geoplateforme",
     "GET /geocodage/reverse?lon=7.358000&lat=48.077700&limit=1 HTTP/1.1", "geoplateforme"},
    {109, "photon", "GET /api/?q=rue%20des%20Clefs&limit=10&lang=fr HTTP/1.1", "photon", "photon",
     "GET /reverse?lon=7.358000&lat=48.077700&lang=fr HTTP/1.1", "photon"},
};

class EveryGeocoder : public Finders, public testing::WithParamInterface<GeocoderCase> {};

INSTANTIATE_TEST_SUITE_P(Providers, EveryGeocoder, testing::ValuesIn(kGeocoderCases),
                         [](const auto& row) { return "Id" + std::to_string(row.param.id); });

TEST_P(EveryGeocoder, AsksItsServiceAndReadsTheAnswer) {
  const std::string body(ReplyOf(GetParam().family));
  const LoopbackServer server([&body](const std::string&) { return HttpReply(body); });
  PointAt(server, {GetParam().service});
  const auto geocoder = CServiceRegistry::Instance().CreateGeocoder(GetParam().id);
  ASSERT_NE(geocoder, nullptr);
  EXPECT_EQ(geocoder->GetId(), GetParam().id);
  EXPECT_EQ(geocoder->GetStatus(), 4u);

  EXPECT_EQ(geocoder->Search("rue des Clefs"), 0u);
  EXPECT_EQ(geocoder->GetStatus(), 0u);
  ASSERT_FALSE(geocoder->GetResults().empty());
  EXPECT_EQ(geocoder->GetResults()[0].latitude, 48.08);
  ASSERT_EQ(server.Requests().size(), 1u);
  EXPECT_EQ(FirstLine(server.Requests()[0]), GetParam().request);
  EXPECT_THAT(server.Requests()[0],
              HasSubstr(GetParam().id >= 100 ? "\r\nUser-Agent: Corvane Map 1.21\r\n"
                                             : "\r\nUser-Agent: Mozilla/5.0 (compatible; MSIE 9.0; "
                                               "Win32)\r\n"));
}

TEST_P(EveryGeocoder, ReverseAsksItsServiceAndReadsTheAnswer) {
  std::string body(ReplyOf(GetParam().reverseFamily));
  if (body.empty()) body = R"({"lat":"48.08","lon":"7.36","display_name":"Colmar"})";
  const LoopbackServer server([&body](const std::string&) { return HttpReply(body); });
  PointAt(server, {GetParam().reverseService});
  const auto geocoder = CServiceRegistry::Instance().CreateReverseGeocoder(GetParam().id);
  ASSERT_NE(geocoder, nullptr);
  EXPECT_EQ(geocoder->GetId(), GetParam().id);
  EXPECT_EQ(geocoder->GetStatus(), 4u);

  EXPECT_EQ(geocoder->Search(Colmar()), 0u);
  ASSERT_FALSE(geocoder->GetResults().empty());
  EXPECT_FALSE(geocoder->GetResults()[0].name.empty());
  ASSERT_EQ(server.Requests().size(), 1u);
  EXPECT_EQ(FirstLine(server.Requests()[0]), GetParam().reverseRequest);
}

TEST_P(EveryGeocoder, TellsOfATransportThatFails) {
  {
    const LoopbackServer server([](const std::string&) {
      return std::string("HTTP/1.1 200 OK\r\nContent-Length: 50\r\n\r\n{");
    });
    PointAt(server, {GetParam().service, GetParam().reverseService});
    const auto geocoder = CServiceRegistry::Instance().CreateGeocoder(GetParam().id);
    EXPECT_EQ(geocoder->Search("x"), 100u + 12030);
    EXPECT_TRUE(geocoder->GetResults().empty());
  }
  // The server has gone; its port is closed.
  const auto reverse = CServiceRegistry::Instance().CreateReverseGeocoder(GetParam().id);
  EXPECT_EQ(reverse->Search(Colmar()), 100u + 12029);
  EXPECT_EQ(reverse->GetStatus(), 100u + 12029);
  EXPECT_TRUE(reverse->GetResults().empty());
}

TEST_P(EveryGeocoder, ForgetsTheResultsOfTheSearchBefore) {
  std::atomic<bool> first = true;
  const std::string body(ReplyOf(GetParam().family));
  const LoopbackServer server([&](const std::string&) {
    return first.exchange(false) ? HttpReply(body) : HttpReply("down", "500 Internal Server Error");
  });
  PointAt(server, {GetParam().service});
  const auto geocoder = CServiceRegistry::Instance().CreateGeocoder(GetParam().id);
  EXPECT_EQ(geocoder->Search("a"), 0u);
  EXPECT_EQ(geocoder->Search("b"), 4u);
  EXPECT_TRUE(geocoder->GetResults().empty());
}

TEST_F(Finders, AreThereForTheNumbersOfTheTable) {
  for (int32_t id = -1; id < 120; ++id) {
    const Service* const service = FindService(id);
    if (id == 101) continue;  // it comes with the data of this machine
    const uint32_t can = service ? service->abilities : 0;
    EXPECT_EQ(CServiceRegistry::Instance().CreateGeocoder(id) != nullptr, (can & kCanGeocode) != 0)
        << id;
    EXPECT_EQ(CServiceRegistry::Instance().CreateReverseGeocoder(id) != nullptr,
              (can & kCanReverse) != 0)
        << id;
    EXPECT_EQ(CreatePlaceSearch(id) != nullptr, (can & kCanSearch) != 0) << id;
  }
}

class OnePlace final : public CGeocoder {
 public:
  uint32_t Search(const std::string&) override { return m_status = 0; }
  int32_t GetId() const override { return 2; }
};

TEST_F(Finders, AreAskedOfTheTableOfMakersFirst) {
  CServiceRegistry& registry = CServiceRegistry::Instance();
  registry.RegisterGeocoder(2, [] { return std::make_unique<OnePlace>(); });
  registry.RegisterGeocoder(117, [] { return std::make_unique<OnePlace>(); });
  EXPECT_NE(dynamic_cast<OnePlace*>(registry.CreateGeocoder(2).get()), nullptr);
  EXPECT_NE(registry.CreateGeocoder(117), nullptr);
  registry.RegisterGeocoder(2, nullptr);
  registry.RegisterGeocoder(117, nullptr);
  EXPECT_EQ(dynamic_cast<OnePlace*>(registry.CreateGeocoder(2).get()), nullptr);
  EXPECT_NE(registry.CreateGeocoder(2), nullptr);
  EXPECT_EQ(registry.CreateGeocoder(117), nullptr);
}

TEST_F(Finders, SendTheReferrerOfTheAccount) {
  const LoopbackServer server([](const std::string&) { return HttpReply("{}"); });
  PointAt(server, {"bing"});
  CServiceRegistry::Instance().CreateGeocoder(3)->Search("x");
  ASSERT_EQ(server.Requests().size(), 1u);
  EXPECT_THAT(server.Requests()[0], HasSubstr("\r\nReferer: https://page.example/\r\n"));
}

TEST_F(Finders, AskUnderThePathOfTheAddress) {
  const LoopbackServer server([](const std::string&) { return HttpReply("[]"); });
  ServiceValues values;
  values.url = server.Url("/row-WAS");
  SetServiceValues({{"waze-world-search", values}});
  EXPECT_EQ(CServiceRegistry::Instance().CreateGeocoder(18)->Search("x"), 1u);
  ASSERT_EQ(server.Requests().size(), 1u);
  EXPECT_EQ(FirstLine(server.Requests()[0]), "GET /row-WAS/mozi?lon=0&lat=0&q=x HTTP/1.1");
}

TEST_F(Finders, TakeNoMoreThan64Megabytes) {
  const LoopbackServer server(LoopbackServer::Talk([](LoopbackConnection& connection) {
    connection.ReadRequest();
    connection.Send("HTTP/1.1 200 OK\r\n\r\n[");
    const std::string blanks(1 << 20, ' ');
    for (int i = 0; i < 70 && connection.Send(blanks); ++i) {
    }
  }));
  PointAt(server, {"photon"});
  EXPECT_EQ(CServiceRegistry::Instance().CreateGeocoder(109)->Search("x"), 100u + 122);
}

TEST_F(Finders, FindThePanoramaWithoutAKey) {
  const std::string body(ReplyOf("panorama"));
  const LoopbackServer server([&body](const std::string&) { return HttpReply(body); });
  PointAt(server, {"google-panorama"});
  PlaceList places;
  EXPECT_EQ(GetStreetViewLocation(Colmar(), places), 0u);
  ASSERT_EQ(places.size(), 1u);
  EXPECT_EQ(places[0].name, "Rue des Clefs");
  EXPECT_EQ(FirstLine(server.Requests().at(0)),
            "GET /cbk?output=json&oe=utf-8&cb_client=apiv3&ll=48.077700,7.358000 HTTP/1.1");
}

TEST_F(Finders, FindTheElevation) {
  const LoopbackServer server([](const std::string&) {
    return HttpReply(
        R"({"results":[{"elevation":-3.25,"location":{"lat":48.08,"lng":7.36}}],"status":"OK"})");
  });
  PointAt(server, {"google"});
  CGpsPoint point;
  EXPECT_EQ(GetElevation(Colmar(), point), 0u);
  EXPECT_EQ(point.altitude, -3.25);
  EXPECT_EQ(FirstLine(server.Requests().at(0)),
            "GET /maps/api/elevation/json?sensor=false&locations=48.077700,7.358000 HTTP/1.1");
}

// A search: the service, and what goes out for "pizza" within 2000 metres of Colmar.
struct SearchCase {
  int32_t id;
  const char* service;
  const char* request;
  const char* requestOfDefault;
  const char* family;
};

const SearchCase kSearchCases[] = {
    {2, "google",
     "GET /maps/api/place/textsearch/json?query=pizza&location=48.077700,7.358000&radius=2000"
     "&key=KEY&language=fr HTTP/1.1",
     "GET /maps/api/place/textsearch/json?query=pizza&location=48.077700,7.358000&radius=30000"
     "&key=KEY&language=fr HTTP/1.1",
     "google"},
    {19, "here-places",
     "GET /places/v1/discover/search?refinements=false&Accept=application/json&q=pizza&app_id=APP"
     "&app_code=KEY&at=48.077700,7.358000 HTTP/1.1",
     "GET /places/v1/discover/search?refinements=false&Accept=application/json&q=pizza&app_id=APP"
     "&app_code=KEY&at=48.077700,7.358000 HTTP/1.1",
     "here search"},
    {106, "here-v8-search",
     "GET /v1/discover?q=pizza&in=circle:48.077700,7.358000%3Br=2000&limit=20&apiKey=KEY HTTP/1.1",
     "GET /v1/discover?q=pizza&in=circle:48.077700,7.358000%3Br=30000&limit=20&apiKey=KEY HTTP/1.1",
     "here v8"},
};

class EverySearch : public Finders, public testing::WithParamInterface<SearchCase> {};

INSTANTIATE_TEST_SUITE_P(Providers, EverySearch, testing::ValuesIn(kSearchCases),
                         [](const auto& row) { return "Id" + std::to_string(row.param.id); });

// What a completion was told, for other threads to wait for.
class Told {
 public:
  CPlaceSearch::Completion Completion() {
    return [this](uint32_t status, const PlaceList& places) {
      const std::lock_guard lock(m_mutex);
      m_statuses.push_back(status);
      m_places = places.size();
      m_changed.notify_all();
    };
  }
  std::vector<uint32_t> Statuses(size_t count) {
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [&] { return m_statuses.size() >= count; });
    return m_statuses;
  }
  size_t Places() {
    const std::lock_guard lock(m_mutex);
    return m_places;
  }

 private:
  std::mutex m_mutex;
  std::condition_variable m_changed;
  std::vector<uint32_t> m_statuses;
  size_t m_places = 0;
};

TEST_P(EverySearch, AsksAndTellsWhatItHasFound) {
  const std::string body(ReplyOf(GetParam().family));
  const LoopbackServer server([&body](const std::string&) { return HttpReply(body); });
  PointAt(server, {GetParam().service});
  Told told;
  const auto search = CreatePlaceSearch(GetParam().id);
  ASSERT_NE(search, nullptr);
  EXPECT_EQ(search->GetId(), GetParam().id);
  EXPECT_EQ(search->Wait(0), 4u);
  search->SetCompletion(told.Completion());

  search->Search("pizza", Colmar(), 2000);
  EXPECT_EQ(search->Wait(-1), 0u);
  EXPECT_THAT(told.Statuses(1), ElementsAre(0u));
  EXPECT_EQ(told.Places(), search->GetResults().size());
  ASSERT_FALSE(search->GetResults().empty());
  EXPECT_EQ(search->GetResults()[0].latitude, 48.08);

  search->SearchNear("pizza", Colmar());
  EXPECT_EQ(search->Wait(-1), 0u);
  EXPECT_THAT(told.Statuses(2), ElementsAre(0u, 0u));
  ASSERT_EQ(server.Requests().size(), 2u);
  EXPECT_EQ(FirstLine(server.Requests()[0]), GetParam().request);
  EXPECT_EQ(FirstLine(server.Requests()[1]), GetParam().requestOfDefault);
}

TEST_P(EverySearch, IsCancelled) {
  const LoopbackServer server(LoopbackServer::Talk([](LoopbackConnection& connection) {
    connection.ReadRequest();
    connection.WaitForEnd();
  }));
  PointAt(server, {GetParam().service});
  Told told;
  const auto search = CreatePlaceSearch(GetParam().id);
  search->SetCompletion(told.Completion());
  search->Search("pizza", Colmar(), 2000);
  EXPECT_EQ(search->Wait(20), 9u);
  search->Cancel();
  EXPECT_EQ(search->Wait(-1), 100u + 12017);
  EXPECT_THAT(told.Statuses(1), ElementsAre(100u + 12017));
  EXPECT_TRUE(search->GetResults().empty());
}

TEST_P(EverySearch, GivesWayToTheNext) {
  std::atomic<int> count = 0;
  const std::string body(ReplyOf(GetParam().family));
  const LoopbackServer server(LoopbackServer::Talk([&](LoopbackConnection& connection) {
    connection.ReadRequest();
    if (count++ == 0) return connection.WaitForEnd();
    connection.Send(HttpReply(body));
  }));
  PointAt(server, {GetParam().service});
  Told told;
  const auto search = CreatePlaceSearch(GetParam().id);
  search->SetCompletion(told.Completion());
  search->Search("first", Colmar(), 2000);
  while (count == 0) std::this_thread::yield();
  search->Search("second", Colmar(), 2000);
  EXPECT_EQ(search->Wait(-1), 0u);
  EXPECT_THAT(told.Statuses(2), ElementsAre(100u + 12017, 0u));
}

TEST_P(EverySearch, TellsOfATransportThatFails) {
  uint16_t port = 0;
  {
    const LoopbackServer server([](const std::string&) { return std::string(); });
    port = server.Port();
    PointAt(server, {GetParam().service});
  }
  ASSERT_NE(port, 0);
  Told told;
  const auto search = CreatePlaceSearch(GetParam().id);
  search->SetCompletion(told.Completion());
  search->Search("pizza", Colmar(), 2000);
  EXPECT_EQ(search->Wait(-1), 100u + 12029);
  EXPECT_THAT(told.Statuses(1), ElementsAre(100u + 12029));
}

TEST_P(EverySearch, MayBeDestroyedWhileItRuns) {
  const LoopbackServer server(LoopbackServer::Talk([](LoopbackConnection& connection) {
    connection.ReadRequest();
    connection.WaitForEnd();
  }));
  PointAt(server, {GetParam().service});
  Told told;
  {
    const auto search = CreatePlaceSearch(GetParam().id);
    search->SetCompletion(told.Completion());
    search->Search("pizza", Colmar(), 2000);
  }
  EXPECT_THAT(told.Statuses(1), ElementsAre(100u + 12017));
}

}  // namespace
