#include "services/links/link_reading.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/localized_text.h"
#include "base/text_ids.h"
#include "conversion/read_trip.h"
#include "services/links/link_rows.h"
#include "services/links/link_text.h"
#include "services/service_access.h"
#include "tests/loopback_server.h"
#include "tests/temporary_folder.h"

namespace {

using testing::StartsWith;

// Knows one town, and remembers what it was asked.
class OneTown final : public CGeocoder {
 public:
  explicit OneTown(std::vector<std::string>& asked) : m_asked(asked) {}
  uint32_t Search(const std::string& query) override {
    m_asked.push_back(query);
    m_results.clear();
    if (query != "Colmar") return m_status = kServiceNoResults;
    CGpsNamedPoint colmar;
    colmar.latitude = 48.08;
    colmar.longitude = 7.36;
    colmar.name = "Colmar, Grand Est, France";
    m_results.push_back(colmar);
    return m_status = kServiceSuccess;
  }
  int32_t GetId() const override { return 101; }

 private:
  std::vector<std::string>& m_asked;
};

class LinkReading : public testing::Test {
 protected:
  LinkReading() { AddLinkFunctions(m_table); }
  ~LinkReading() override { SetServiceValues({}); }

  void FindTowns() {
    m_context.lookups.makeFinder = [this] { return std::make_unique<OneTown>(m_asked); };
  }
  TripRead Read(const WideString& path) {
    return ReadTrip(m_table, path, m_context, {.silent = true});
  }
  TripRead ReadShortcut(std::string_view bytes) { return Read(m_folder.Put("trip.url", bytes)); }

  // "name@latitude,longitude" of all points, between bars.
  static std::string Said(const TripRead& trip) {
    std::string said = trip.lists.size() == 1 ? "" : "?";
    for (const auto& list : trip.lists) {
      for (const CGpsPoint& point : list->points) {
        if (!said.empty()) said += '|';
        said += point.name + "@" + LinkPosition(point);
      }
    }
    return said;
  }

  TemporaryFolder m_folder;
  FormatTable m_table = {{u"url", 159, nullptr, nullptr, 0}};
  ConversionContext m_context;
  std::vector<std::string> m_asked;
};

TEST_F(LinkReading, AShortcutIsReadByItsUrl) {
  const TripRead trip = ReadShortcut(
      "[DEFAULT]\r\nBASEURL=https://www.here.com/directions/drive/A:1,2\r\n"
      "[InternetShortcut]\r\nURL=https://www.google.com/maps/dir/48.08078,7.35584/48.46,7.48/\r\n");
  EXPECT_EQ(trip.status, kStatusSuccess);
  EXPECT_EQ(Said(trip), "@48.080780,7.355840|@48.460000,7.480000");
  // The file gives the name.
  EXPECT_EQ(trip.lists[0]->name, "");
  EXPECT_EQ(trip.lists[0]->GetKind(), CGpsRoute().GetKind());
}

TEST_F(LinkReading, EachOfTheFourIsRead) {
  EXPECT_EQ(Said(ReadShortcut("[InternetShortcut]\nurl=http://maps.google.fr/maps?"
                              "saddr=48.1,7.2&daddr=48.2,7.3+to:48.3,7.4\n")),
            "@48.100000,7.200000|@48.200000,7.300000|@48.300000,7.400000");
  EXPECT_EQ(Said(ReadShortcut("[InternetShortcut]\nURL=https://www.here.com/directions/drive/"
                              "Colmar:48.1,7.2/Metz:49.1,6.2\n")),
            "Colmar@48.100000,7.200000|Metz@49.100000,6.200000");
  EXPECT_EQ(Said(ReadShortcut("[InternetShortcut]\nURL=https://www.viamichelin.com/web/Routes?"
                              "departure=48.1,7.2&arrival=49.1,6.2\n")),
            "@48.100000,7.200000|@49.100000,6.200000");
  EXPECT_EQ(Said(ReadShortcut("[InternetShortcut]\nURL=\"https://mydrive.tomtom.com/en_gb/#mode="
                              "routes+routes=%7B%22points%22:%5B%22hw~48.1,7.2%22%5D%7D\"\n")),
            "@48.100000,7.200000");
}

TEST_F(LinkReading, WhatNobodyAcceptsIsAFailedRead) {
  for (const char* bytes :
       {"", "x", "[InternetShortcut]\r\n", "[Other]\r\nURL=https://www.google.com/maps/dir/1,2/3,4",
        "[InternetShortcut]\nURL=https://example.org/maps/dir/1,2/3,4\n",
        "[InternetShortcut]\nURL=https://www.google.com/\n",
        "[InternetShortcut]\nURL=https://www.google.com.evil.example/maps/dir/1,2/3,4\n"}) {
    const TripRead trip = ReadShortcut(bytes);
    EXPECT_EQ(trip.status, kStatusFailure) << bytes;
    EXPECT_TRUE(trip.lists.empty());
    EXPECT_EQ(trip.reason.adviceTextId, 0u);
  }
  EXPECT_EQ(Read(m_folder.WidePathTo("missing.url")).status, kStatusFailure);
}

TEST_F(LinkReading, ALinkIsReadLikeAFile) {
  const TripRead trip = Read(u"https://www.google.com/maps/dir/48.1,7.2/48.2,7.3");
  EXPECT_EQ(trip.status, kStatusSuccess);
  EXPECT_EQ(trip.row, &m_table[0]);
  EXPECT_EQ(Said(trip), "@48.100000,7.200000|@48.200000,7.300000");
  EXPECT_EQ(trip.lists[0]->name, LoadTextUtf8(kTextItinerary));
  EXPECT_EQ(Said(Read(u"HTTP://www.google.com/maps/dir/48.1,7.2")), "@48.100000,7.200000");
  EXPECT_EQ(Read(u"https://").status, kStatusBadFormat);
  EXPECT_EQ(Read(u"https://example.org/").status, kStatusFailure);
}

TEST_F(LinkReading, AShortLinkSaysWhatToDo) {
  for (const char16_t* link :
       {u"https://maps.app.goo.gl/AbCdEf123", u"https://goo.gl/maps/AbCdEf123"}) {
    const TripRead trip = Read(link);
    EXPECT_EQ(trip.status, kStatusFailure);
    EXPECT_EQ(trip.reason.adviceTextId, kTextShortLink);
  }
}

TEST_F(LinkReading, AddressesAreLookedUpOnce) {
  FindTowns();
  const TripRead trip =
      Read(u"https://www.google.com/maps/dir/Colmar/48.2,7.3/Nowhere/Colmar/@48,7,9z");
  EXPECT_EQ(trip.status, kStatusSuccess);
  EXPECT_EQ(Said(trip), "Colmar@48.080000,7.360000|@48.200000,7.300000|Colmar@48.080000,7.360000");
  EXPECT_EQ(m_asked, (std::vector<std::string>{"Colmar", "Nowhere"}));
  EXPECT_EQ(trip.notes.Count(ConversionNote::kStopLookedUp), 3u);
  EXPECT_EQ(trip.notes.Count(ConversionNote::kStopNotFound), 1u);
  EXPECT_EQ(trip.notes.Count(ConversionNote::kPlaceNotAsked), 0u);
}

TEST_F(LinkReading, WithoutAFinderAddressesAreLeftOutAndTold) {
  const TripRead trip = Read(u"https://www.google.com/maps/dir/Colmar/48.2,7.3/Metz");
  EXPECT_EQ(Said(trip), "@48.200000,7.300000");
  EXPECT_EQ(trip.notes.Count(ConversionNote::kPlaceNotAsked), 2u);
  // Where nothing is left, what was left out is told all the same.
  const TripRead none = Read(u"https://www.google.com/maps/dir/Colmar/Metz");
  EXPECT_EQ(none.status, kStatusFailure);
  EXPECT_EQ(none.notes.Count(ConversionNote::kPlaceNotAsked), 2u);
}

// Saved maps.

constexpr const char* kScript =
    "loadVPage({ms_map:{kmlOverlays:{markers:["
    "{latlng:{lat:48.1,lng:7.2},name:\"Colmar\",description:\"old\"},"
    "{latlng:{lat:49.1,lng:6.2},name:\"Metz\"}]}}})";

TEST_F(LinkReading, ASavedMapIsFetchedFromTheSite) {
  const LoopbackServer server([](const std::string&) { return HttpReply(kScript); });
  ServiceValues site;
  site.url = server.Url();
  SetServiceValues({{"google-site", site}});
  m_context.lookups.mayFetch = true;
  const TripRead trip = Read(u"http://maps.google.fr/maps/ms?msid=2134.0004a&hl=fr#x");
  EXPECT_EQ(Said(trip), "Colmar@48.100000,7.200000|Metz@49.100000,6.200000");
  EXPECT_EQ(trip.lists[0]->points.front().comment, "old");
  ASSERT_EQ(server.Requests().size(), 1u);
  EXPECT_THAT(server.Requests()[0],
              StartsWith("GET /maps/ms?msid=2134.0004a&hl=fr&output=js HTTP/1.1\r\n"));
}

// An address inside a link has no say in who is asked.
TEST_F(LinkReading, ASavedMapIsNotFetchedFromAnAddressInsideTheLink) {
  const LoopbackServer server([](const std::string&) { return HttpReply(kScript); });
  ServiceValues site;
  site.url = server.Url();
  SetServiceValues({{"google-site", site}});
  m_context.lookups.mayFetch = true;
  EXPECT_EQ(
      Said(Read(u"https://maps.google.fr/maps/ms?msid=2134&q=http://a.example/http://b.example")),
      "Colmar@48.100000,7.200000|Metz@49.100000,6.200000");
  ASSERT_EQ(server.Requests().size(), 1u);
  EXPECT_THAT(server.Requests()[0],
              StartsWith("GET /maps/ms?msid=2134&q=http%3A//a.example/http%3A//b.example"
                         "&output=js HTTP/1.1\r\n"));
}

TEST_F(LinkReading, ASavedMapThatCannotBeHadLeavesTheOtherStops) {
  const LoopbackServer server([](const std::string&) { return std::string(); });
  ServiceValues site;
  site.url = server.Url();
  SetServiceValues({{"google-site", site}});
  const WideString link = u"http://maps.google.com/maps?saddr=48.1,7.2&daddr=48.2,7.3&msid=1";
  m_context.lookups.mayFetch = true;
  const TripRead broken = Read(link);
  EXPECT_EQ(Said(broken), "@48.100000,7.200000|@48.200000,7.300000");
  EXPECT_EQ(broken.notes.Count(ConversionNote::kPageNotFetched), 1u);
  const size_t asked = server.Requests().size();
  m_context.lookups.mayFetch = false;
  const TripRead unasked = Read(link);
  EXPECT_EQ(Said(unasked), "@48.100000,7.200000|@48.200000,7.300000");
  EXPECT_EQ(unasked.notes.Count(ConversionNote::kPageNotFetched), 1u);
  EXPECT_EQ(server.Requests().size(), asked);
}

// Links that somebody types.

TEST_F(LinkReading, TypedLinksAreTriedInTheirOrder) {
  const std::vector<LinkReader> readers = MapLinkReaders();
  ASSERT_EQ(readers.size(), 4u);
  const WideString links[] = {u"www.google.com/maps/dir/48.1,7.2/48.2,7.3",
                              u"https://www.here.com/directions/drive/A:48.1,7.2",
                              u"https://www.viamichelin.fr/web/Itineraires?departure=48.1,7.2",
                              u"https://mydrive.tomtom.com/en_gb/#+routes={\"points\":"
                              u"[\"hw~48.1,7.2\"]}"};
  for (size_t i = 0; i < readers.size(); ++i) {
    for (size_t j = 0; j < readers.size(); ++j)
      EXPECT_EQ(readers[i].accepts(links[j]), i == j) << i << " " << j;
    const TripRead trip = ReadTripWith(readers[i].row, links[i], m_context, false);
    EXPECT_EQ(trip.status, kStatusSuccess);
    EXPECT_THAT(Said(trip), testing::HasSubstr("@48.100000,7.200000"));
    EXPECT_EQ(trip.lists[0]->name, LoadTextUtf8(kTextItinerary));
  }
}

TEST_F(LinkReading, OtherTextIsNoLink) {
  for (const char16_t* text :
       {u"", u"Alsace", u"www.google.com", u"google.com: my trip",
        u"https://www.google.com/search?hl=fr", u"here.com", u"https://maps.app.goo.gl/x"}) {
    for (const LinkReader& reader : MapLinkReaders()) EXPECT_FALSE(reader.accepts(text));
  }
}

}  // namespace
