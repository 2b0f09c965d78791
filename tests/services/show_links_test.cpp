#include "services/links/show_links.h"

#include <string>

#include <gtest/gtest.h>

#include "base/product.h"
#include "base/text_ids.h"
#include "services/service_registry.h"
#include "tests/list_builder.h"

namespace {

const CGpsPoint kPoint = MakePoint(48.08078, -7.35584, "Rue & Clé", "a b");

TEST(ShowLinks, ShowThePoint) {
  EXPECT_EQ(ShowInGoogleLink(kPoint, 3),
            std::string(kProductSite) +
                "/planner/v2/ggl_maps.html?id=3&lat=48.080780&lng=-7.355840"
                "&name=Rue%20%26%20Cl%C3%A9&cmt=a%20b");
  EXPECT_EQ(ShowInBingLink(kPoint, 3),
            "https://www.bing.com/maps/default.aspx?cp=48.080780~-7.355840&style=r&lvl=10&v=2"
            "&sp=an.48.080780_-7.355840_00003_Rue%20%26%20Cl%C3%A9");
  EXPECT_EQ(ShowInHereLink(kPoint),
            "https://www.here.com/map=48.080780,-7.355840,16/title=Rue%20%26%20Cl%C3%A9");
}

TEST(ShowLinks, TomTomIsToldTheLanguageOfItsAccount) {
  CServiceAccount account(5);
  account.language = "fr";
  CServiceRegistry::Instance().Put(account);
  EXPECT_EQ(ShowInTomTomLink(kPoint),
            "https://www.tomtom.com/map/fr/?center=48.080780,-7.355840&zoom=10&ui=8");
  CServiceRegistry::Instance().Clear();
}

TEST(ShowLinks, StandInTheOrderOfTheMenu) {
  const std::vector<ShowLink> links = ShowLinks(kPoint, 0);
  ASSERT_EQ(links.size(), 4u);
  EXPECT_EQ(links[0].textId, 166u);
  EXPECT_EQ(links[1].textId, 167u);
  EXPECT_EQ(links[2].textId, 242u);
  EXPECT_EQ(links[3].textId, 330u);
  EXPECT_EQ(links[1].link, ShowInBingLink(kPoint, 0));
}

}  // namespace
