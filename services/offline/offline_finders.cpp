#include "services/offline/offline_finders.h"

#include <memory>

#include "services/service_registry.h"
#include "services/service_table.h"

uint32_t OfflineGeocoder::Search(const std::string& query) {
  m_results.clear();
  for (const OfflinePlace& place : m_places.Find(query, kOfflineAnswers))
    m_results.push_back(place.ToPoint());
  m_status = m_results.empty() ? kServiceNoResults : kServiceSuccess;
  if (!m_places.IsOpen()) m_status = kServiceInvalid;
  return m_status;
}

int32_t OfflineGeocoder::GetId() const { return provider::kOfflinePlaces; }

void RegisterOfflinePlaces(CServiceRegistry& registry) {
  registry.RegisterGeocoder(provider::kOfflinePlaces,
                            [] { return std::make_unique<OfflineGeocoder>(); });
}
