// The writer of the format row for TomTom HOME: what it offers, and what it calls.

#include <algorithm>
#include <chrono>

#include <gtest/gtest.h>

#include "base/status.h"
#include "conversion/format_search.h"
#include "conversion/write_trip.h"
#include "formats/format_rows.h"
#include "net/http_client.h"
#include "planner/tomtom_home.h"
#include "planner/whole_format_table.h"
#include "tests/list_builder.h"
#include "tests/planner/desktop_home.h"
#include "tests/planner/port_lock.h"

namespace {

const CItineraryFormat& TomTomRow(const FormatTable& table) {
  return *std::find_if(table.begin(), table.end(), [](const CItineraryFormat& row) {
    return std::u16string_view(row.extension) == u"tth";
  });
}

class TomTomHandOff : public testing::Test {
 protected:
  static std::string Fetch(const std::string& address) {
    return HttpGet(WideString(address.begin(), address.end()));
  }

  const PortLock m_port;
  const DesktopHome m_desktop;
  const CGpsRoute m_list = MakeList("Trip", MakePoint(48.5, 7.25, "A"), MakePoint(49, 8, "B"));
};

constexpr char kServer[] = "http://127.0.0.1:8099/";

TEST_F(TomTomHandOff, OffersTheBundleAndCallsTheProgram) {
  ASSERT_EQ(WriteTomTomHome(u"/trips/My trip.itn", m_list, 0, true), 0u);
  EXPECT_EQ(m_desktop.Opened(), "tomtomhome:contentitem:http://127.0.0.1:8099/My%20trip.xml");
  EXPECT_FALSE(WaitUntilTomTomHasFetched(std::chrono::milliseconds(10)));
  const std::string description = Fetch(kServer + std::string("My%20trip.xml"));
  EXPECT_NE(description.find("<url location=\"main\">http://127.0.0.1:8099/My%20trip.zip</url>"),
            std::string::npos);
  const std::string archive = Fetch(kServer + std::string("My%20trip.zip"));
  EXPECT_TRUE(archive.starts_with("PK\x03\x04"));
  EXPECT_NE(archive.find("ITN/My trip.itn"), std::string::npos);
  EXPECT_TRUE(WaitUntilTomTomHasFetched(std::chrono::seconds(10)));
  // Each is there once.
  EXPECT_EQ(Fetch(kServer + std::string("My%20trip.xml")).find("<item"), std::string::npos);
}

TEST_F(TomTomHandOff, ASecondOneOfTheNameReplacesWhatWaits) {
  ASSERT_EQ(WriteTomTomHome(u"Trip.itn", m_list, 0, true), 0u);
  m_desktop.Opened();
  const auto other = MakeList("Another", MakePoint(1, 2, "C"), MakePoint(3, 4, "D"));
  ASSERT_EQ(WriteTomTomHome(u"Trip.itn", other, 0, true), 0u);
  const std::string description = Fetch(kServer + std::string("Trip.xml"));
  EXPECT_NE(description.find(">Another<"), std::string::npos);
  EXPECT_EQ(description.find(">Trip<"), std::string::npos);
  Fetch(kServer + std::string("Trip.zip"));
  EXPECT_TRUE(WaitUntilTomTomHasFetched(std::chrono::seconds(10)));
}

TEST_F(TomTomHandOff, ABareNameIsThatOfAnItinerary) {
  ASSERT_EQ(WriteTomTomHome(u"", m_list, 0, true), 0u);
  EXPECT_EQ(m_desktop.Opened(), "tomtomhome:contentitem:http://127.0.0.1:8099/Itinerary.xml");
  EXPECT_NE(Fetch(kServer + std::string("Itinerary.xml")).find("<item"), std::string::npos);
  EXPECT_FALSE(Fetch(kServer + std::string("Itinerary.zip")).empty());
}

TEST_F(TomTomHandOff, PartsOfOnePointAreRefused) {
  EXPECT_EQ(WriteTomTomHome(u"Trip.itn", m_list, 1, true), kStatusInvalidParameter);
  EXPECT_FALSE(m_desktop.HasOpened());
}

TEST_F(TomTomHandOff, TheRowIsWrittenWithoutAFile) {
  const FormatTable table = WholeFormatTable();
  ConversionContext context;
  const std::string target = m_desktop.Folder().PathTo("Trip.tth");
  const TripWrite trip = WriteTrip(
      table, TomTomRow(table), WideString(target.begin(), target.end()), m_list, {}, {}, context);
  EXPECT_EQ(trip.status, 0u);
  EXPECT_FALSE(m_desktop.Folder().Has("Trip.tth"));
  EXPECT_EQ(m_desktop.Opened(), "tomtomhome:contentitem:http://127.0.0.1:8099/Trip.xml");
  Fetch(kServer + std::string("Trip.xml"));
  Fetch(kServer + std::string("Trip.zip"));
}

TEST_F(TomTomHandOff, ADesktopThatOpensNothingIsAReason) {
  m_desktop.RemoveProgram("xdg-open");
  const FormatTable table = WholeFormatTable();
  ConversionContext context;
  const TripWrite trip = WriteTrip(table, TomTomRow(table), u"Trip", m_list, {}, {}, context);
  EXPECT_EQ(trip.status, kStatusFileNotFound);
  EXPECT_EQ(trip.reason.platformError, kStatusFileNotFound);
  // Nobody will come for what was offered, and the next one is not to be waited for with it.
  EXPECT_TRUE(WaitUntilTomTomHasFetched(std::chrono::milliseconds(0)));
  EXPECT_EQ(Fetch(kServer + std::string("Trip.xml")).find("<item"), std::string::npos);
}

TEST_F(TomTomHandOff, TheRowIsListedWhenTheProgramIsThere) {
  FormatTable table = WholeFormatTable();
  EXPECT_EQ(table.size(), DefaultFormatTable().size());
  EXPECT_TRUE(IsPseudoFormat(TomTomRow(table)));
  EXPECT_NE(TomTomRow(table).write, nullptr);
  ListCompanionRows(table);
  EXPECT_EQ(TomTomRow(table).textId, 0u);
  m_desktop.Install("home", "home %u", "x-scheme-handler/tomtomhome;");
  ListCompanionRows(table);
  EXPECT_EQ(TomTomRow(table).textId, 118u);
}

TEST_F(TomTomHandOff, NamesWithOtherLettersAreFetchedByTheirEscapes) {
  ASSERT_EQ(WriteTomTomHome(u"Z\u00FCrich & Genf.itn", m_list, 0, true), 0u);
  EXPECT_EQ(m_desktop.Opened(),
            "tomtomhome:contentitem:http://127.0.0.1:8099/Z%C3%BCrich%20%26%20Genf.xml");
  const std::string description = Fetch(kServer + std::string("Z%C3%BCrich%20%26%20Genf.xml"));
  EXPECT_NE(description.find(">http://127.0.0.1:8099/Z%C3%BCrich%20%26%20Genf.zip</url>"),
            std::string::npos);
  const std::string archive = Fetch(kServer + std::string("Z%C3%BCrich%20%26%20Genf.zip"));
  EXPECT_NE(archive.find("ITN/Z\u00FCrich & Genf.itn"), std::string::npos);
  EXPECT_TRUE(WaitUntilTomTomHasFetched(std::chrono::seconds(10)));
}

}  // namespace
