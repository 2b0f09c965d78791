#include "formats/xml/ign_rando.h"

#include <cstdlib>
#include <ctime>
#include <string>
#include <string_view>

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/status.h"
#include "conversion/conversion_context.h"
#include "platform/clock.h"
#include "tests/formats/written_bytes.h"
#include "tests/list_builder.h"
#include "tests/stopped_clock.h"

namespace {

using std::string_literals::operator""s;
using testing::HasSubstr;

std::string RdnBytes(const CGpsPointArray& list) { return BytesOf(WriteRdnBody, list); }

// The whole document around these elements, as it is written at 2001-02-03 04:05:06.
std::string Document(std::string_view count, std::string_view description,
                     std::string_view stages) {
  return fmt::format(
      "<?xml version=\"1.0\" encoding=\"windows-1252\" standalone=\"no\"?>"
      "<RANDONNEE>"
      "<ENTETE><VERSION_XML>1.1</VERSION_XML><VERSION_BASE>IHA03AA</VERSION_BASE>"
      "<DATE>03/02/2001</DATE><HEURE>04:05:06</HEURE></ENTETE>"
      "<INFORMATIONS><NB_ETAPES>{}</NB_ETAPES><DESCRIPTION>{}</DESCRIPTION></INFORMATIONS>"
      "{}</RANDONNEE>",
      count, description, stages);
}

class RdnWriter : public testing::Test {
 protected:
  const StoppedClock m_clock{"981173106"};
};

TEST_F(RdnWriter, WritesHeadAndStages) {
  const auto list = MakeList("Tour du lac", MakePoint(45.899247, 6.129384, "Annecy", "lost", 448.5),
                             MakePoint(-0.5, -51.1234567, "", "", -12.0));
  EXPECT_EQ(RdnBytes(list), Document("2", "Tour du lac",
                                     "<ETAPE><POSITION>45.899247,6.129384</POSITION>"
                                     "<ALTITUDE>448.500000</ALTITUDE>"
                                     "<DESCRIPTION_ETAPE>Annecy</DESCRIPTION_ETAPE></ETAPE>"
                                     "<ETAPE><POSITION>-0.500000,-51.123457</POSITION>"
                                     "<ALTITUDE>-12.000000</ALTITUDE></ETAPE>"));
}

TEST_F(RdnWriter, WritesAltitudeZeroAndAnEmptyDescription) {
  EXPECT_EQ(RdnBytes(MakeList("", MakePoint(1, 2, "a"))),
            Document("1", "",
                     "<ETAPE><POSITION>1.000000,2.000000</POSITION><ALTITUDE>0.000000</ALTITUDE>"
                     "<DESCRIPTION_ETAPE>a</DESCRIPTION_ETAPE></ETAPE>"));
  EXPECT_EQ(RdnBytes(CGpsRoute()), Document("0", "", ""));
}

TEST_F(RdnWriter, NarrowsAccentsToTheDeclaredEncoding) {
  EXPECT_EQ(RdnBytes(MakeList("For\u00eats d'\u00cele", MakePoint(1, 2, "Ch\u00e2teau \u00df"))),
            Document("1", "For\xEAts d&apos;\xCEle",
                     "<ETAPE><POSITION>1.000000,2.000000</POSITION><ALTITUDE>0.000000</ALTITUDE>"
                     "<DESCRIPTION_ETAPE>Ch\xE2teau \xDF</DESCRIPTION_ETAPE></ETAPE>"));
}

TEST_F(RdnWriter, MarksWhatEightBitsCannotHold) {
  EXPECT_EQ(RdnBytes(MakeList("\u041b\u0443\u0433\u0430", MakePoint(1, 2, "\u0141\U0001F600!"))),
            Document("1", "????",
                     "<ETAPE><POSITION>1.000000,2.000000</POSITION><ALTITUDE>0.000000</ALTITUDE>"
                     "<DESCRIPTION_ETAPE>??"
                     "?!</DESCRIPTION_ETAPE></ETAPE>"));
}

TEST_F(RdnWriter, EscapesNames) {
  EXPECT_EQ(RdnBytes(MakeList("A & B", MakePoint(1, 2, "\"<&'>"))),
            Document("1", "A &amp; B",
                     "<ETAPE><POSITION>1.000000,2.000000</POSITION><ALTITUDE>0.000000</ALTITUDE>"
                     "<DESCRIPTION_ETAPE>&quot;&lt;&amp;&apos;&gt;</DESCRIPTION_ETAPE></ETAPE>"));
}

TEST(RdnWriterClock, TimeIsUniversal) {
  // Thirteen hours ahead: the local hour is never the universal one.
  setenv("TZ", "EAST-13", 1);
  tzset();
  const CalendarTime before = UtcNow();
  const std::string bytes = RdnBytes(CGpsRoute());
  const CalendarTime after = UtcNow();
  unsetenv("TZ");
  tzset();

  const auto dateAndHour = [](const CalendarTime& time) {
    return fmt::format("<DATE>{:02}/{:02}/{:04}</DATE><HEURE>{:02}:", time.day, time.month,
                       time.year, time.hour);
  };
  EXPECT_THAT(bytes, testing::AnyOf(HasSubstr(dateAndHour(before)), HasSubstr(dateAndHour(after))));
}

TEST(RdnReader, ReadsStages) {
  PointLists lists;
  EXPECT_EQ(ParseRdn("<?xml version=\"1.0\" encoding=\"windows-1252\"?>\r\n"
                     "<RANDONNEE>\r\n"
                     "<INFORMATIONS><NB_ETAPES>7</NB_ETAPES><DESCRIPTION>Walk</DESCRIPTION>"
                     "</INFORMATIONS>\r\n"
                     "<ETAPE>\r\n <DESCRIPTION_ETAPE>Annecy</DESCRIPTION_ETAPE>\r\n"
                     " <ALTITUDE>448.5</ALTITUDE>\r\n <POSITION>45.899247,6.129384</POSITION>\r\n"
                     "</ETAPE>\r\n"
                     "<ETAPE><POSITION>-0.5, -51.25</POSITION></ETAPE>\r\n"
                     "</RANDONNEE>",
                     lists, ContextInPlace()),
            kStatusSuccess);
  ASSERT_EQ(lists.size(), 1u);
  EXPECT_EQ(lists[0]->GetKind(), kKindRoute);
  EXPECT_EQ(lists[0]->name, "");
  ASSERT_EQ(lists[0]->Count(), 2u);
  const CGpsPoint& first = lists[0]->points[0];
  EXPECT_EQ(first.latitude, 45.899247);
  EXPECT_EQ(first.longitude, 6.129384);
  EXPECT_EQ(first.altitude, 448.5);
  EXPECT_EQ(first.name, "Annecy");
  EXPECT_EQ(first.comment, "");
  const CGpsPoint& second = lists[0]->points[1];
  EXPECT_EQ(second.latitude, -0.5);
  EXPECT_EQ(second.longitude, -51.25);
  EXPECT_EQ(second.altitude, 0.0);
  EXPECT_EQ(second.name, "");
}

// The only point of a document whose stage has this position.
CGpsPoint PointAt(const std::string& position) {
  PointLists lists;
  EXPECT_EQ(ParseRdn("<RANDONNEE><ETAPE><POSITION>" + position + "</POSITION></ETAPE></RANDONNEE>",
                     lists, ContextInPlace()),
            kStatusSuccess);
  return lists.at(0)->At(0);
}

TEST(RdnReader, TakesTheFirstTwoPartsOfAPosition) {
  EXPECT_EQ(PointAt("1.5,2.5,300").latitude, 1.5);
  EXPECT_EQ(PointAt("1.5,2.5,300").longitude, 2.5);
  EXPECT_EQ(PointAt("1.5,2.5,300").altitude, 0.0);
}

TEST(RdnReader, EmptyPartsOfAPositionCount) {
  EXPECT_EQ(PointAt(",2.5").latitude, 0.0);
  EXPECT_EQ(PointAt(",2.5").longitude, 2.5);
  EXPECT_EQ(PointAt("1.5,").latitude, 1.5);
  EXPECT_EQ(PointAt("1.5,,2.5").longitude, 0.0);
}

TEST(RdnReader, APositionOfOnePartIsNone) {
  ConversionContext context;
  const ConversionScope scope(context);
  EXPECT_TRUE(PointAt("").IsNull());
  EXPECT_EQ(context.notes.Count(ConversionNote::kLinePassedOver), 0u);
  EXPECT_TRUE(PointAt("1.5").IsNull());
  EXPECT_EQ(context.notes.Count(ConversionNote::kLinePassedOver), 1u);
}

TEST(RdnReader, NothingOutsideOfAStageCounts) {
  PointLists lists;
  EXPECT_EQ(ParseRdn("<RANDONNEE><POSITION>1,2</POSITION><ALTITUDE>3</ALTITUDE>"
                     "<DESCRIPTION_ETAPE>no</DESCRIPTION_ETAPE><ETAPE/>"
                     "<POSITION>4,5</POSITION></RANDONNEE>",
                     lists, ContextInPlace()),
            kStatusSuccess);
  ASSERT_EQ(lists.at(0)->Count(), 1u);
  EXPECT_TRUE(lists[0]->points[0].IsNull());
  EXPECT_EQ(lists[0]->points[0].altitude, 0.0);
  EXPECT_EQ(lists[0]->points[0].name, "");
}

TEST(RdnReader, ReadsAccentsInEveryDeclaredEncoding) {
  const std::string rest =
      "?><RANDONNEE><ETAPE><DESCRIPTION_ETAPE>{}</DESCRIPTION_ETAPE></ETAPE></RANDONNEE>";
  PointLists lists;
  ParseRdn("<?xml version=\"1.0\" encoding=\"windows-1252\"" +
               fmt::format(fmt::runtime(rest), "For\xEAt \x80"),
           lists, ContextInPlace());
  ParseRdn("<?xml version=\"1.0\" encoding=\"UTF-8\"" +
               fmt::format(fmt::runtime(rest), "For\u00eat \u20ac"),
           lists, ContextInPlace());
  EXPECT_EQ(lists.at(0)->At(0).name, "For\u00eat \u0080");
  EXPECT_EQ(lists.at(1)->At(0).name, "For\u00eat \u20ac");
}

TEST(Rdn, RoundTripKeepsAccents) {
  const auto list = MakeList(
      "lost", MakePoint(45.899247, 6.129384, "Ch\u00e2teau <d'Annecy> & c\u00f4te", "", 448),
      MakePoint(-22.95192, -43.21049, "", "", 709.5));
  PointLists lists;
  EXPECT_EQ(ParseRdn(RdnBytes(list), lists, ContextInPlace()), kStatusSuccess);
  ASSERT_EQ(lists.at(0)->Count(), 2u);
  for (size_t i = 0; i < 2; ++i) {
    EXPECT_EQ(lists[0]->points[i], list.points[i]);
    EXPECT_EQ(lists[0]->points[i].altitude, list.points[i].altitude);
  }
}

}  // namespace
