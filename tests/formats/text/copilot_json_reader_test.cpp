#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "base/status.h"
#include "conversion/conversion_context.h"
#include "formats/text/copilot.h"
#include "markup/json.h"
#include "tests/formats/text/copilot_reading.h"
#include "tests/temporary_folder.h"

namespace {

using namespace copilot;
using std::string_literals::operator""s;

std::string StopInfo(std::string_view members) {
  return "{\"StopInfo\":{" + std::string(members) + "}}";
}

TEST(CoPilot10Reader, ReadsADocument) {
  PointLists lists;
  EXPECT_EQ(ParseCoPilot10(R"({"Version":"10","Trip":{"Name":"Tour","Stops":[
      {"StopInfo":{"Name":"Paris","Address":"Rue X","Longitude":2352220,"Latitude":48856610}},
      {"Id":1,"StopInfo":{"Latitude":-500001.9,"Longitude":-4500000.5,"Address":"Rue Y","Name":""}}
      ]}})",
                           lists, ContextInPlace()),
            kStatusSuccess);
  ASSERT_EQ(lists.size(), 1u);
  EXPECT_EQ(lists[0]->GetKind(), kKindRoute);
  EXPECT_EQ(lists[0]->name, "Tour");
  ASSERT_EQ(lists[0]->Count(), 2u);
  EXPECT_EQ(lists[0]->At(0).name, "Paris");
  EXPECT_EQ(lists[0]->At(0).longitude, 2.35222);
  EXPECT_EQ(lists[0]->At(0).latitude, 48.85661);
  EXPECT_EQ(lists[0]->At(0).comment, "");
  EXPECT_EQ(lists[0]->At(0).altitude, 0.0);
  EXPECT_EQ(lists[0]->At(1).name, "Rue Y");
  EXPECT_EQ(lists[0]->At(1).longitude, -4.5);
  EXPECT_EQ(lists[0]->At(1).latitude, -0.500001);
}

TEST(CoPilot10Reader, CoordinatesThatDoNotFitAreTheSmallestNumber) {
  PointLists lists;
  ParseCoPilot10(TripOf(StopInfo(R"("Name":"a","Longitude":1e300,"Latitude":2147483647.5)")), lists,
                 ContextInPlace());
  EXPECT_EQ(lists[0]->At(0).longitude, -2147.483648);
  EXPECT_EQ(lists[0]->At(0).latitude, 2147.483647);
}

TEST(CoPilot10Reader, TheAddressIsOnlyNeededForAnEmptyName) {
  PointLists lists;
  EXPECT_EQ(CodeOf(TripOf(StopInfo(R"("Name":"a","Longitude":1,"Latitude":2)")), lists), 0);
  EXPECT_EQ(CodeOf(TripOf(StopInfo(R"("Name":"","Longitude":1,"Latitude":2)")), lists), 5);
  EXPECT_EQ(CodeOf(TripOf(StopInfo(R"("Name":"","Address":1,"Longitude":1,"Latitude":2)")), lists),
            6);
}

TEST(CoPilot10Reader, AddsNothingWithoutATrip) {
  PointLists lists;
  EXPECT_EQ(CodeOf("{}", lists), 5);
  EXPECT_EQ(CodeOf(R"({"trip":{}})", lists), 5);
  EXPECT_EQ(CodeOf(R"({"Trip":[]})", lists), 9);
  EXPECT_EQ(CodeOf("[]", lists), 9);
  EXPECT_EQ(CodeOf("", lists), 9);
  EXPECT_EQ(CodeOf("x", lists), 9);
  EXPECT_EQ(CodeOf("\0"s, lists), 9);
  EXPECT_TRUE(lists.empty());
}

TEST(CoPilot10Reader, AddsTheRouteBeforeItLooksIntoTheTrip) {
  const auto expectRoute = [](std::string_view document, int code, std::string_view name) {
    PointLists lists;
    EXPECT_EQ(CodeOf(document, lists), code) << document;
    ASSERT_EQ(lists.size(), 1u) << document;
    EXPECT_EQ(lists[0]->Count(), 0u) << document;
    EXPECT_EQ(lists[0]->name, name) << document;
  };
  expectRoute(R"({"Trip":{}})", 5, "");
  expectRoute(R"({"Trip":{"Name":1,"Stops":[]}})", 6, "");
  expectRoute(R"({"Trip":{"Name":"T"}})", 5, "T");
  expectRoute(R"({"Trip":{"Name":"T","Stops":{}}})", 10, "T");
  expectRoute(R"({"Trip":{"Name":"T","Stops":[]}})", 0, "T");
}

TEST(CoPilot10Reader, KeepsTheStopsBeforeOneThatIsBroken) {
  const std::string whole = StopInfo(R"("Name":"a","Longitude":1000000,"Latitude":2000000)");
  const auto expectOne = [&whole](std::string_view broken, int code) {
    PointLists lists;
    EXPECT_EQ(CodeOf(TripOf(whole + "," + std::string(broken) + "," + whole), lists), code)
        << broken;
    ASSERT_EQ(lists.size(), 1u);
    ASSERT_EQ(lists[0]->Count(), 1u) << broken;
    EXPECT_EQ(lists[0]->At(0).name, "a");
  };
  expectOne("7", 9);
  expectOne("{}", 5);
  expectOne(R"({"StopInfo":7})", 9);
  expectOne(StopInfo(R"("Longitude":1,"Latitude":2)"), 5);
  expectOne(StopInfo(R"("Name":7,"Longitude":1,"Latitude":2)"), 6);
  expectOne(StopInfo(R"("Name":"b","Latitude":2)"), 5);
  expectOne(StopInfo(R"("Name":"b","Longitude":1)"), 5);
  expectOne(StopInfo(R"("Name":"b","Longitude":"1","Latitude":2)"), 7);
  expectOne(StopInfo(R"("Name":"b","Longitude":1,"Latitude":null)"), 7);
}

TEST(CoPilot10Reader, LooksAtTheTreeAndNotAtTheResultOfTheParse) {
  // The document is cut behind the trip, which was complete by then.
  const std::string document = TripOf(StopInfo(R"("Name":"a","Longitude":1,"Latitude":2)"));
  PointLists lists;
  EXPECT_EQ(CodeOf(document.substr(0, document.size() - 1) + ",\"Rest\":{\"a\":1", lists), 0);
  ASSERT_EQ(lists.size(), 1u);
  EXPECT_EQ(lists[0]->Count(), 1u);
}

TEST(CoPilot10Reader, ReadsBehindAMark) {
  PointLists lists;
  EXPECT_EQ(CodeOf("\xEF\xBB\xBF" + TripOf(StopInfo(R"("Name":"\"Caf\)"
                                                    "\u00e9"
                                                    R"(\"","Longitude":1,"Latitude":2)")),
                   lists),
            0);
  EXPECT_EQ(lists[0]->At(0).name, "\"Caf\u00e9\"");
}

TEST(CoPilot10Reader, ADocumentCutAnywhereIsReadOrRefused) {
  const std::string document = TripOf(StopInfo(R"("Name":"a","Longitude":1,"Latitude":2)") + "," +
                                      StopInfo(R"("Name":"b","Longitude":3,"Latitude":4)"));
  // Objects and arrays may end with the text: these two cuts leave a whole document.
  const size_t behindBracket = document.find('[') + 1;
  const size_t behindFirstStop = document.find("}},") + 3;
  for (size_t length = 0; length <= document.size(); ++length) {
    PointLists lists;
    const int code = CodeOf(document.substr(0, length), lists);
    const size_t points = lists.empty() ? 0 : lists[0]->Count();
    if (length == behindBracket) {
      EXPECT_EQ(code, 0);
      EXPECT_EQ(points, 0u);
    } else if (length == behindFirstStop) {
      EXPECT_EQ(code, 0);
      EXPECT_EQ(points, 1u);
    } else if (length + 2 >= document.size()) {  // behind the array
      EXPECT_EQ(code, 0);
      EXPECT_EQ(points, 2u);
    } else {
      EXPECT_TRUE(code == 5 || code == 9) << length;
      EXPECT_EQ(points, 0u) << length;
    }
  }
}

TEST(CoPilot10Reader, OpensTheFile) {
  const TemporaryFolder folder;
  PointLists lists;
  EXPECT_EQ(ReadCoPilot10(folder.WidePathTo("none.trp"), lists, true), kStatusFailure);
  EXPECT_TRUE(lists.empty());
  const WideString path =
      folder.Put("a.trp", TripOf(StopInfo(R"("Name":"a","Longitude":1,"Latitude":2)")));
  EXPECT_EQ(ReadCoPilot10(path, lists, true), kStatusSuccess);
  ASSERT_EQ(lists.size(), 1u);
  EXPECT_EQ(lists[0]->Count(), 1u);
  EXPECT_THROW(ReadCoPilot10(folder.Put("b.trp", ""), lists, true), CJsonException);
  EXPECT_EQ(lists.size(), 1u);
}

}  // namespace
