#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "model/point.h"

/// What an online service has answered. 100 + n stands for transport error n.
enum EServiceStatus : uint32_t {
  kServiceSuccess = 0,
  kServiceNoResults = 1,
  kServiceOverLimit = 2,
  kServiceDenied = 3,
  kServiceInvalid = 4,  ///< a request that the service refuses; also one that was never sent
  kServiceNotFound = 5,
  kServiceOther = 6,
};

/// The geocoder of Google Maps.
inline constexpr int32_t kProviderGoogle = 2;

/// Turns an address into positions, one request an object.
class CGeocoder {
 public:
  CGeocoder() = default;
  CGeocoder(const CGeocoder&) = delete;
  CGeocoder& operator=(const CGeocoder&) = delete;
  virtual ~CGeocoder() = default;

  /// Asks the service for `query` and waits for its answer. Returns an EServiceStatus, and fills
  /// the results when that is 0. Failures of the transport are statuses too, never exceptions.
  virtual uint32_t Search(const std::string& query) = 0;
  /// The provider's id.
  virtual int32_t GetId() const = 0;
  /// The status of the last search.
  virtual uint32_t GetStatus() const { return m_status; }
  /// The places that the last search has found, the best first, named by their address.
  virtual const std::vector<CGpsNamedPoint>& GetResults() const { return m_results; }

 protected:
  std::vector<CGpsNamedPoint> m_results;
  uint32_t m_status = kServiceInvalid;
};

/// A new geocoder of this provider; null when there is none.
std::unique_ptr<CGeocoder> CreateGeocoder(int32_t providerId);

/// Puts a maker of geocoders behind a provider's id for as long as it lives; of several for one
/// id the latest counts. Registrations change and geocoders are made on one thread.
class GeocoderRegistration {
 public:
  using Maker = std::function<std::unique_ptr<CGeocoder>()>;

  GeocoderRegistration(int32_t providerId, Maker maker);
  ~GeocoderRegistration();
  GeocoderRegistration(const GeocoderRegistration&) = delete;
  GeocoderRegistration& operator=(const GeocoderRegistration&) = delete;

 private:
  friend std::unique_ptr<CGeocoder> CreateGeocoder(int32_t providerId);

  int32_t m_providerId;
  Maker m_maker;
};
