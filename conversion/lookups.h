#pragma once

#include <functional>
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
  bool HasGeocoder() {
    Prepare();
    return !isOffline && makeGeocoder;
  }

  /// The place that Google's geocoder knows best for an address in the spelling of the file;
  /// nothing where it knows none. For those who have made sure of `HasGeocoder`.
  std::optional<CGpsCoordinate> FindAddress(const std::string& address);

  /// Whether anything can be asked for the stops of links.
  bool HasFinder() {
    Prepare();
    return static_cast<bool>(makeFinder);
  }

  /// The place that the finder in use knows best for the text of a link; nothing where it knows
  /// none. For those who have made sure of `HasFinder`.
  std::optional<CGpsCoordinate> FindPlace(const std::string& text);

  /// The three letters of the country at a position; empty where they cannot be found out.
  std::string CountryAt(const CGpsCoordinate& position);

  /// Whether the page that a link stands for may be fetched.
  bool MayFetch() {
    Prepare();
    return mayFetch;
  }

  /// Fills in the makers below, before the first question: most itineraries ask none, and need not
  /// wait for the settings of the services.
  std::function<void(Lookups&)> prepare;
  GeocoderMaker makeGeocoder;           ///< none: no stop is looked up
  FinderMaker makeFinder;               ///< none: no stop of a link is looked up
  CountryService* countries = nullptr;  ///< outlives this; null: no country is looked up
  bool isOffline = false;               ///< nothing is asked of geocoder and countries
  bool mayFetch = false;                ///< pages may be fetched
  bool lastForRun = false;  ///< the answers outlive the itinerary that they were asked for
  std::shared_ptr<LookupCache> answers = std::make_shared<LookupCache>();

 private:
  void Prepare();
  std::string ThreeLetters(const std::string& countryCode);
};
