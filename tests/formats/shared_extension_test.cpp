#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "base/status.h"
#include "base/text.h"
#include "formats/format_rows.h"
#include "formats/text/magellan.h"
#include "formats/text/oziexplorer.h"
#include "formats/text/pcx5.h"
#include "tests/formats/points_in.h"
#include "tests/temporary_folder.h"

// Files that share an extension are told apart by the readers themselves, tried in table order.

namespace {

constexpr std::string_view kOziRoute =
    "OziExplorer Route File Version 1.0\r\n"
    "WGS 84\r\n"
    "Reserved 1\r\n"
    "Reserved 2\r\n"
    "R,  0,Bord de mer     ,d'\xE9t\xE9,255\r\n"
    "W,  0,  1,  1,Honfleur        ,  49.418900,   0.233300,45178.3333333, 0, 1, 3,         0,   "
    "  65535,, 0, 0\r\n"
    "W,  0,  2,  2,\xC9tretat         ,  49.707000,   0.206400,45178.3333333, 0, 1, 3,         0,"
    "     65535,Falaises, 0, 0\r\n";

constexpr std::string_view kPcx5Route =
    "H  SOFTWARE NAME & VERSION\r\n"
    "I  PCX5 2.09\r\n"
    "\r\n"
    "H  R DATUM                IDX DA            DF            DX            DY            DZ\r\n"
    "M  G WGS 84               121 +0.000000e+00 +0.000000e+00 +0.000000e+00 +0.000000e+00 "
    "+0.000000e+00\r\n"
    "\r\n"
    "H  COORDINATE SYSTEM\r\n"
    "U  LAT LON DM\r\n"
    "\r\n"
    "R  01 BORD DE MER\r\n"
    "\r\n"
    "H  IDNT   LATITUDE    LONGITUDE    DATE      TIME     ALT   DESCRIPTION                      "
    "        PROXIMITY     SYMBOL ;waypts\r\n"
    "W  HONFLE N4925.13400 E00013.99800 09-SEP-23 08:00:00 00005 HONFLEUR                         "
    "        0.00000e+000  00018\r\n"
    "W  ETRETA N4942.42000 E00012.38400 09-SEP-23 08:00:00 -9999                                  "
    "        0.00000e+000  00018\r\n";

// The checksums were worked out apart from the program.
constexpr std::string_view kMagellanRoute =
    "$PMGNWPL,4925.134,N,00013.998,E,0000005,M,WPT001,Honfleur,a*14\r\n"
    "$PMGNWPL,4942.420,N,00012.384,E,0000000,M,WPT002,Etretat,a*73\r\n"
    "$PMGNRTE,1,1,c,1,Bord de mer,WPT001,a,WPT002,a*6A\r\n"
    "$PMGNCMD,END*3D\r\n";

constexpr std::string_view kUnknownRoute =
    "[CLIENT]|x\r\n-|-|-|14600|HONFLEUR|-|0.2333|49.4189|\r\n";

// What one reader made of a file.
struct Attempt {
  FormatReadFn reader;
  uint32_t status;
  size_t points;
  std::string listName;
};

// Offers a file to the readers of its extension as the reader search does: the first that succeeds
// with a list that holds points ends it.
std::vector<Attempt> Search(const WideString& path) {
  std::vector<Attempt> attempts;
  for (const CItineraryFormat& row : DefaultFormatTable()) {
    if (!row.read || !EqualsIgnoringCase(row.extension, ExtensionOfPath(path))) continue;
    PointLists lists;
    Attempt attempt{row.read, row.read(path, lists, true), 0, ""};
    for (const auto& list : lists) {
      if (list->Count() > 0 && attempt.points == 0) attempt.listName = list->name;
      attempt.points += list->Count();
    }
    attempts.push_back(attempt);
    if (attempt.status == kStatusSuccess && attempt.points > 0) break;
  }
  return attempts;
}

// Status and number of points of one reader.
std::pair<uint32_t, size_t> Say(FormatReadFn reader, const WideString& path) {
  PointLists lists;
  const uint32_t status = reader(path, lists, true);
  return {status, PointsIn(lists)};
}

using Answer = std::pair<uint32_t, size_t>;
constexpr Answer kRejected = {kStatusFailure, 0};
constexpr Answer kNothingFound = {kStatusSuccess, 0};
constexpr Answer kTwoPoints = {kStatusSuccess, 2};

TEST(SharedExtension, Pcx5RouteIsFoundByTheFirstReader) {
  const TemporaryFolder folder;
  const WideString path = folder.Put("trip.RTE", kPcx5Route);
  const std::vector<Attempt> attempts = Search(path);
  ASSERT_EQ(attempts.size(), 1u);
  EXPECT_EQ(attempts[0].reader, ReadPcx5);
  EXPECT_EQ(attempts[0].points, 2u);
  EXPECT_EQ(attempts[0].listName, "BORD DE MER");

  EXPECT_EQ(Say(ReadPcx5, path), kTwoPoints);
  EXPECT_EQ(Say(ReadOziRoute, path), kRejected);
  EXPECT_EQ(Say(ReadMagellan, path), kNothingFound);
}

TEST(SharedExtension, AllReadersFindTheSamePlaces) {
  const TemporaryFolder folder;
  const std::pair<FormatReadFn, std::string_view> files[] = {
      {ReadPcx5, kPcx5Route}, {ReadOziRoute, kOziRoute}, {ReadMagellan, kMagellanRoute}};
  for (const auto& [read, bytes] : files) {
    PointLists lists;
    ASSERT_EQ(read(folder.Put("trip.rte", bytes), lists, true), kStatusSuccess);
    ASSERT_EQ(lists.at(0)->Count(), 2u);
    EXPECT_NEAR(lists[0]->points[0].latitude, 49.4189, 0.00001);
    EXPECT_NEAR(lists[0]->points[0].longitude, 0.2333, 0.00001);
    EXPECT_NEAR(lists[0]->points[1].latitude, 49.707, 0.00001);
    EXPECT_NEAR(lists[0]->points[1].longitude, 0.2064, 0.00001);
  }
}

TEST(SharedExtension, OziRouteIsFoundByTheSecondReader) {
  const TemporaryFolder folder;
  const WideString path = folder.Put("trip.rte", kOziRoute);
  const std::vector<Attempt> attempts = Search(path);
  ASSERT_EQ(attempts.size(), 2u) << "Magellan is never asked";
  EXPECT_EQ(attempts[0].reader, ReadPcx5);
  EXPECT_EQ(attempts[0].status, kStatusFailure);
  EXPECT_EQ(attempts[1].reader, ReadOziRoute);
  EXPECT_EQ(attempts[1].points, 2u);
  EXPECT_EQ(attempts[1].listName, "Bord de mer     ");

  EXPECT_EQ(Say(ReadPcx5, path), kRejected);
  EXPECT_EQ(Say(ReadOziRoute, path), kTwoPoints);
  EXPECT_EQ(Say(ReadMagellan, path), kNothingFound);
}

TEST(SharedExtension, MagellanRouteIsFoundByTheThirdReader) {
  const TemporaryFolder folder;
  const WideString path = folder.Put("trip.rte", kMagellanRoute);
  const std::vector<Attempt> attempts = Search(path);
  ASSERT_EQ(attempts.size(), 3u);
  EXPECT_EQ(attempts[0].status, kStatusFailure);
  EXPECT_EQ(attempts[1].status, kStatusFailure);
  EXPECT_EQ(attempts[2].reader, ReadMagellan);
  EXPECT_EQ(attempts[2].points, 2u);
  EXPECT_EQ(attempts[2].listName, "Bord de mer");

  EXPECT_EQ(Say(ReadPcx5, path), kRejected);
  EXPECT_EQ(Say(ReadOziRoute, path), kRejected);
  EXPECT_EQ(Say(ReadMagellan, path), kTwoPoints);
}

// Magellan's reader takes every file, but without points the search goes on behind it.
TEST(SharedExtension, UnknownRouteIsHeldUpByNoneOfThem) {
  const TemporaryFolder folder;
  for (const std::string_view bytes : {kUnknownRoute, std::string_view()}) {
    const WideString path = folder.Put("trip.rte", bytes);
    EXPECT_EQ(Say(ReadPcx5, path), kRejected);
    EXPECT_EQ(Say(ReadOziRoute, path), kRejected);
    EXPECT_EQ(Say(ReadMagellan, path), kNothingFound);
    EXPECT_GE(Search(path).size(), 3u);
  }
}

// A header alone is the format's own, and still no reason to stop.
TEST(SharedExtension, FilesWithoutPointsAreOfferedToTheNextReader) {
  const TemporaryFolder folder;
  const auto head = [](std::string_view bytes, std::string_view upTo) {
    return bytes.substr(0, bytes.find(upTo));
  };
  EXPECT_GE(Search(folder.Put("a.rte", head(kPcx5Route, "W  "))).size(), 3u);
  EXPECT_GE(Search(folder.Put("b.rte", head(kOziRoute, "W,"))).size(), 3u);
  EXPECT_GE(Search(folder.Put("c.rte", head(kMagellanRoute, "$PMGNWPL"))).size(), 3u);
}

TEST(SharedExtension, WaypointFilesGoToPcx5ThenToOzi) {
  const TemporaryFolder folder;
  const std::vector<Attempt> pcx5 = Search(folder.Put("points.wpt", kPcx5Route));
  ASSERT_EQ(pcx5.size(), 1u);
  EXPECT_EQ(pcx5[0].reader, ReadPcx5);

  const WideString path =
      folder.Put("points.wpt",
                 "OziExplorer Waypoint File Version 1.1\r\nWGS 84\r\n"
                 "Reserved 2\r\ngarmin\r\n"
                 "  1,Honfleur      ,  49.418900,   0.233300,45178.33, 0, 1, 3, "
                 "0, 65535, , 0, 0, 0, 16, 6, 0,17\r\n");
  const std::vector<Attempt> ozi = Search(path);
  ASSERT_EQ(ozi.size(), 2u);
  EXPECT_EQ(ozi[0].status, kStatusFailure);
  EXPECT_EQ(ozi[1].reader, ReadOziWaypoints);
  EXPECT_EQ(ozi[1].points, 1u);
}

TEST(SharedExtension, OtherExtensionsHaveOneReaderEach) {
  for (const auto& [name, reader] :
       {std::pair{u"a.upt", ReadMagellan}, {u"a.rt2", ReadOziRouteCe}, {u"a.plt", ReadOziTrack}}) {
    const std::vector<Attempt> attempts = Search(name);
    ASSERT_EQ(attempts.size(), 1u);
    EXPECT_EQ(attempts[0].reader, reader);
    EXPECT_EQ(attempts[0].status, kStatusFailure) << "there is no such file";
  }
  EXPECT_TRUE(Search(u"a.mag").empty()) << "this row only writes";
}

TEST(SharedExtension, ExamplesAreFoundByTheirReaders) {
  struct Example {
    std::string_view name;
    FormatReadFn reader;
    size_t points;
    std::string_view listName;
  };
  const Example examples[] = {
      {"alsace-wine-villages.rte", ReadPcx5, 12, "Route des vins d'Alsace"},
      {"douro-valley.rte", ReadOziRoute, 7, "Vale do Douro"},
      {"black-forest.rt2", ReadOziRouteCe, 7, "Hochschwarzwald"},
      {"col-du-galibier.plt", ReadOziTrack, 8, ""},
      {"brittany-harbours.wpt", ReadOziWaypoints, 9, ""},
      {"lake-geneva.upt", ReadMagellan, 7, "lake-geneva"},
  };
  for (const Example& example : examples) {
    const auto path = std::string(CORVANE_SOURCE_FOLDER "/examples/") + std::string(example.name);
    const std::vector<Attempt> attempts = Search(WidePath(path));
    ASSERT_FALSE(attempts.empty()) << path;
    EXPECT_EQ(attempts.back().reader, example.reader) << path;
    EXPECT_EQ(attempts.back().status, kStatusSuccess) << path;
    EXPECT_EQ(attempts.back().points, example.points) << path;
    EXPECT_EQ(attempts.back().listName, example.listName) << path;
  }
}

}  // namespace
