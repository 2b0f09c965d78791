// Where this machine or a position is: what is asked, and what becomes of the answers.

#include "services/country.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "conversion/geocoder.h"
#include "services/service_access.h"
#include "services/service_registry.h"
#include "tests/loopback_server.h"

namespace {

// GeoNames and the service that knows this machine, both at one server.
class Countries : public testing::Test {
 protected:
  Countries() { FillServiceRegistry(CServiceRegistry::Instance()); }
  ~Countries() override {
    CServiceRegistry::Instance().Clear();
    SetServiceValues({});
  }

  void Reach(const std::string& key, std::optional<std::string> language = {}) {
    ServiceValues geonames;
    geonames.url = m_server.Url();
    geonames.key = key;
    geonames.language = std::move(language);
    ServiceValues machine;
    machine.url = m_server.Url("/ip");
    SetServiceValues({{"geonames", geonames}, {"geoip", machine}});
  }
  // "GET path" of the last request.
  std::string Asked() const {
    const std::vector<std::string> requests = m_server.Requests();
    return requests.empty() ? "" : requests.back().substr(0, requests.back().find(" HTTP"));
  }

  std::string m_reply;
  LoopbackServer m_server{[this](const std::string&) { return HttpReply(m_reply); }};
};

TEST_F(Countries, OfThisMachineIsAskedWithoutAQuery) {
  Reach("corvanes");
  m_reply = R"({"lng": 7.36, "lat": -48.08, "name": "France", "code": "FR"})";
  CCountryInfo country;
  CGpsCoordinate position;
  EXPECT_EQ(GetCountry(country, position), 0u);
  EXPECT_EQ(Asked(), "GET /ip/country.php");
  EXPECT_EQ(country.countryName, "France");
  EXPECT_EQ(country.countryCode, "FR");
  EXPECT_EQ(position.latitude, -48.08);
  EXPECT_EQ(position.longitude, 7.36);
}

TEST_F(Countries, OfAPositionHasItsParametersInOrder) {
  Reach("corvanes");
  m_reply = R"({"countryName": "Espa\u00f1a", "countryCode": "ES", "distance": "0"})";
  CCountryInfo country;
  EXPECT_EQ(GetCountryCode(-1.25, 7.0000004, country), 0u);
  EXPECT_EQ(Asked(),
            "GET /countryCode?type=JSON&username=corvanes&lang=en&lat=-1.250000&lng=7.000000");
  EXPECT_EQ(country.countryName, "España");
  EXPECT_EQ(country.countryCode, "ES");
}

TEST_F(Countries, DetailsHaveTheirParametersInOrder) {
  Reach("corvanes", "it");
  m_reply = R"({"geonames": [{"continent": "EU", "capital": "Parigi", "languages": "fr-FR,frp",)"
            R"( "isoAlpha3": "FRA", "countryCode": "FR", "countryName": "Francia",)"
            R"( "currencyCode": "EUR"}, {"countryName": "another"}]})";
  CCountryInfo country;
  EXPECT_EQ(GetCountryInfo("FR", country), 0u);
  EXPECT_EQ(Asked(), "GET /countryInfo?type=JSON&username=corvanes&lang=it&country=FR");
  EXPECT_EQ(country.countryName, "Francia");
  EXPECT_EQ(country.currencyCode, "EUR");
  EXPECT_EQ(country.countryCode, "FR");
  EXPECT_EQ(country.capital, "Parigi");
  EXPECT_EQ(country.languages, "fr-FR,frp");
  EXPECT_EQ(country.isoAlpha3, "FRA");
  EXPECT_EQ(country.continent, "EU");
}

// The page leaves the language out, or the user has emptied it.
TEST_F(Countries, NoLanguageIsNoParameter) {
  Reach("corvanes", "");
  CCountryInfo country;
  GetCountryInfo("FR", country);
  EXPECT_EQ(Asked(), "GET /countryInfo?type=JSON&username=corvanes&country=FR");
  GetCountryCode(1, 2, country);
  EXPECT_EQ(Asked(), "GET /countryCode?type=JSON&username=corvanes&lat=1.000000&lng=2.000000");
}

TEST_F(Countries, NothingBreaksOutOfItsParameter) {
  Reach("a_b-c.d~e&f=g#h+i", "x&y");
  CCountryInfo country;
  GetCountryInfo("F&R", country);
  EXPECT_EQ(Asked(),
            "GET /countryInfo?type=JSON&username=a_b-c.d~e%26f%3Dg%23h%2Bi&lang=x%26y"
            "&country=F%26R");
}

TEST_F(Countries, TheTransportsFailureIsTold) {
  ServiceValues nobody;
  nobody.url = "http://127.0.0.1:1";
  nobody.key = "corvanes";
  SetServiceValues({{"geonames", nobody}, {"geoip", nobody}});
  CCountryInfo country;
  CGpsCoordinate position;
  EXPECT_EQ(GetCountry(country, position), 100u + 12029);
  EXPECT_EQ(GetCountryCode(1, 2, country), 100u + 12029);
  EXPECT_EQ(GetCountryInfo("FR", country), 100u + 12029);
}

using Read = uint32_t (*)(std::string_view reply, CCountryInfo& country);

uint32_t ReadMachine(std::string_view reply, CCountryInfo& country) {
  CGpsCoordinate position;
  position.latitude = 1.0;
  position.longitude = 2.0;
  const uint32_t status = ReadMachineCountry(reply, country, position);
  if (status != kServiceSuccess) {
    EXPECT_EQ(position.latitude, 1.0) << reply;
    EXPECT_EQ(position.longitude, 2.0) << reply;
  }
  return status;
}

// The status of a reply that must not change anything.
uint32_t FailureOf(Read read, std::string_view reply) {
  CCountryInfo country;
  country.countryName = "as it was";
  const uint32_t status = read(reply, country);
  EXPECT_EQ(country.countryName, "as it was") << reply;
  EXPECT_EQ(country.countryCode, "") << reply;
  return status;
}

TEST(CountryReplies, WithoutAllTheirValuesCannotBeRead) {
  for (const char* const reply :
       {"", "null", "[]", "<html>", R"({"lng": 7, "lat": 48, "name": "France"})",
        R"({"lng": 7, "lat": 48, "code": "FR"})", R"({"lng": 7, "name": "France", "code": "FR"})",
        R"({"lat": 48, "name": "France", "code": "FR"})",
        R"({"lng": "7", "lat": 48, "name": "France", "code": "FR"})",
        R"({"lng": 7, "lat": 48, "name": "France", "code": null})"})
    EXPECT_EQ(FailureOf(ReadMachine, reply), 4u) << reply;
  for (const char* const reply :
       {"", "null", "[]", R"({"countryName": "France"})", R"({"countryCode": "FR"})",
        R"({"countryName": 1, "countryCode": "FR"})"})
    EXPECT_EQ(FailureOf(ReadCountryCode, reply), 4u) << reply;
  for (const char* const reply :
       {"", "{}", R"({"geonames": {}})", R"({"geonames": [1]})",
        R"({"geonames": [{"countryName": "France", "currencyCode": "EUR", "countryCode": "FR",)"
        R"( "capital": "Paris", "languages": "fr", "isoAlpha3": "FRA"}]})"})
    EXPECT_EQ(FailureOf(ReadCountryInfo, reply), 4u) << reply;
  EXPECT_EQ(FailureOf(ReadCountryInfo, R"({"geonames": []})"), 1u);
}

TEST(CountryReplies, OfNothingButBracketsCannotBeRead) {
  std::string objects;
  for (int i = 0; i < 50'000; ++i) objects += "{\"geonames\":[";
  for (const Read read : {&ReadMachine, &ReadCountryCode, &ReadCountryInfo}) {
    for (const char bracket : {'[', '{', '"', '}', '<'})
      EXPECT_EQ(FailureOf(read, std::string(50'000, bracket)), 4u) << bracket;
    EXPECT_EQ(FailureOf(read, std::string(8'000'000, '[')), 4u);
    EXPECT_EQ(FailureOf(read, objects), 4u);
  }
}

TEST(CountryReplies, CutAnywhereCannotBeRead) {
  const std::pair<Read, std::string> kReplies[] = {
      {&ReadMachine, R"({"lng": 7, "lat": 48, "name": "France", "code": "FR"})"},
      {&ReadCountryCode, R"({"countryName": "France", "countryCode": "FR"})"},
      {&ReadCountryInfo,
       R"({"geonames": [{"countryName": "France", "currencyCode": "EUR", "countryCode": "FR",)"
       R"( "capital": "Paris", "languages": "fr", "isoAlpha3": "FRA", "continent": "EU"}]})"}};
  for (const auto& [read, whole] : kReplies) {
    CCountryInfo country;
    EXPECT_EQ(read(whole, country), 0u);
    // What is behind the last value is not missed.
    for (size_t length = 0; length <= whole.rfind('"'); ++length)
      EXPECT_NE(FailureOf(read, whole.substr(0, length)), 0u) << length;
  }
}

TEST(CountryReplies, WithAStatusAreErrorsOfTheService) {
  for (const Read read : {&ReadCountryCode, &ReadCountryInfo}) {
    EXPECT_EQ(FailureOf(read, R"({"status": {"message": "no country code found", "value": 15}})"),
              6u);
    // The status counts, whatever stands beside it.
    EXPECT_EQ(FailureOf(read, R"({"countryName": "France", "countryCode": "FR", "geonames": [],)"
                              R"( "status": {"value": 18}})"),
              6u);
    EXPECT_EQ(FailureOf(read, R"({"status": {"message": "without a number"}})"), 4u);
    EXPECT_EQ(FailureOf(read, R"({"status": {"value": "18"}})"), 4u);
  }
  // Only an object is a status.
  CCountryInfo country;
  EXPECT_EQ(
      ReadCountryCode(R"({"status": 1, "countryName": "France", "countryCode": "FR"})", country),
      0u);
  EXPECT_EQ(country.countryCode, "FR");
}

}  // namespace
