#include "conversion/country_lookup.h"

#include <gtest/gtest.h>

#include "base/status.h"

namespace {

class FixedCountry final : public ICountryService {
 public:
  explicit FixedCountry(std::string code) : m_code(std::move(code)) {}
  uint32_t GetCountryCode(double latitude, double longitude, std::string& countryCode) override {
    asked = std::to_string(latitude) + " " + std::to_string(longitude);
    countryCode = m_code;
    return kStatusSuccess;
  }
  uint32_t GetCountryInfo(const std::string& countryCode, CCountryInfo& info) override {
    info.isoAlpha3 = countryCode + "X";
    return kStatusInvalidData;
  }

  std::string asked;

 private:
  std::string m_code;
};

TEST(CountryLookup, FailsWithoutAService) {
  std::string code = "kept";
  CCountryInfo info;
  EXPECT_EQ(GetCountryCode(1, 2, code), kStatusNotImplemented);
  EXPECT_EQ(GetCountryInfo("FR", info), kStatusNotImplemented);
  EXPECT_EQ(code, "kept");
  EXPECT_EQ(info.isoAlpha3, "");
}

TEST(CountryLookup, AsksTheLatestServiceAsLongAsItIsRegistered) {
  FixedCountry outer("FR");
  FixedCountry inner("RS");
  std::string code;
  const CountryServiceRegistration outerRegistration(outer);
  {
    const CountryServiceRegistration innerRegistration(inner);
    EXPECT_EQ(GetCountryCode(44.5, -20.25, code), kStatusSuccess);
    EXPECT_EQ(code, "RS");
    EXPECT_EQ(inner.asked, "44.500000 -20.250000");
    EXPECT_EQ(outer.asked, "");
  }
  EXPECT_EQ(GetCountryCode(1, 2, code), kStatusSuccess);
  EXPECT_EQ(code, "FR");
  CCountryInfo info;
  EXPECT_EQ(GetCountryInfo("FR", info), kStatusInvalidData);
  EXPECT_EQ(info.isoAlpha3, "FRX");
}

}  // namespace
