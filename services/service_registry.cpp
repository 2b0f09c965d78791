#include "services/service_registry.h"

#include <stdexcept>
#include <utility>

#include "services/service_table.h"
#include "settings/settings.h"

std::atomic<int32_t> currentProvider{kDefaultRouteProvider};

CServiceRegistry& CServiceRegistry::Instance() {
  static CServiceRegistry registry;
  return registry;
}

CServiceRegistry::Account CServiceRegistry::Find(int32_t id) const {
  const std::lock_guard lock(m_mutex);
  const auto found = m_accounts.find(id);
  return found == m_accounts.end() ? nullptr : found->second;
}

CServiceRegistry::Account CServiceRegistry::Get(int32_t id) const {
  Account account = Find(id);
  if (!account) throw std::invalid_argument("Not valid provider");
  return account;
}

CServiceRegistry::Account CServiceRegistry::GetOrCreate(int32_t id) {
  const std::lock_guard lock(m_mutex);
  Account& account = m_accounts[id];
  if (!account) account = std::make_shared<const CServiceAccount>(id);
  return account;
}

bool CServiceRegistry::Has(int32_t id) const { return Find(id) != nullptr; }

void CServiceRegistry::Remove(int32_t id) {
  const std::lock_guard lock(m_mutex);
  m_accounts.erase(id);
}

void CServiceRegistry::Put(const CServiceAccount& account) {
  Account copy = account.Clone();
  const std::lock_guard lock(m_mutex);
  m_accounts[account.id] = std::move(copy);
}

int32_t CServiceRegistry::LowestId() const {
  const std::lock_guard lock(m_mutex);
  return m_accounts.empty() ? int32_t{provider::kStraight} : m_accounts.begin()->first;
}

void CServiceRegistry::Clear() {
  const std::lock_guard lock(m_mutex);
  m_accounts.clear();
}

void CServiceRegistry::RegisterRouteProvider(int32_t id, RouteProviderMaker maker) {
  Register(m_routeProviders, id, std::move(maker));
}

void CServiceRegistry::RegisterGeocoder(int32_t id, GeocoderMaker maker) {
  Register(m_geocoders, id, std::move(maker));
}

void CServiceRegistry::RegisterReverseGeocoder(int32_t id, ReverseGeocoderMaker maker) {
  Register(m_reverseGeocoders, id, std::move(maker));
}
