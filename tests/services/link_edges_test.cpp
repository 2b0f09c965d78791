// Links that leave something out, and places that only ViaMichelin itself can tell.

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "conversion/read_trip.h"
#include "services/links/google_link.h"
#include "services/links/link_rows.h"
#include "services/links/viamichelin_link.h"
#include "services/service_access.h"
#include "services/service_registry.h"
#include "services/service_table.h"
#include "tests/loopback_server.h"
#include "tests/services/link_builder.h"

namespace {

std::string GoogleStops(std::string_view link) { return Said(ParseGoogleLink(link).stops); }

TEST(GoogleLinkEdges, AMissingStartHasNoPositionInTheList) {
  EXPECT_EQ(GoogleStops("http://maps.google.com/maps?daddr=A+to:B"
                        "&geocode=48100000,7200000,48200000,7300000"),
            "A@48.100000,7.200000|B@48.200000,7.300000");
  // An empty one has a place there, which may be empty too.
  EXPECT_EQ(GoogleStops("http://maps.google.com/maps?saddr=&daddr=A&geocode=,,48200000,7300000"),
            "A@48.200000,7.300000");
}

TEST(GoogleLinkEdges, ASavedMapMayHaveStopsInThePath) {
  const MapLink link =
      ParseGoogleLink("https://www.google.com/maps/dir/48.1,7.2/48.2,7.3?msid=2134.0004a");
  EXPECT_TRUE(link.isSavedMap);
  EXPECT_EQ(Said(link.stops), "@48.100000,7.200000|@48.200000,7.300000");
}

// The ids of a link's stops, between bars.
std::string IdsOf(std::string_view link) {
  std::string ids;
  for (const LinkStop& stop : ParseViaMichelinLink(link).stops) ids += stop.placeId + "|";
  return ids;
}

TEST(ViaMichelinLinkEdges, StopsHaveIds) {
  const std::string start = "http://www.viamichelin.fr/web/Itineraires?";
  EXPECT_EQ(IdsOf(start + "departure=A&departureId=1&arrival=D&arrivalId=4&step-1=B&step-1Id=2"
                          "&step-2Id=3&strStartLocid=8&strDestLocid=9"),
            "1|2|3|4|");
  EXPECT_EQ(IdsOf(start + "strStartLocid=8&strDestLocid=9%3D"), "8|9=|");
  EXPECT_EQ(IdsOf(start + "departure=A&arrival=D"), "||");
}

class LookupsOfLinks : public testing::Test {
 protected:
  LookupsOfLinks() { AddLinkFunctions(m_table); }
  ~LookupsOfLinks() override { SetServiceValues({}); }

  static ServiceValues ValuesAt(const LoopbackServer& server) {
    ServiceValues values;
    values.url = server.Url();
    values.key = "KEY";
    values.language = "fra";
    return values;
  }
  void AskViaMichelinAt(const LoopbackServer& server) {
    SetServiceValues({{"viamichelin", ValuesAt(server)}});
    FindWith(provider::kViaMichelin);
  }
  void FindWith(int32_t id) {
    m_context.lookups.makeFinder = [id] { return CServiceRegistry::Instance().CreateGeocoder(id); };
  }
  TripRead Read(const WideString& link) {
    return ReadTrip(m_table, link, m_context, {.silent = true});
  }

  FormatTable m_table = {{u"url", 159, nullptr, nullptr, 0}};
  ConversionContext m_context;
};

std::string PositionsOf(const TripRead& trip) {
  std::string positions;
  for (const auto& list : trip.lists) {
    for (const CGpsPoint& point : list->points)
      positions += point.name + "@" + LinkPosition(point) + "|";
  }
  return positions;
}

std::vector<std::string> FirstLinesOf(const LoopbackServer& server) {
  std::vector<std::string> lines;
  for (const std::string& request : server.Requests())
    lines.push_back(request.substr(0, request.find("\r\n")));
  return lines;
}

constexpr const char* kColmar =
    R"(HTTPResponseLoaded({"locationList":[{"id":"31NDJ=","formattedCityLine":"Colmar",)"
    R"("coords":{"lon":7.36,"lat":48.08}}]}))";
constexpr const char* kNothing = R"(HTTPResponseLoaded({"locationList":[]}))";

TEST_F(LookupsOfLinks, IdsAreAskedOfViaMichelinOnce) {
  const LoopbackServer server([](const std::string&) { return HttpReply(kColmar); });
  AskViaMichelinAt(server);
  const TripRead trip = Read(
      u"http://www.viamichelin.fr/web/Itineraires?departure=68000+Colmar&departureId=31NDJ%3D"
      u"&step-1=48.2,7.3&step-1Id=5&arrivalId=31NDJ%3D");
  EXPECT_EQ(trip.status, kStatusSuccess);
  EXPECT_EQ(PositionsOf(trip),
            "68000 Colmar@48.080000,7.360000|@48.200000,7.300000|@48.080000,7.360000|");
  EXPECT_EQ(FirstLinesOf(server),
            std::vector<std::string>{"GET /apir/1/location.json/31NDJ%3D?charset=UTF-8&ie=UTF-8"
                                     "&callback=HTTPResponseLoaded&lg=fra&authkey=KEY HTTP/1.1"});
  EXPECT_EQ(trip.notes.Count(ConversionNote::kStopLookedUp), 2u);
  EXPECT_EQ(trip.notes.Count(ConversionNote::kStopNotFound), 0u);
}

TEST_F(LookupsOfLinks, IdsThatAreNotKnownLeaveTheAddress) {
  const LoopbackServer server([](const std::string& request) {
    return HttpReply(request.find("/location.json/") != std::string::npos ? kNothing : kColmar);
  });
  AskViaMichelinAt(server);
  const TripRead trip =
      Read(u"http://www.viamichelin.fr/web/Routes?departure=Colmar&departureId=1&arrivalId=2");
  EXPECT_EQ(PositionsOf(trip), "Colmar@48.080000,7.360000|");
  EXPECT_EQ(server.Requests().size(), 3u);
  EXPECT_EQ(trip.notes.Count(ConversionNote::kStopNotFound), 1u);
}

TEST_F(LookupsOfLinks, IdsAreNotAskedOfViaMichelinWhereAnotherFindsPlaces) {
  const LoopbackServer server([](const std::string&) { return HttpReply(kColmar); });
  const LoopbackServer photon([](const std::string&) {
    return HttpReply(R"({"features":[{"geometry":{"coordinates":[7.5,48.5]},"properties":)"
                     R"({"city":"Colmar"}}]})");
  });
  SetServiceValues({{"viamichelin", ValuesAt(server)}, {"photon", ValuesAt(photon)}});
  FindWith(provider::kPhoton);
  const TripRead trip =
      Read(u"http://www.viamichelin.fr/web/Routes?departure=Colmar&departureId=1&arrivalId=2");
  EXPECT_EQ(PositionsOf(trip), "Colmar@48.500000,7.500000|");
  EXPECT_EQ(photon.Requests().size(), 1u);
  EXPECT_TRUE(server.Requests().empty());
  // What has nothing but an id is left out and told.
  EXPECT_EQ(trip.notes.Count(ConversionNote::kStopNotFound), 1u);
}

TEST_F(LookupsOfLinks, GoogleIsAskedInTheLanguageOfTheLink) {
  const LoopbackServer server([](const std::string&) {
    return HttpReply(R"({"results":[{"formatted_address":"C","geometry":{"location":)"
                     R"({"lat":48.08,"lng":7.36}}}],"status":"OK"})");
  });
  SetServiceValues({{"google", ValuesAt(server)}});
  FindWith(provider::kGoogle);
  const WideString link = u"https://www.google.com/maps/dir/Colmar/48.2,7.3/Colmar";
  EXPECT_EQ(PositionsOf(Read(link + u"?hl=de")),
            "Colmar@48.080000,7.360000|@48.200000,7.300000|Colmar@48.080000,7.360000|");
  // Without one, in that of the account; what a link says cannot add to the request.
  EXPECT_EQ(Read(link).status, kStatusSuccess);
  EXPECT_EQ(Read(link + u"?hl=zh-TW%26key=x").status, kStatusSuccess);
  const std::string start = "GET /maps/api/geocode/json?sensor=false&address=Colmar&language=";
  EXPECT_EQ(FirstLinesOf(server),
            (std::vector<std::string>{start + "de&key=KEY HTTP/1.1", start + "fra&key=KEY HTTP/1.1",
                                      start + "zh-TW%26key%3Dx&key=KEY HTTP/1.1"}));
}

TEST_F(LookupsOfLinks, OtherFindersAreAskedInTheirOwnLanguage) {
  const LoopbackServer server([](const std::string&) { return HttpReply(kColmar); });
  AskViaMichelinAt(server);
  EXPECT_EQ(PositionsOf(Read(u"https://www.google.com/maps/dir/Colmar/48.2,7.3?hl=de")),
            "Colmar@48.080000,7.360000|@48.200000,7.300000|");
  ASSERT_EQ(server.Requests().size(), 1u);
  EXPECT_EQ(FirstLinesOf(server)[0],
            "GET /apir/1/geocode1f.json?charset=UTF-8&ie=UTF-8&callback=HTTPResponseLoaded&lg=fra"
            "&authkey=KEY&query=Colmar HTTP/1.1");
}

}  // namespace
