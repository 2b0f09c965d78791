#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string_view>
#include <utility>

#include "services/service_account.h"

class CGeocoder;
class CReverseGeocoder;
class CRouteProvider;

/// The directions provider that is in use; the setting `RouteProvider`.
extern std::atomic<int32_t> currentProvider;

/// The accounts of all services of this process, by the number of the provider. Any thread may
/// read it while another changes it: what `Get` hands out is never changed afterwards.
///
/// These are the accounts that the program comes with and that the planner's page may replace.
/// Requests are made with `AccessTo` (services/service_access.h), where the user's own settings
/// stand above them.
class CServiceRegistry {
 public:
  using Account = std::shared_ptr<const CServiceAccount>;
  using RouteProviderMaker = std::function<std::unique_ptr<CRouteProvider>()>;
  using GeocoderMaker = std::function<std::unique_ptr<CGeocoder>()>;
  using ReverseGeocoderMaker = std::function<std::unique_ptr<CReverseGeocoder>()>;

  /// The registry of this process; empty until somebody fills it.
  static CServiceRegistry& Instance();

  /// The account as it is now. Throws std::invalid_argument, "Not valid provider", without one.
  Account Get(int32_t id) const;
  /// The account, or null.
  Account Find(int32_t id) const;
  /// The account, after making an empty one where there is none.
  Account GetOrCreate(int32_t id);
  bool Has(int32_t id) const;
  void Remove(int32_t id);
  /// Replaces the account of that number, or adds it.
  void Put(const CServiceAccount& account);
  /// The lowest number in the table; `provider::kStraight` when it is empty.
  int32_t LowestId() const;
  void Clear();

  /// Makers for numbers that the program itself does not know or knows otherwise; they are asked
  /// first. A null maker takes one away again.
  void RegisterRouteProvider(int32_t id, RouteProviderMaker maker);
  void RegisterGeocoder(int32_t id, GeocoderMaker maker);
  void RegisterReverseGeocoder(int32_t id, ReverseGeocoderMaker maker);

  /// A new directions provider; null for a number without one. The classes that the program brings
  /// come from `MakeRouteProvider` (services/directions/route_providers.h).
  std::unique_ptr<CRouteProvider> CreateRouteProvider(int32_t id) const;
  /// A new geocoder or reverse geocoder; null for a number without one.
  std::unique_ptr<CGeocoder> CreateGeocoder(int32_t id) const;
  std::unique_ptr<CReverseGeocoder> CreateReverseGeocoder(int32_t id) const;

 private:
  template <typename Maker>
  void Register(std::map<int32_t, Maker>& makers, int32_t id, Maker maker) {
    const std::lock_guard lock(m_mutex);
    if (maker)
      makers[id] = std::move(maker);
    else
      makers.erase(id);
  }
  // The maker that was registered; an empty one where there is none.
  template <typename Maker>
  Maker MakerFor(const std::map<int32_t, Maker>& makers, int32_t id) const {
    const std::lock_guard lock(m_mutex);
    const auto found = makers.find(id);
    return found == makers.end() ? Maker() : found->second;
  }

  mutable std::mutex m_mutex;
  std::map<int32_t, Account> m_accounts;
  std::map<int32_t, RouteProviderMaker> m_routeProviders;
  std::map<int32_t, GeocoderMaker> m_geocoders;
  std::map<int32_t, ReverseGeocoderMaker> m_reverseGeocoders;
};

/// Fills the registry with the accounts that the program comes with, their languages those of the
/// program's; once, at start, before anything is asked. Throws std::invalid_argument when it has
/// been filled before ("Provider already exist").
void FillServiceRegistry(CServiceRegistry& registry);

/// Takes what the planner's page answers to `GetProviders`: a JSON array of accounts. What cannot
/// be read changes nothing. If the page has taken the selected provider away, `currentProvider`
/// becomes the lowest number in the table; one that never had an account stays.
void UpdateServiceRegistry(CServiceRegistry& registry, std::string_view providers);
