#include "services/offline/offline_finders.h"

#include <memory>
#include <optional>

#include "services/service_registry.h"
#include "services/service_table.h"

namespace {

PlaceList PointsOf(const std::vector<OfflinePlace>& places) {
  PlaceList points;
  for (const OfflinePlace& place : places) points.push_back(place.ToPoint());
  return points;
}

// Without its file nobody can be asked.
uint32_t StatusOf(const OfflinePlaces& places, const PlaceList& results) {
  if (!places.IsOpen()) return kServiceInvalid;
  return results.empty() ? kServiceNoResults : kServiceSuccess;
}

}  // namespace

uint32_t OfflineGeocoder::Search(const std::string& query) {
  m_results = PointsOf(m_places.Find(query, kOfflineAnswers));
  return m_status = StatusOf(m_places, m_results);
}

int32_t OfflineGeocoder::GetId() const { return provider::kOfflinePlaces; }

uint32_t OfflineReverseGeocoder::Search(const CGpsCoordinate& position) {
  m_results.clear();
  if (const std::optional<OfflinePlace> place = m_places.Nearest(position))
    m_results.push_back(place->ToPoint());
  return m_status = StatusOf(m_places, m_results);
}

int32_t OfflineReverseGeocoder::GetId() const { return provider::kOfflinePlaces; }

void OfflinePlaceSearch::Search(const std::string& text, const CGpsCoordinate& position,
                                uint32_t radius) {
  m_results = PointsOf(m_places.FindNear(text, position, radius, kOfflineAnswers));
  m_status = StatusOf(m_places, m_results);
  if (m_completion) m_completion(m_status, m_results);
}

int32_t OfflinePlaceSearch::GetId() const { return provider::kOfflinePlaces; }

void RegisterOfflinePlaces(CServiceRegistry& registry) {
  registry.RegisterGeocoder(provider::kOfflinePlaces,
                            [] { return std::make_unique<OfflineGeocoder>(); });
  registry.RegisterReverseGeocoder(provider::kOfflinePlaces,
                                   [] { return std::make_unique<OfflineReverseGeocoder>(); });
  RegisterPlaceSearch(provider::kOfflinePlaces,
                      [] { return std::make_unique<OfflinePlaceSearch>(); });
}
