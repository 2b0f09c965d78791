// The order of stops by road.

#include <atomic>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/app/way_home.h"
#include "tests/loopback_server.h"

namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

// Four stops on one meridian, and the same where B lies behind D.
constexpr const char* kFourInLine =
    "700000|4800000|A|4|\r\n700000|4801000|B|0|\r\n700000|4802000|C|0|\r\n"
    "700000|4803000|D|2|\r\n";
constexpr const char* kFourWithADetour =
    "700000|4800000|A|4|\r\n700000|4803000|B|0|\r\n700000|4801000|C|0|\r\n"
    "700000|4802000|D|2|\r\n";

// The stops of a file in their order.
std::string OrderIn(std::string text) {
  std::erase_if(text, [](char c) { return c < 'A' || c > 'D'; });
  return text;
}

// Stops at 0, 1, 2 and 3 hundredths of a degree. By road, the second is near the last only.
TEST_F(WayCommand, OrdersTheStopsByRoad) {
  folder.Put("four.itn", kFourInLine);
  const LoopbackServer server([](const std::string& request) {
    const bool isFar = request.find("48.000000") != std::string::npos &&
                       request.find("48.010000") != std::string::npos;
    return HttpReply(std::string(R"({"code": "Ok", "routes": [{"duration": 9, "distance": )") +
                     (isFar ? "9000" : "1000") + R"(, "geometry": ""}], "waypoints": []})");
  });
  Set({"service.osrm.url=" + server.Url()});
  const auto names = [&](const std::vector<std::string>& options) {
    std::vector<std::string> arguments = {Path("four.itn"), "csv", "-o", Path("b.csv")};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const ProgramResult result = Run(arguments);
    EXPECT_EQ(result.status, 0) << result.errors;
    return OrderIn(folder.Get("b.csv"));
  };
  EXPECT_EQ(names({"--optimize"}), "ABCD");
  EXPECT_EQ(names({"--optimize", "--directions=osrm"}), "ACBD");
}

TEST_F(WayCommand, KeepsTheOrderWhenTheProviderFails) {
  folder.Put("four.itn", kFourWithADetour);
  const LoopbackServer server([](const std::string&) { return HttpReply("{}", "503 Down"); });
  Set({"service.osrm.url=" + server.Url()});
  const ProgramResult result =
      Run({Path("four.itn"), "csv", "--optimize", "--directions=osrm", "-o", Path("b.csv")});
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.errors, HasSubstr("osrm could not be asked on (status 4); the best order so "
                                       "far is kept.\n"));
  EXPECT_EQ(OrderIn(folder.Get("b.csv")), "ABCD");
  // Three questions of the order, then one for each leg.
  EXPECT_EQ(server.Requests().size(), 6u);
}

TEST_F(WayCommand, KeepsTheBestOrderWhenItIsInterrupted) {
  folder.Put("four.itn", kFourWithADetour);
  std::atomic<int> asked = 0;
  const LoopbackServer server(LoopbackServer::Talk([&](LoopbackConnection& connection) {
    if (connection.ReadRequest().empty()) return;
    if (++asked != 2) {
      connection.Send(HttpReply(kOsrmWay));
      return;
    }
    folder.Put("asked", "");
    connection.WaitForEnd();
  }));
  Set({"service.osrm.url=" + server.Url()});
  // While the second answer is waited for, the user has enough.
  const std::string interrupted =
      "interrupted() { \"$@\" & program=$!; until test -e " + Quoted(Path("asked")) +
      "; do sleep 0.05; done; kill -TERM $program; wait $program; }; interrupted env LC_ALL=C";
  const ProgramResult result =
      Run({Path("four.itn"), "csv", "--optimize", "--directions=osrm", "-o", Path("b.csv")},
          interrupted);
  EXPECT_EQ(result.status, 0) << result.errors;
  EXPECT_THAT(result.errors, HasSubstr("interrupted; the best order so far is kept.\n"));
  // Two questions, and the legs of the order as it was.
  EXPECT_EQ(asked, 5);
  EXPECT_TRUE(folder.Has("b.csv"));
}

TEST_F(WayCommand, AsksBeforeItAsksTooOften) {
  std::string stops;
  for (int i = 0; i < 33; ++i)
    stops += "700000|48" + std::to_string(10000 + i * 100) + "|Stop|0|\r\n";
  folder.Put("long.itn", stops);
  const LoopbackServer server([](const std::string&) { return HttpReply(kOsrmWay); });
  Set({"service.osrm.url=" + server.Url()});
  const ProgramResult result =
      Run({Path("long.itn"), "ov2", "--optimize", "--directions=osrm", "-o", Path("b.ov2")});
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.errors, StartsWith(Path("long.itn") +
                                        ": the best order by road may take 528 requests to osrm. "
                                        "Give --force to send them.\n"));
  EXPECT_FALSE(folder.Has("b.ov2"));
  EXPECT_THAT(server.Requests(), IsEmpty());
  EXPECT_EQ(
      Run({Path("long.itn"), "ov2", "--optimize", "--directions=straight", "-o", Path("b.ov2")})
          .status,
      0);
}

// Each way is 1000 m long, but A to C has no answer and B to D takes 1500 m: A, C, B, D costs
// 0 + 1000 + 1500 instead of 3000 m.
TEST_F(WayCommand, TellsOfPairsThatItCouldNotAskFor) {
  folder.Put("four.itn", kFourInLine);
  const LoopbackServer server([](const std::string& request) {
    const auto isBetween = [&request](const char* from, const char* to) {
      return request.find(from) != std::string::npos && request.find(to) != std::string::npos;
    };
    if (isBetween("48.000000", "48.020000")) return HttpReply(R"({"code": "NoRoute"})");
    return HttpReply(std::string(R"({"code": "Ok", "routes": [{"duration": 9, "distance": )") +
                     (isBetween("48.010000", "48.030000") ? "1500" : "1000") +
                     R"(, "geometry": ""}], "waypoints": []})");
  });
  Set({"service.osrm.url=" + server.Url()});
  const ProgramResult result =
      Run({Path("four.itn"), "csv", "--optimize", "--directions=osrm", "-o", Path("b.csv")});
  // The leg from A to C fails too.
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.errors, StartsWith(Path("four.itn") + ": No way from A to C (status 6): "));
  EXPECT_EQ(OrderIn(folder.Get("b.csv")), "ACBD");
  // Five pairs, three legs.
  EXPECT_EQ(server.Requests().size(), 8u);
}

// A to C is the only pair without an answer, and too dear to be part of the way even so.
TEST_F(WayCommand, FailsWhenAPairOfTheOrderHasNoAnswer) {
  folder.Put("four.itn", kFourInLine);
  const LoopbackServer server([](const std::string& request) {
    const auto isBetween = [&request](const char* from, const char* to) {
      return request.find(from) != std::string::npos && request.find(to) != std::string::npos;
    };
    if (isBetween("48.000000", "48.020000")) return HttpReply("{}");
    return HttpReply(std::string(R"({"code": "Ok", "routes": [{"duration": 9, "distance": )") +
                     (isBetween("48.010000", "48.030000") ? "9000" : "1000") +
                     R"(, "geometry": ""}], "waypoints": []})");
  });
  Set({"service.osrm.url=" + server.Url()});
  const ProgramResult result = Run(
      {Path("four.itn"), "csv", "--optimize", "--directions=osrm", "--quiet", "-o", Path("b.csv")});
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.errors, StartsWith(Path("four.itn") + ": No way from A to C (status 4): "));
  EXPECT_EQ(OrderIn(folder.Get("b.csv")), "ABCD");
}

}  // namespace
