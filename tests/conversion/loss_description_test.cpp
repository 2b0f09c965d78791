#include "conversion/loss_description.h"

#include <string>

#include <gtest/gtest.h>

#include "base/localized_text.h"

namespace {

std::string Described(size_t comments, size_t altitudes, double shift) {
  LossCheck check;
  check.losses.stops = 3;
  check.losses.commentsChanged = comments;
  check.losses.altitudesChanged = altitudes;
  check.losses.largestShift = shift;
  return DescribeCheck(u"a.gpx", u"b.itn", check);
}

TEST(LossDescription, TellsOnlyOfDetailsThatAreLost) {
  SetLanguage(Language::kEnglish);
  EXPECT_EQ(Described(2, 1, 0.5),
            "b.itn: 2 comments and 1 altitude dropped; positions move by up to 0.5 m\n");
  EXPECT_EQ(Described(1, 0, 0.5), "b.itn: 1 comment dropped; positions move by up to 0.5 m\n");
  EXPECT_EQ(Described(0, 8, 1.25), "b.itn: 8 altitudes dropped; positions move by up to 1.2 m\n");
  EXPECT_EQ(Described(0, 0, 5.5), "b.itn: positions move by up to 5.5 m\n");
  EXPECT_EQ(Described(0, 0, 5.0), "b.itn: checked: all 3 stops are as they were, within 5.0 m\n");
}

TEST(LossDescription, FollowsTheLanguageInItsVerb) {
  SetLanguage(Language::kGerman);
  const std::string one = Described(1, 0, 0.5);
  const std::string several = Described(0, 2, 0.5);
  SetLanguage(Language::kEnglish);
  EXPECT_EQ(one, "b.itn: 1 Kommentar entfällt; Positionen verschieben sich um bis zu 0,5 m\n");
  EXPECT_EQ(several, "b.itn: 2 Höhen entfallen; Positionen verschieben sich um bis zu 0,5 m\n");
}

}  // namespace
