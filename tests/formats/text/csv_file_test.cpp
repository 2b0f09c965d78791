#include <string>

#include <gtest/gtest.h>

#include "base/status.h"
#include "conversion/conversion_context.h"
#include "formats/text/csv.h"
#include "tests/formats/text/csv_reading.h"
#include "tests/list_builder.h"
#include "tests/settings_home.h"
#include "tests/temporary_folder.h"

namespace {

using namespace csv;

class CsvFile : public testing::Test {
 protected:
  CsvLayouts& Layouts() { return m_context.csvLayouts; }

  SettingsHome m_home;
  ConversionContext m_context;
  const ConversionScope m_scope{m_context};
  TemporaryFolder m_folder;
};

TEST_F(CsvFile, SilentUsesTheStoredLayouts) {
  storage::Storage user = storage::OpenUserStorage();
  StoreCsvLayout(user, CsvUse::kRead, kInforad);
  StoreCsvLayout(user, CsvUse::kWrite, kDestinator);
  bool wasAsked = false;
  Layouts().ask = [&wasAsked](CsvUse, CCsvLayout&) { return wasAsked = true; };

  PointLists lists;
  EXPECT_EQ(ReadCsv(m_folder.Put("a.csv", "48,5;2,5;a"), lists, true), kStatusSuccess);
  ASSERT_EQ(lists.size(), 1u);
  ASSERT_EQ(lists[0]->Count(), 1u);
  EXPECT_EQ(lists[0]->points[0], MakePoint(48.5, 2.5, "a"));
  EXPECT_EQ(WriteCsv(m_folder.WidePathTo("b.csv"), *lists[0], 0, true), kStatusSuccess);
  EXPECT_EQ(m_folder.Get("b.csv"),
            ",,Longitude,Latitude,,Name,Comment\r\n,,2.500000,48.500000,,\"a\",\"\"\r\n");
  EXPECT_FALSE(wasAsked);
}

TEST_F(CsvFile, TheUserIsAskedForTheLayout) {
  Layouts().ask = [](CsvUse use, CCsvLayout& layout) {
    layout = use == CsvUse::kRead ? kInforad : AllColumns(".", ";");
    return true;
  };
  PointLists lists;
  EXPECT_EQ(ReadCsv(m_folder.Put("a.csv", "48,5;2,5;a"), lists, false), kStatusSuccess);
  ASSERT_EQ(lists[0]->Count(), 1u);
  EXPECT_EQ(WriteCsv(m_folder.WidePathTo("b.csv"), *lists[0], 0, false), kStatusSuccess);
  EXPECT_EQ(m_folder.Get("b.csv"),
            "Latitude;Longitude;Elevation;Name;Comment\r\n"
            "48.500000;2.500000;0.000000;\"a\";\"\"\r\n");
}

TEST_F(CsvFile, CancellingTheQuestionEndsBoth) {
  Layouts().ask = [](CsvUse, CCsvLayout&) { return false; };
  PointLists lists;
  EXPECT_EQ(ReadCsv(m_folder.Put("a.csv", "1,2,a"), lists, false), kStatusCancelled);
  EXPECT_TRUE(lists.empty());
  EXPECT_EQ(WriteCsv(m_folder.WidePathTo("b.csv"), CGpsRoute(), 0, false), kStatusCancelled);
  EXPECT_FALSE(m_folder.Has("b.csv"));
}

TEST_F(CsvFile, ALayoutForTheRunGoesBeforeTheStoredOne) {
  Layouts().forReading = kInforad;
  PointLists lists;
  EXPECT_EQ(ReadCsv(m_folder.Put("a.csv", "48,5;2,5;a"), lists, true), kStatusSuccess);
  ASSERT_EQ(lists[0]->Count(), 1u);
  EXPECT_EQ(WriteCsv(m_folder.WidePathTo("b.csv"), *lists[0], 0, true), kStatusSuccess);
  EXPECT_EQ(m_folder.Get("b.csv"), "Longitude,Latitude,Name\r\n2.500000,48.500000,\"a\"\r\n");
  EXPECT_FALSE(m_home.HasFile());
}

TEST_F(CsvFile, AFileThatCannotBeOpenedHasThePlatformsCode) {
  PointLists lists;
  EXPECT_EQ(ReadCsv(m_folder.WidePathTo("none.csv"), lists, true), kStatusFileNotFound);
  EXPECT_EQ(ReadCsv(WidePath(m_folder.Path().string()), lists, true), kStatusAccessDenied);
  EXPECT_TRUE(lists.empty());
  EXPECT_EQ(WriteCsv(m_folder.WidePathTo("none/b.csv"), CGpsRoute(), 0, true), kStatusFileNotFound);
  EXPECT_EQ(WriteCsv(WidePath(m_folder.Path().string()), CGpsRoute(), 0, true),
            kStatusAccessDenied);
}

TEST_F(CsvFile, AnEmptyFileIsAnEmptyRoute) {
  PointLists lists;
  EXPECT_EQ(ReadCsv(m_folder.Put("a.csv", ""), lists, true), kStatusSuccess);
  ASSERT_EQ(lists.size(), 1u);
  EXPECT_EQ(lists[0]->Count(), 0u);
}

TEST_F(CsvFile, AnAbsurdLayoutWritesNothing) {
  CCsvLayout layout;
  layout.commentColumn = kMostCsvColumns + 1;
  Layouts().forWriting = layout;
  EXPECT_EQ(WriteCsv(m_folder.WidePathTo("a.csv"), CGpsRoute(), 0, true), kStatusInvalidParameter);
  EXPECT_FALSE(m_folder.Has("a.csv"));
  layout.commentColumn = kMostCsvColumns;
  Layouts().forWriting = layout;
  EXPECT_EQ(WriteCsv(m_folder.WidePathTo("a.csv"), CGpsRoute(), 0, true), kStatusSuccess);
  EXPECT_EQ(m_folder.Get("a.csv"),
            "Longitude,Latitude,Name" + std::string(997, ',') + "Comment\r\n");
}

TEST_F(CsvFile, RoundTripsInEveryPreset) {
  const auto route = MakeList("", MakePoint(48.85661, 2.35222, "Paris, \"centre\" of all"),
                              MakePoint(-33.868820, -151.209290, "Caf\u00e9; 2|3"),
                              MakePoint(0, 0.000001, ""), MakePoint(90, 180, "\"quoted\""));
  for (const CsvPreset& preset : CsvPresets().first(kManualCsvPreset)) {
    Layouts().forReading = preset.layout;
    Layouts().forWriting = preset.layout;
    PointLists lists;
    ASSERT_EQ(WriteCsv(m_folder.WidePathTo("a.csv"), route, 0, true), kStatusSuccess);
    ASSERT_EQ(ReadCsv(m_folder.WidePathTo("a.csv"), lists, true), kStatusSuccess);
    ASSERT_EQ(lists[0]->Count(), 4u) << preset.name;
    for (size_t i = 0; i < 3; ++i) {
      EXPECT_EQ(lists[0]->points[i].name, route.points[i].name) << preset.name;
      EXPECT_EQ(lists[0]->points[i].latitude, route.points[i].latitude) << preset.name;
      EXPECT_EQ(lists[0]->points[i].longitude, route.points[i].longitude) << preset.name;
    }
    // The name's own outer quotes go with those of the format.
    EXPECT_EQ(lists[0]->points[3].name, "quoted") << preset.name;
  }
}

TEST_F(CsvFile, TheExampleIsATrip) {
  PointLists lists;
  const std::string path = std::string(CORVANE_SOURCE_FOLDER) + "/examples/pyrenees_passes.csv";
  ASSERT_EQ(ReadCsv(WidePath(path), lists, true), kStatusSuccess);
  ASSERT_EQ(lists[0]->Count(), 9u);
  EXPECT_EQ(lists[0]->points[0], MakePoint(43.163106, -1.237322, "Saint-Jean-Pied-de-Port"));
  EXPECT_EQ(lists[0]->points[4], MakePoint(42.908333, 0.145000, "Col du Tourmalet"));
  EXPECT_EQ(lists[0]->points[8].name, "Collioure, port de p\u00eache");
}

}  // namespace
