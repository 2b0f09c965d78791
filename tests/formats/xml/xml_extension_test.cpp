// Four formats share the extension "xml": a file is tried with their readers in turn, so each must
// find no points in the files of the others.

#include <iterator>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "base/status.h"
#include "formats/xml/gopal.h"
#include "formats/xml/mapfactor.h"
#include "formats/xml/my_routes.h"
#include "formats/xml/navman.h"
#include "tests/formats/points_in.h"
#include "tests/formats/written_bytes.h"
#include "tests/list_builder.h"

namespace {

struct XmlFormat {
  std::string_view name;
  FormatParseFn parse;
  void (*writeBody)(ByteSink& sink, const CGpsPointArray& list);
};

const XmlFormat kFormats[] = {
    {"MyRoutes", ParseMyRoutesXml, WriteMyRoutesXmlBody},
    {"Navman", ParseNavman, WriteNavmanBody},
    {"GoPal", ParseGoPal, WriteGoPalBody},
    {"MapFactor", ParseMapFactor, WriteMapFactorBody},
};

TEST(SharedXmlExtension, EachReaderFindsPointsInItsOwnFilesOnly) {
  const auto list = MakeList("Tour", MakePoint(48.85661, 2.35222, "Paris"),
                             MakePoint(47.394144, 0.68484, "Tours"));
  for (const XmlFormat& written : kFormats) {
    const std::string bytes = BytesOf(written.writeBody, list);
    for (const XmlFormat& read : kFormats) {
      PointLists lists;
      EXPECT_EQ(read.parse(bytes, lists, ContextInPlace()), kStatusSuccess)
          << written.name << read.name;
      const size_t count = PointsIn(lists);
      if (written.name == read.name) {
        EXPECT_GE(count, 2u) << read.name;
      } else {
        EXPECT_EQ(count, 0u) << written.name << " read as " << read.name;
      }
    }
  }
}

}  // namespace
