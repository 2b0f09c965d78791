#pragma once

#include <cstdint>
#include <string>

/// What is known about a country. Texts are UTF-8.
struct CCountryInfo {
  std::string countryName;
  std::string currencyCode;
  std::string countryCode;  ///< ISO 3166-1, two letters
  std::string capital;
  std::string languages;
  std::string isoAlpha3;  ///< ISO 3166-1, three letters
  std::string continent;
};

/// A service that knows countries. Calls block until its answer is there and give 0 for success.
/// They come from the thread that converts, one at a time.
class CountryService {
 public:
  virtual ~CountryService() = default;
  /// The code of the country at a position in decimal degrees.
  virtual uint32_t GetCountryCode(double latitude, double longitude, std::string& countryCode) = 0;
  virtual uint32_t GetCountryInfo(const std::string& countryCode, CCountryInfo& info) = 0;
};
