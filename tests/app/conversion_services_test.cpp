#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/loopback_server.h"
#include "tests/run_program.h"
#include "tests/temporary_folder.h"

namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

// Two stops of one address without a position, and one that has one.
constexpr const char* kStops =
    "-|-|16|-|Colmar|rue des Clefs|-|-|-|-|-|-|-|-|-|\r\n"
    "-|-|16|-|Colmar|rue des Clefs|-|-|-|-|-|-|-|-|-|\r\n"
    "-|-|16|-|-|Metz|-|-|-|-|-|6.20000|49.10000|-|-|\r\n";

class ConversionServices : public testing::Test {
 protected:
  ConversionServices() { m_folder.Put("trip.rte", kStops); }
  ProgramResult Run(const std::vector<std::string>& arguments) const {
    return RunConverter(arguments,
                        "LC_ALL=C XDG_CONFIG_HOME=" + std::string(m_folder.PathTo("home")));
  }
  void SetUpServices(const LoopbackServer& server) const {
    ASSERT_EQ(Run({"--set", "service.google.url=" + server.Url(), "--set",
                   "service.google.key=SECRET", "--set", "service.geonames.url=" + server.Url(),
                   "--set", "service.geonames.key=corvanes"})
                  .status,
              0);
  }
  std::string Trip() const { return m_folder.PathTo("trip.rte"); }
  std::string Target(const std::string& name) const { return m_folder.PathTo(name); }
  const TemporaryFolder& Folder() const { return m_folder; }

 private:
  TemporaryFolder m_folder;
};

std::string Answer(const std::string& request) {
  if (request.starts_with("GET /countryCode?"))
    return HttpReply(R"({"countryName":"France","countryCode":"FR"})");
  if (request.starts_with("GET /countryInfo?"))
    return HttpReply(R"({"geonames":[{"countryName":"France","currencyCode":"EUR",)"
                     R"("countryCode":"FR","capital":"Paris","languages":"fr","isoAlpha3":"FRA",)"
                     R"("continent":"EU"}]})");
  return HttpReply(R"({"results":[{"formatted_address":"C","geometry":{"location":)"
                   R"({"lat":48.08,"lng":7.36}}}],"status":"OK"})");
}

TEST_F(ConversionServices, AskForAnAddressOnce) {
  const LoopbackServer server(Answer);
  SetUpServices(server);
  const ProgramResult result = Run({Trip(), "itn", "-o", Target("out.itn")});
  EXPECT_EQ(result.status, 0) << result.errors;
  ASSERT_EQ(server.Requests().size(), 1u);
  EXPECT_THAT(server.Requests()[0], HasSubstr("address=Colmar%20rue%20des%20Clefs&key=SECRET "));
  EXPECT_THAT(result.errors, HasSubstr("Requests to google: 1\n"));
  EXPECT_THAT(result.errors, Not(HasSubstr("SECRET")));
  EXPECT_THAT(Folder().Get("out.itn"), HasSubstr("736000|4808000|"));
}

TEST_F(ConversionServices, AskForACountryOncePerQuestion) {
  const LoopbackServer server(Answer);
  SetUpServices(server);
  const ProgramResult result = Run({Trip(), "route", "-o", Target("out.route"), "--quiet"});
  EXPECT_EQ(result.status, 0) << result.errors;
  EXPECT_EQ(result.errors, "");
  // An address, two distinct positions, one country.
  EXPECT_EQ(server.Requests().size(), 4u);
  EXPECT_THAT(Folder().Get("out.route"), HasSubstr("FRA"));
}

TEST_F(ConversionServices, AskNobodyOffline) {
  const LoopbackServer server(Answer);
  SetUpServices(server);
  const ProgramResult result = Run({Trip(), "route", "-o", Target("out.route"), "--offline"});
  // Stops without a position are lost.
  EXPECT_EQ(result.status, 3) << result.errors;
  EXPECT_THAT(result.errors, HasSubstr("The service google was not asked because of --offline."));
  EXPECT_THAT(result.errors, HasSubstr("The service geonames was not asked because of --offline."));
  EXPECT_THAT(server.Requests(), IsEmpty());
}

TEST_F(ConversionServices, AskNobodyWhenAFileIsOnlyLookedAt) {
  const LoopbackServer server(Answer);
  SetUpServices(server);
  EXPECT_EQ(Run({"--inspect", Trip()}).status, 0);
  EXPECT_THAT(server.Requests(), IsEmpty());
}

TEST_F(ConversionServices, NameTheRemedyWhenNothingIsSetUp) {
  const ProgramResult result = Run({Trip(), "route", "-o", Target("out.route")});
  EXPECT_EQ(result.status, 3) << result.errors;
  EXPECT_THAT(result.errors,
              HasSubstr("The service google is not set up: key is missing. Set it with "
                        "--set service.google.key=..."));
  EXPECT_THAT(result.errors,
              HasSubstr("The service geonames is not set up: key is missing. Set it with "
                        "--set service.geonames.key=..."));
}

}  // namespace
