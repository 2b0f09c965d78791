#pragma once

#include <cstdint>
#include <vector>

#include "conversion/geocoder.h"
#include "model/point.h"
#include "net/manual_reset_event.h"

/// Turns a position into addresses, one request an object.
class CReverseGeocoder {
 public:
  CReverseGeocoder() = default;
  CReverseGeocoder(const CReverseGeocoder&) = delete;
  CReverseGeocoder& operator=(const CReverseGeocoder&) = delete;
  virtual ~CReverseGeocoder() = default;

  /// Asks the service for what is at `position` and waits for its answer. Returns a status as
  /// `CGeocoder::Search` does, and fills the results when that is 0.
  virtual uint32_t Search(const CGpsCoordinate& position) = 0;
  /// The provider's id.
  virtual int32_t GetId() const = 0;
  /// The status of the last search.
  virtual uint32_t GetStatus() const { return m_status; }
  /// The places that the last search has found, the best first, named by their address.
  virtual const std::vector<CGpsNamedPoint>& GetResults() const { return m_results; }

  /// For those who cannot wait for long: a search ends after so many milliseconds, with the status
  /// 100 + 12002.
  void SetWait(int32_t milliseconds) { m_waitMs = milliseconds; }

 protected:
  int32_t m_waitMs = kWaitForever;
  std::vector<CGpsNamedPoint> m_results;
  uint32_t m_status = kServiceInvalid;
};
