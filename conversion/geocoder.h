#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "model/point.h"

/// What an online service has answered. 100 + n stands for transport error n.
enum ServiceStatus : uint32_t {
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

  /// Asks the service for `query` and waits for its answer. Returns a ServiceStatus, and fills the
  /// results when that is 0. Failures of the transport are statuses too, never exceptions.
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

/// Makes a new geocoder of the provider with this id; null when there is none.
using GeocoderMaker = std::function<std::unique_ptr<CGeocoder>(int32_t providerId)>;

/// Makes a new geocoder of the provider that the user finds places with; null when there is none.
using FinderMaker = std::function<std::unique_ptr<CGeocoder>()>;
