#include "conversion/geocoder.h"

#include <algorithm>
#include <utility>

namespace {

// The living registrations, the latest last.
std::vector<const GeocoderRegistration*>& Registrations() {
  static std::vector<const GeocoderRegistration*> registrations;
  return registrations;
}

}  // namespace

std::unique_ptr<CGeocoder> CreateGeocoder(int32_t providerId) {
  const auto& registrations = Registrations();
  const auto found =
      std::find_if(registrations.rbegin(), registrations.rend(),
                   [providerId](const auto* entry) { return entry->m_providerId == providerId; });
  return found == registrations.rend() ? nullptr : (*found)->m_maker();
}

GeocoderRegistration::GeocoderRegistration(int32_t providerId, Maker maker)
    : m_providerId(providerId), m_maker(std::move(maker)) {
  Registrations().push_back(this);
}

GeocoderRegistration::~GeocoderRegistration() { std::erase(Registrations(), this); }
