#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "conversion/geocoder.h"
#include "services/offline/offline_places.h"
#include "services/places/place_search.h"
#include "services/places/reverse_geocoder.h"

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

/// Names a position after the town nearest to it.
class OfflineReverseGeocoder final : public CReverseGeocoder {
 public:
  uint32_t Search(const CGpsCoordinate& position) override;
  int32_t GetId() const override;

 private:
  OfflinePlaces m_places;
};

/// Finds towns around a position. A search has ended when `Search` returns.
class OfflinePlaceSearch final : public CPlaceSearch {
 public:
  void Search(const std::string& text, const CGpsCoordinate& position, uint32_t radius) override;
  void SearchNear(const std::string& text, const CGpsCoordinate& position) override {
    Search(text, position, kDefaultSearchRadius);
  }
  void Cancel() override {}
  int32_t GetId() const override;
  uint32_t Wait(int32_t) override { return m_status; }
  const PlaceList& GetResults() const override { return m_results; }
  void SetCompletion(Completion completion) override { m_completion = std::move(completion); }
  /// There is no request, and no reply to it.
  uint32_t BuildRequest(const std::string&, const CGpsCoordinate&, uint32_t,
                        std::string&) const override {
    return kServiceInvalid;
  }
  uint32_t ParseResponse(std::string_view, PlaceList& places) const override {
    places.clear();
    return kServiceInvalid;
  }

 private:
  OfflinePlaces m_places;
  PlaceList m_results;
  uint32_t m_status = kServiceInvalid;
  Completion m_completion;
};

/// Puts the towns behind their number: in the registry, and among the place searches.
void RegisterOfflinePlaces(CServiceRegistry& registry);
