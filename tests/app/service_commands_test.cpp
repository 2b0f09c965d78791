#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/loopback_server.h"
#include "tests/run_program.h"
#include "tests/temporary_folder.h"

namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

// The converter with settings of its own.
class ServiceCommands : public testing::Test {
 protected:
  ProgramResult Run(const std::vector<std::string>& arguments,
                    const std::string& environment = "LC_ALL=C") const {
    return RunConverter(arguments, environment + " XDG_CONFIG_HOME=" + m_home.Path().string());
  }
  void Set(const std::vector<std::string>& assignments) const {
    std::vector<std::string> arguments;
    for (const std::string& assignment : assignments) {
      arguments.insert(arguments.end(), {"--set", assignment});
    }
    const ProgramResult result = Run(arguments);
    ASSERT_EQ(result.status, 0) << result.errors;
    ASSERT_EQ(result.output + result.errors, "");
  }

 private:
  TemporaryFolder m_home;
};

constexpr const char* kColmar =
    R"({"results":[{"formatted_address":"Colmar, \"Alsace\"","geometry":{"location":)"
    R"({"lat":48.08,"lng":7.36}}}],"status":"OK"})";

TEST_F(ServiceCommands, KeepsTheSettingsOfServicesAndMasksSecrets) {
  Set({"service.here.key=SECRETCODE", "service.here.app-id=SECRETID",
       "Service.HERE.URL=http://127.0.0.1:9/x/", "service.bing.language=it",
       "service.ign.referrer=https://page.example/"});
  const ProgramResult listed = Run({"--settings"});
  EXPECT_EQ(listed.status, 0);
  EXPECT_THAT(listed.output, Not(HasSubstr("SECRET")));
  EXPECT_THAT(listed.output, HasSubstr("service.here.key       text     ********"));
  EXPECT_THAT(listed.output, HasSubstr("service.here.app-id    text     ********"));
  EXPECT_THAT(listed.output, HasSubstr("service.here.url       text     http://127.0.0.1:9/x "));
  EXPECT_THAT(listed.output, HasSubstr("service.bing.language  text     it "));
  const ProgramResult json = Run({"--settings", "--json"});
  EXPECT_THAT(json.output,
              HasSubstr(R"("key": "service.here.key", "kind": "text", "value": "********")"));
  EXPECT_THAT(json.output, Not(HasSubstr("SECRET")));

  Set({"service.here.key=", "service.here.app-id=", "service.here.url="});
  EXPECT_THAT(Run({"--settings"}).output, Not(HasSubstr("service.here")));
  EXPECT_THAT(Run({"--settings"}).output, HasSubstr("service.bing.language"));
}

TEST_F(ServiceCommands, RefusesSettingsThatMeanNothing) {
  const struct {
    const char* assignment;
    const char* message;
  } kRows[] = {
      {"service.gogle.key=SECRET", "\"gogle\" is no service. --providers lists them all.\n"},
      {"service.google.kez=SECRET",
       "service.google.kez: there is no such setting of a service. There are: url, key, app-id, "
       "language, referrer\n"},
      {"service.google=SECRET",
       "service.google: there is no such setting of a service. There are: url, key, app-id, "
       "language, referrer\n"},
      {"service.google.url=ftp://SECRET",
       "service.google.url: give scheme and host, like https://example.org, without a name, a "
       "query or a blank.\n"},
      {"service.google.url=http://SECRET@host", "service.google.url: give scheme"},
      {"service.google.url=http://", "service.google.url: give scheme"},
      {"service.google.url=http://host/?SECRET", "service.google.url: give scheme"},
      {"service.google.url=http://ho st/", "service.google.url: give scheme"},
      {"service.google.key=SEC RET",
       "service.google.key: only letters, digits and signs of ASCII without blanks can be sent to "
       "a service.\n"},
      {"service.google.key=SECRET\r\nX: y", "service.google.key: only letters"},
  };
  for (const auto& row : kRows) {
    // What stands beside it is not kept either.
    const ProgramResult result = Run(
        {"--set", "service.bing.language=it", "--set", "DIST_MILES=1", "--set", row.assignment});
    EXPECT_EQ(result.status, 2) << row.assignment;
    EXPECT_THAT(result.errors, StartsWith(row.message));
    EXPECT_THAT(result.errors, Not(HasSubstr("SECRET")));
  }
  EXPECT_THAT(Run({"--settings"}).output, Not(HasSubstr("service.")));
}

TEST_F(ServiceCommands, FindsAnAddress) {
  const LoopbackServer server([](const std::string&) { return HttpReply(kColmar); });
  Set({"service.google.url=" + server.Url(), "service.google.key=SECRET"});
  const ProgramResult json = Run({"--find", "rue des Clefs", "--provider", "google", "--json"});
  EXPECT_EQ(json.status, 0) << json.errors;
  EXPECT_EQ(json.output,
            "{\"provider\": {\"id\": 2, \"name\": \"google\"}, \"status\": 0, \"message\": null,\n"
            " \"places\": [\n"
            "  {\"latitude\": 48.08, \"longitude\": 7.36, \"altitude\": 0, "
            "\"name\": \"Colmar, \\\"Alsace\\\"\", \"comment\": \"\"}]}\n");
  EXPECT_EQ(json.errors, "Requests to google: 1\n");
  const ProgramResult text = Run({"--find", "rue des Clefs", "--provider", "2", "--quiet"});
  EXPECT_EQ(text.status, 0);
  EXPECT_EQ(text.output, "48.080000,7.360000  Colmar, \"Alsace\"\n");
  EXPECT_EQ(text.errors, "");
  ASSERT_EQ(server.Requests().size(), 2u);
  EXPECT_THAT(server.Requests()[0],
              StartsWith("GET /maps/api/geocode/json?sensor=false&address=rue%20des%20Clefs"
                         "&key=SECRET HTTP/1.1\r\n"));
}

TEST_F(ServiceCommands, AsksInTheLanguageOfTheProgram) {
  const LoopbackServer server(
      [](const std::string&) { return HttpReply(R"({"statusCode":200,"resourceSets":[]})"); });
  Set({"service.bing.url=" + server.Url(), "service.bing.key=K"});
  Run({"--find", "x", "--provider", "bing"}, "LC_ALL=de_DE.UTF-8");
  ASSERT_EQ(server.Requests().size(), 1u);
  EXPECT_THAT(server.Requests()[0],
              StartsWith("GET /REST/v1/Locations?o=json&query=x&key=K&c=de-DE HTTP/1.1\r\n"));
}

TEST_F(ServiceCommands, SearchesNearAPosition) {
  const LoopbackServer server([](const std::string&) { return HttpReply(kColmar); });
  Set({"service.google.url=" + server.Url(), "service.google.key=K"});
  EXPECT_EQ(
      Run({"--find", "pizza", "--near", "48.08,-7.36", "--radius", "2000", "--provider", "google"})
          .status,
      0);
  EXPECT_EQ(Run({"--find", "pizza", "--near", "-48.08,7.36", "--provider", "google"}).status, 0);
  ASSERT_EQ(server.Requests().size(), 2u);
  EXPECT_THAT(server.Requests()[0],
              StartsWith("GET /maps/api/place/textsearch/json?query=pizza"
                         "&location=48.080000,-7.360000&radius=2000&key=K HTTP/1.1\r\n"));
  EXPECT_THAT(server.Requests()[1], HasSubstr("&location=-48.080000,7.360000&radius=30000&key=K"));
}

TEST_F(ServiceCommands, TellsWhatAServiceHasRefused) {
  const LoopbackServer server([](const std::string& request) {
    if (request.find("=nothing&") != std::string::npos)
      return HttpReply(R"({"status":"ZERO_RESULTS","results":[]})");
    if (request.find("=denied&") != std::string::npos)
      return HttpReply(R"({"status":"REQUEST_DENIED","results":[]})");
    return HttpReply("<html>503</html>", "503 Down");
  });
  Set({"service.google.url=" + server.Url(), "service.google.key=SECRET"});
  const struct {
    const char* text;
    const char* status;
    const char* message;
  } kRows[] = {{"nothing", "1", "Nothing was found."},
               {"denied", "3", "The service has refused the request."},
               {"down", "4", "The search has failed."}};
  for (const auto& row : kRows) {
    const ProgramResult result = Run({"--find", row.text, "--provider", "google", "--json"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, std::string("{\"provider\": {\"id\": 2, \"name\": \"google\"}, "
                                         "\"status\": ") +
                                 row.status + ", \"message\": \"" + row.message +
                                 "\",\n \"places\": []}\n");
    EXPECT_EQ(result.errors, std::string("google: ") + row.message + " (status " + row.status +
                                 ")\nRequests to google: 1\n");
  }
}

TEST_F(ServiceCommands, TellsOfATransportThatFails) {
  Set({"service.google.url=http://127.0.0.1:1", "service.google.key=SECRET"});
  const ProgramResult result = Run({"--locate", "48.08,7.36", "--provider", "google"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(result.errors,
            "google: The search has failed. (status 12129)\nRequests to google: 1\n");
}

TEST_F(ServiceCommands, AsksNothingOfAServiceThatIsNotSetUp) {
  const ProgramResult here = Run({"--find", "x", "--provider", "here", "--json"});
  EXPECT_EQ(here.status, 1);
  EXPECT_EQ(here.output,
            "{\"provider\": {\"id\": 19, \"name\": \"here\"}, \"status\": 4, \"message\": "
            "\"The service here-geocoder is not set up: key, app-id is missing. Set it with "
            "--set service.here.key=... --set service.here.app-id=...\",\n \"places\": []}\n");
  EXPECT_EQ(here.errors,
            "The service here-geocoder is not set up: key, app-id is missing. Set it with "
            "--set service.here.key=... --set service.here.app-id=...\n");
  const ProgramResult nominatim = Run({"--find", "x", "--provider", "nominatim"});
  EXPECT_EQ(nominatim.status, 1);
  EXPECT_EQ(nominatim.errors,
            "The service nominatim is not set up: url is missing. Set it with "
            "--set service.nominatim.url=...\n");
}

TEST_F(ServiceCommands, AsksNothingOfferedElsewhereOrOffline) {
  const LoopbackServer server([](const std::string&) { return HttpReply(kColmar); });
  Set({"service.google.url=" + server.Url(), "service.google.key=K",
       "service.google-panorama.url=" + server.Url()});
  const ProgramResult unknown = Run({"--find", "x", "--provider", "gogle"});
  EXPECT_EQ(unknown.status, 2);
  EXPECT_EQ(unknown.errors, "\"gogle\" is no service. --providers lists them all.\n");
  const ProgramResult unable = Run({"--elevation", "1,2", "--provider", "bing"});
  EXPECT_EQ(unable.status, 2);
  EXPECT_EQ(unable.errors, "The service bing cannot do that. These can: google\n");
  const ProgramResult offline = Run({"--find", "x", "--provider", "google", "--offline"});
  EXPECT_EQ(offline.status, 1);
  EXPECT_EQ(offline.errors, "The service google was not asked because of --offline.\n");
  EXPECT_EQ(Run({"--panorama", "1,2", "--offline", "--json"}).output,
            "{\"provider\": {\"id\": null, \"name\": \"google-panorama\"}, \"status\": 4, "
            "\"message\": \"The service google-panorama was not asked because of --offline.\",\n"
            " \"places\": []}\n");
  const ProgramResult empty = Run({"--find", " ", "--provider", "google"});
  EXPECT_EQ(empty.status, 1);
  EXPECT_EQ(empty.errors, "google: The search field had no value. (status 4)\n");
  EXPECT_THAT(server.Requests(), IsEmpty());
}

TEST_F(ServiceCommands, LocatesMeasuresAndLooks) {
  const LoopbackServer server([](const std::string& request) {
    if (request.find("/elevation/") != std::string::npos)
      return HttpReply(R"({"results":[{"elevation":189.5,"location":{"lat":48.08,"lng":7.36}}],)"
                       R"("status":"OK"})");
    if (request.find("/cbk?") != std::string::npos)
      return HttpReply(R"({"Location":{"lat":"48.08","lng":"7.36","description":"Rue X",)"
                       R"("region":"Colmar"}})");
    return HttpReply(kColmar);
  });
  Set({"service.google.url=" + server.Url(), "service.google.key=K",
       "service.google-panorama.url=" + server.Url()});
  EXPECT_EQ(Run({"--locate", "-1.5,2", "--provider", "google"}).output,
            "48.080000,7.360000  Colmar, \"Alsace\"\n");
  EXPECT_EQ(Run({"--elevation", "48.08,7.36"}).output, "48.080000,7.360000  189.5 m\n");
  EXPECT_EQ(Run({"--elevation", "48.08,7.36", "--json"}).output,
            "{\"provider\": {\"id\": 2, \"name\": \"google\"}, \"status\": 0, \"message\": null,\n"
            " \"places\": [\n  {\"latitude\": 48.08, \"longitude\": 7.36, \"altitude\": 189.5, "
            "\"name\": \"\", \"comment\": \"\"}]}\n");
  const ProgramResult panorama = Run({"--panorama", "48.08,7.36"});
  EXPECT_EQ(panorama.output, "48.080000,7.360000  Rue X (Colmar)\n");
  EXPECT_EQ(panorama.errors, "Requests to google-panorama: 1\n");
}

TEST_F(ServiceCommands, TownsAnswerFromThisMachine) {
  const ProgramResult found = Run({"--find", "Obernai"});
  EXPECT_EQ(found.status, 0);
  EXPECT_THAT(found.output, AllOf(StartsWith("48.4"), HasSubstr("  Obernai, Grand Est, France")));
  // Nobody was asked.
  EXPECT_EQ(found.errors, "");
  EXPECT_EQ(Run({"--find", "rue des Clefs, Colmar", "--offline"}).status, 0);
  EXPECT_THAT(Run({"--locate", "48.46,7.48", "--json"}).output,
              AllOf(StartsWith("{\"provider\": {\"id\": 101, \"name\": \"offline-places\"}, "
                               "\"status\": 0, \"message\": null,\n \"places\": [\n"),
                    HasSubstr("\"name\": \"Obernai, Grand Est, France\"")));
  EXPECT_THAT(Run({"--find", "Ober", "--near", "48.58,7.75", "--radius", "30000"}).output,
              HasSubstr("Obernai, Grand Est, France\n"));
  const ProgramResult nothing = Run({"--find", "Xyzzyqwert"});
  EXPECT_EQ(nothing.status, 1);
  EXPECT_EQ(nothing.errors, "offline-places: Nothing was found. (status 1)\n");
}

TEST_F(ServiceCommands, TheFinderOfTheSettingsAnswers) {
  const LoopbackServer server([](const std::string&) { return HttpReply(kColmar); });
  Set({"service.google.url=" + server.Url(), "service.google.key=K", "FindProvider=2"});
  EXPECT_EQ(Run({"--find", "x"}).errors, "Requests to google: 1\n");
  EXPECT_EQ(Run({"--locate", "1,2"}).errors, "Requests to google: 1\n");
  // What it cannot do is done here.
  Set({"FindProvider=3"});
  EXPECT_EQ(Run({"--find", "Obernai", "--near", "48.46,7.48"}).status, 0);
  EXPECT_EQ(Run({"--find", "Obernai", "--provider", "offline-places"}).status, 0);
}

TEST_F(ServiceCommands, RefusesWhatIsNoPosition) {
  for (const char* const typed : {"", "48.08", "48.08;7.36", "48.08,", ",7", "x,y", "91,0", "0,181",
                                  "nan,0", "0,inf", "1,2,3", "0x10,2", "1e1,2"}) {
    const ProgramResult result = Run({"--locate", typed, "--provider", "google"});
    EXPECT_EQ(result.status, 2) << typed;
    EXPECT_THAT(result.errors, HasSubstr("is no position.")) << typed;
  }
  EXPECT_EQ(Run({"--find", "x", "--near", "1,2", "--radius", "0"}).errors,
            "\"0\" is no radius. Give a whole number of metres.\n");
}

TEST_F(ServiceCommands, PrintsTheCountry) {
  const LoopbackServer server([](const std::string& request) {
    if (request.starts_with("GET /countryInfo?"))
      return HttpReply(
          R"({"geonames":[{"countryName":"France","currencyCode":"EUR",)"
          R"("countryCode":"FR","capital":"Paris","languages":"fr-FR","isoAlpha3":"FRA",)"
          R"("continent":"EU"}]})");
    if (request.starts_with("GET /countryCode?"))
      return HttpReply(R"({"countryName":"France","countryCode":"FR","distance":"0"})");
    return HttpReply(R"({"lng":7.36,"lat":48.08,"name":"France","code":"FR"})");
  });
  Set({"service.geonames.url=" + server.Url(), "service.geonames.key=corvanes",
       "service.geoip.url=" + server.Url("/ip")});
  const std::string kGeonames =
      "{\"provider\": {\"id\": 8, \"name\": \"geonames\"}, \"status\": 0, "
      "\"message\": null,\n \"country\": ";
  EXPECT_EQ(Run({"--country", "fr", "--json"}).output,
            kGeonames +
                "{\"code\": \"FR\", \"name\": \"France\", \"capital\": \"Paris\", \"currency\": "
                "\"EUR\", \"languages\": \"fr-FR\", \"isoAlpha3\": \"FRA\", \"continent\": \"EU\", "
                "\"latitude\": null, \"longitude\": null}}\n");
  EXPECT_EQ(Run({"--country", "48.08,7.36", "--json"}).output,
            kGeonames +
                "{\"code\": \"FR\", \"name\": \"France\", \"capital\": \"\", \"currency\": \"\", "
                "\"languages\": \"\", \"isoAlpha3\": \"\", \"continent\": \"\", "
                "\"latitude\": null, \"longitude\": null}}\n");
  EXPECT_EQ(
      Run({"--country", "--json"}).output,
      "{\"provider\": {\"id\": null, \"name\": \"geoip\"}, \"status\": 0, \"message\": null,\n"
      " \"country\": {\"code\": \"FR\", \"name\": \"France\", \"capital\": \"\", "
      "\"currency\": \"\", \"languages\": \"\", \"isoAlpha3\": \"\", \"continent\": \"\", "
      "\"latitude\": 48.08, \"longitude\": 7.36}}\n");
  EXPECT_EQ(Run({"--country=-1.5,2"}).output, "FR  France\n");
  EXPECT_EQ(Run({"--country", "FR"}).output,
            "FR  France\nCapital: Paris\nCurrency: EUR\nLanguages: fr-FR\nThree letters: FRA\n"
            "Continent: EU\n");
  ASSERT_EQ(server.Requests().size(), 5u);
  EXPECT_THAT(server.Requests()[0],
              StartsWith("GET /countryInfo?type=JSON&username=corvanes&lang=en&country=FR "));
  EXPECT_THAT(server.Requests()[1],
              StartsWith("GET /countryCode?type=JSON&username=corvanes&lang=en&lat=48.080000"
                         "&lng=7.360000 "));
  EXPECT_THAT(server.Requests()[2], StartsWith("GET /ip/country.php HTTP/1.1\r\n"));
}

TEST_F(ServiceCommands, TellsOfACountryThatIsNotFound) {
  const LoopbackServer server([](const std::string&) {
    return HttpReply(R"({"status":{"message":"user does not exist.","value":10}})");
  });
  Set({"service.geonames.url=" + server.Url(), "service.geonames.key=corvanes"});
  const ProgramResult result = Run({"--country", "FR", "--json"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.output,
            "{\"provider\": {\"id\": 8, \"name\": \"geonames\"}, \"status\": 6, \"message\": "
            "\"The search has failed.\",\n \"country\": {\"code\": \"\", \"name\": \"\", "
            "\"capital\": \"\", \"currency\": \"\", \"languages\": \"\", \"isoAlpha3\": \"\", "
            "\"continent\": \"\", \"latitude\": null, \"longitude\": null}}\n");
  EXPECT_EQ(Run({"--country"}).errors,
            "The service geoip is not set up: url is missing. Set it with "
            "--set service.geoip.url=...\n");
  EXPECT_EQ(Run({"--country", "FRA"}).status, 2);
  EXPECT_EQ(Run({"--country", "FR", "--provider", "geoip"}).errors,
            "The service geoip cannot do that. These can: geonames\n");
}

TEST_F(ServiceCommands, ListsTheServices) {
  Set({"service.nominatim.url=http://127.0.0.1:9", "service.here.key=SECRET"});
  const ProgramResult json = Run({"--providers", "--json"});
  EXPECT_EQ(json.status, 0);
  EXPECT_EQ(json.errors, "");
  EXPECT_THAT(json.output,
              StartsWith("[{\"id\": 0, \"name\": \"straight\", \"label\": \"Straight lines\", "
                         "\"can\": [\"directions\"], \"usable\": true, \"missing\": []"));
  EXPECT_THAT(json.output,
              HasSubstr("{\"id\": 3, \"name\": \"bing\", \"label\": \"Microsoft Bing Maps\", "
                        "\"can\": [\"directions\", \"geocoding\", \"reverse\"], "
                        "\"usable\": false, \"missing\": [\"key\"]"));
  EXPECT_THAT(json.output, HasSubstr("\"closed\": \"2025-06\", \"successor\": \"Azure Maps\"}"));
  EXPECT_THAT(json.output,
              HasSubstr("\"name\": \"here\", \"label\": \"HERE\", \"can\": [\"directions\", "
                        "\"geocoding\", \"reverse\", \"search\"], \"usable\": false, "
                        "\"missing\": [\"app-id\"]"));
  EXPECT_THAT(json.output, HasSubstr("{\"id\": null, \"name\": \"google-panorama\", \"label\": "
                                     "\"Google Street View\", \"can\": [\"panorama\"], "
                                     "\"usable\": true, \"missing\": []"));
  EXPECT_THAT(json.output, HasSubstr("\"name\": \"nominatim\", \"label\": \"Nominatim\", \"can\": "
                                     "[\"geocoding\", \"reverse\"], \"usable\": true"));
  EXPECT_THAT(json.output, Not(HasSubstr("SECRET")));
  // The most points of a request: null for ways on this machine, for Tripy's pairs without end, and
  // for a service without directions.
  const struct {
    const char* name;
    const char* most;
  } kMost[] = {{"straight", "null"}, {"google", "23"},  {"here", "10"},           {"ign", "2"},
               {"tripy", "null"},    {"geoip", "null"}, {"offline-roads", "null"}};
  for (const auto& row : kMost) {
    const size_t service = json.output.find(std::string("\"name\": \"") + row.name + '"');
    const size_t most = json.output.find("\"maxPoints\": ", service);
    ASSERT_NE(most, std::string::npos) << row.name;
    EXPECT_THAT(json.output.substr(most), StartsWith(std::string("\"maxPoints\": ") + row.most))
        << row.name;
  }
  const ProgramResult text = Run({"--providers"});
  EXPECT_THAT(text.output,
              HasSubstr("  3  bing                Microsoft Bing Maps       needs key, "
                        "closed since 2025-06 (successor: Azure Maps)\n"));
}

}  // namespace
