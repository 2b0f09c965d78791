#include "conversion/country_lookup.h"

#include <utility>

#include "base/status.h"

namespace {

ICountryService* s_service = nullptr;

}  // namespace

CountryServiceRegistration::CountryServiceRegistration(ICountryService& service)
    : m_former(std::exchange(s_service, &service)) {}

CountryServiceRegistration::~CountryServiceRegistration() { s_service = m_former; }

uint32_t GetCountryCode(double latitude, double longitude, std::string& countryCode) {
  if (!s_service) return kStatusNotImplemented;
  return s_service->GetCountryCode(latitude, longitude, countryCode);
}

uint32_t GetCountryInfo(const std::string& countryCode, CCountryInfo& info) {
  if (!s_service) return kStatusNotImplemented;
  return s_service->GetCountryInfo(countryCode, info);
}
