#pragma once

#include <memory>
#include <optional>
#include <string>

#include "conversion/country_service.h"
#include "conversion/geocoder.h"
#include "conversion/lookup_cache.h"
#include "model/point.h"

/// What readers and writers may ask of services, each distinct question once. A copy shares the
/// answers.
class Lookups {
 public:
  /// Whether anything can be asked for a position.
  bool HasGeocoder() const { return !isOffline && makeGeocoder; }

  /// The place that Google's geocoder knows best for an address in the spelling of the file;
  /// nothing where it knows none. For those who have made sure of `HasGeocoder`.
  std::optional<CGpsCoordinate> FindAddress(const std::string& address);

  /// The three letters of the country at a position; empty where they cannot be found out.
  std::string CountryAt(const CGpsCoordinate& position);

  GeocoderMaker makeGeocoder;           ///< none: no stop is looked up
  CountryService* countries = nullptr;  ///< outlives this; null: no country is looked up
  bool isOffline = false;               ///< nothing is asked of either
  bool lastForRun = false;  ///< the answers outlive the itinerary that they were asked for
  std::shared_ptr<LookupCache> answers = std::make_shared<LookupCache>();

 private:
  std::string ThreeLetters(const std::string& countryCode);
};
