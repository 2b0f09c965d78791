#include "formats/xml/kmz.h"

#include <string>

#include <gtest/gtest.h>

#include "base/status.h"
#include "formats/xml/kml.h"
#include "tests/formats/points_in.h"
#include "tests/temporary_folder.h"
#include "tests/zip_bytes.h"

namespace {

// A document with one stop of this name.
std::string Document(const std::string& name) {
  return "<kml><Document><Placemark><name>" + name +
         "</name><Point><coordinates>2,48</coordinates></Point></Placemark></Document></kml>";
}

class Kmz : public testing::Test {
 protected:
  uint32_t Read(const std::string& bytes) {
    m_lists.clear();
    ConversionContext context;
    CKmlReader reader(m_lists, context);
    return ParseKmz(reader, bytes, context);
  }
  // The name of the only stop that was read.
  std::string StopName() { return PointsIn(m_lists) == 1 ? m_lists[0]->points[0].name : "none"; }

  PointLists m_lists;
};

TEST_F(Kmz, TheMainDocumentCounts) {
  EXPECT_EQ(Read(ZipBytes({{"a.kml", Document("a")}, {"doc.kml", Document("main")}})),
            kStatusSuccess);
  EXPECT_EQ(StopName(), "main");
  EXPECT_EQ(Read(ZipBytes({{"DOC.KML", Document("loud")}, {"a.kml", Document("a")}})),
            kStatusSuccess);
  EXPECT_EQ(StopName(), "loud");
}

TEST_F(Kmz, OtherwiseTheFirstOne) {
  EXPECT_EQ(Read(ZipBytes({{"files/", ""},
                           {"files/kml.png", "no document"},
                           {"files/b.KML", Document("b")},
                           {"a.kml", Document("a")}})),
            kStatusSuccess);
  EXPECT_EQ(StopName(), "b");
}

TEST_F(Kmz, WithoutADocumentItIsNone) {
  EXPECT_EQ(Read(ZipBytes({{"a.png", "picture"}})), kStatusFailure);
  EXPECT_EQ(Read("PK\x03\x04 and nothing more"), kStatusFailure);
  EXPECT_EQ(Read(""), kStatusFailure);
  EXPECT_EQ(Read(ZipBytes({{"doc.kml", Document("a")}}, "secret")), kStatusFailure);
}

TEST_F(Kmz, AnArchiveInTheArchiveIsNotOpened) {
  EXPECT_EQ(Read(ZipBytes({{"doc.kml", ZipBytes({{"doc.kml", Document("inner")}})}})),
            kStatusFailure);
  EXPECT_EQ(PointsIn(m_lists), 0u);
}

// 30 MB of text in 30 kB: no document packs so well.
TEST_F(Kmz, WhatUnpacksToFarTooMuchIsRefused) {
  std::string bomb = "<kml><Document>";
  bomb.append(30'000'000, ' ');
  EXPECT_EQ(Read(ZipBytes({{"doc.kml", bomb + "</Document></kml>"}})), kStatusFailure);
  // Half of it would do no harm.
  bomb.resize(15'000'000);
  EXPECT_EQ(Read(ZipBytes({{"doc.kml", bomb + "</Document></kml>"}})), kStatusSuccess);
}

TEST_F(Kmz, AnArchiveIsKnownByItsContent) {
  const TemporaryFolder folder;
  const std::string archive = ZipBytes({{"doc.kml", Document("a")}});
  EXPECT_TRUE(IsKmzFile(folder.Put("a.kmz", archive)));
  EXPECT_FALSE(IsKmzFile(folder.Put("b.kmz", Document("a"))));
  EXPECT_FALSE(IsKmzFile(folder.Put("c.kmz", "PK")));
  EXPECT_FALSE(IsKmzFile(folder.WidePathTo("missing.kmz")));
  for (const char* name : {"a.kmz", "b.kmz"}) {
    m_lists.clear();
    EXPECT_EQ(ReadKml(folder.WidePathTo(name), m_lists, true), kStatusSuccess) << name;
    EXPECT_EQ(StopName(), "a");
  }
  EXPECT_EQ(ReadKml(folder.WidePathTo("c.kmz"), m_lists, true), kStatusFailure);
}

}  // namespace
