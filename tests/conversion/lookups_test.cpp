#include "conversion/lookups.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "base/status.h"
#include "tests/list_builder.h"

namespace {

// Gives "RS" south of 45 degrees and "FR" north of it, and remembers what it was asked.
class TwoCountries final : public CountryService {
 public:
  uint32_t GetCountryCode(double latitude, double longitude, std::string& countryCode) override {
    asked.push_back(std::to_string(latitude) + " " + std::to_string(longitude));
    countryCode = latitude < 45 ? "RS" : "FR";
    return latitude < 0 ? kStatusFailure : kStatusSuccess;
  }
  uint32_t GetCountryInfo(const std::string& countryCode, CCountryInfo& info) override {
    asked.push_back(countryCode);
    info.isoAlpha3 = countryCode == "RS" ? "SRB" : "LONG";
    return kStatusSuccess;
  }

  std::vector<std::string> asked;
};

TEST(Lookups, KnowNoCountryWithoutAService) {
  Lookups lookups;
  EXPECT_EQ(lookups.CountryAt(MakePoint(44.5, -20.25)), "");
  EXPECT_FALSE(lookups.HasGeocoder());
}

TEST(Lookups, AskEachDistinctQuestionOnce) {
  TwoCountries countries;
  Lookups lookups;
  lookups.countries = &countries;
  EXPECT_EQ(lookups.CountryAt(MakePoint(44.5, -20.25)), "SRB");
  EXPECT_EQ(lookups.CountryAt(MakePoint(44.5, -20.25)), "SRB");
  EXPECT_EQ(lookups.CountryAt(MakePoint(44.5, 20.25)), "SRB");
  EXPECT_EQ(lookups.CountryAt(MakePoint(48, 2)), "");
  EXPECT_EQ(lookups.CountryAt(MakePoint(48, 2)), "");
  EXPECT_EQ(lookups.CountryAt(MakePoint(-1, 2)), "");
  EXPECT_EQ(lookups.CountryAt(MakePoint(-1, 2)), "");
  EXPECT_EQ(countries.asked,
            (std::vector<std::string>{"44.500000 -20.250000", "RS", "44.500000 20.250000",
                                      "48.000000 2.000000", "FR", "-1.000000 2.000000"}));
}

TEST(Lookups, AskNothingOffline) {
  TwoCountries countries;
  Lookups lookups;
  lookups.countries = &countries;
  lookups.makeGeocoder = [](int32_t) { return nullptr; };
  EXPECT_TRUE(lookups.HasGeocoder());
  lookups.isOffline = true;
  EXPECT_FALSE(lookups.HasGeocoder());
  EXPECT_EQ(lookups.CountryAt(MakePoint(44.5, -20.25)), "");
  EXPECT_TRUE(countries.asked.empty());
}

TEST(Lookups, FindNothingWithAGeocoderThatIsNotThere) {
  Lookups lookups;
  lookups.makeGeocoder = [](int32_t id) {
    EXPECT_EQ(id, 2);
    return nullptr;
  };
  EXPECT_FALSE(lookups.FindAddress("Paris").has_value());
}

}  // namespace
