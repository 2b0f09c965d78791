#pragma once

#include <cstdint>
#include <string>

#include "conversion/geocoder.h"
#include "services/offline/offline_places.h"

class CServiceRegistry;

/// How many towns a look-up gives.
inline constexpr size_t kOfflineAnswers = 10;

/// Finds towns out of the file that comes with the program. Without the file it answers
/// kServiceInvalid.
class OfflineGeocoder final : public CGeocoder {
 public:
  uint32_t Search(const std::string& query) override;
  int32_t GetId() const override;

 private:
  OfflinePlaces m_places;
};

/// Puts the towns behind their number in the registry.
void RegisterOfflinePlaces(CServiceRegistry& registry);
