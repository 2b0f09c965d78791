#include "formats/xml/location_xml.h"

#include <string>

#include <gtest/gtest.h>

#include "base/status.h"
#include "tests/formats/written_bytes.h"
#include "tests/list_builder.h"
#include "tests/temporary_folder.h"

namespace {

const std::string kDeclaration = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"no\"?>";

std::string LocBytes(const CGpsPointArray& list) { return BytesOf(WriteLocBody, list); }

TEST(LocWriter, WritesWaypoints) {
  const auto list = MakeList("lost", MakePoint(48.85661, 2.3522219, "Paris", "lost", 35.0),
                             MakePoint(-0.0000015, -51.5, "Macap\u00e1"));
  EXPECT_EQ(LocBytes(list), kDeclaration +
                                "<loc version=\"1.0\" src=\"Corvane Map 1.21\">"
                                "<waypoint><name id=\"Paris\"><![CDATA[Paris]]></name>"
                                "<coord lat=\"48.856610\" lon=\"2.352222\"/>"
                                "<type>Waypoint</type></waypoint>"
                                "<waypoint><name id=\"Macap\u00e1\"><![CDATA[Macap\u00e1]]></name>"
                                "<coord lat=\"-0.000002\" lon=\"-51.500000\"/>"
                                "<type>Waypoint</type></waypoint></loc>");
}

TEST(LocWriter, EscapesTheAttributeAndNotTheText) {
  EXPECT_EQ(LocBytes(MakeList("", MakePoint(1, 2, "\"<&'> \u0141\U0001F600"))),
            kDeclaration +
                "<loc version=\"1.0\" src=\"Corvane Map 1.21\">"
                "<waypoint><name id=\"&quot;&lt;&amp;&apos;&gt; \u0141\U0001F600\">"
                "<![CDATA[\"<&'> \u0141\U0001F600]]></name>"
                "<coord lat=\"1.000000\" lon=\"2.000000\"/>"
                "<type>Waypoint</type></waypoint></loc>");
}

TEST(LocWriter, WritesAnEmptyNameAsAnAttributeOnly) {
  EXPECT_EQ(LocBytes(MakeList("", MakePoint(1, 2))),
            kDeclaration +
                "<loc version=\"1.0\" src=\"Corvane Map 1.21\">"
                "<waypoint><name id=\"\"/><coord lat=\"1.000000\" lon=\"2.000000\"/>"
                "<type>Waypoint</type></waypoint></loc>");
}

TEST(LocWriter, EmptyListIsARootWithoutContent) {
  EXPECT_EQ(LocBytes(CGpsRoute()),
            kDeclaration + "<loc version=\"1.0\" src=\"Corvane Map 1.21\"/>");
}

TEST(LocWriter, WritesFilesAndTellsWhenItCannot) {
  const TemporaryFolder folder;
  const auto list = MakeList("", MakePoint(1, 2, "a"));
  EXPECT_EQ(WriteLoc(folder.WidePathTo("a.loc"), list, 0, true), kStatusSuccess);
  EXPECT_EQ(folder.Get("a.loc"), LocBytes(list));
  EXPECT_EQ(WriteLoc(folder.WidePathTo("missing/a.loc"), list, 0, true), kStatusFailure);
}

}  // namespace
