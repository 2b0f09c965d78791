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
class ICountryService {
 public:
  virtual ~ICountryService() = default;
  /// The code of the country at a position in decimal degrees.
  virtual uint32_t GetCountryCode(double latitude, double longitude, std::string& countryCode) = 0;
  virtual uint32_t GetCountryInfo(const std::string& countryCode, CCountryInfo& info) = 0;
};

/// Makes a service the one that is asked for as long as this object lives. Of several the latest
/// counts, and it must end first. Services change on one thread, while none is asked.
class CountryServiceRegistration {
 public:
  explicit CountryServiceRegistration(ICountryService& service);
  ~CountryServiceRegistration();
  CountryServiceRegistration(const CountryServiceRegistration&) = delete;
  CountryServiceRegistration& operator=(const CountryServiceRegistration&) = delete;

 private:
  ICountryService* m_former;
};

/// Asks the service in use. kStatusNotImplemented when there is none.
uint32_t GetCountryCode(double latitude, double longitude, std::string& countryCode);
uint32_t GetCountryInfo(const std::string& countryCode, CCountryInfo& info);
