#include "services/geonames_countries.h"

#include "conversion/geocoder.h"
#include "services/country.h"

namespace {

class Geonames final : public CountryService {
 public:
  uint32_t GetCountryCode(double latitude, double longitude, std::string& countryCode) override {
    CCountryInfo country;
    const uint32_t status = ::GetCountryCode(latitude, longitude, country);
    if (status == kServiceSuccess) countryCode = country.countryCode;
    return status;
  }
  uint32_t GetCountryInfo(const std::string& countryCode, CCountryInfo& info) override {
    return ::GetCountryInfo(countryCode, info);
  }
};

}  // namespace

CountryService& GeonamesCountries() {
  static Geonames countries;
  return countries;
}
