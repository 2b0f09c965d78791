#pragma once

#include <cstdint>
#include <span>
#include <string_view>

/// Numbers of the providers. They are stored in settings and cross the page's protocol; those from
/// 100 on are ours.
namespace provider {
inline constexpr int32_t kStraight = 0;
inline constexpr int32_t kGoogle = 2;
inline constexpr int32_t kBing = 3;
inline constexpr int32_t kTomTom = 5;
inline constexpr int32_t kTomTom6 = 6;
inline constexpr int32_t kTomTomSearch = 7;
inline constexpr int32_t kGeonames = 8;
inline constexpr int32_t kViaMichelin = 9;
inline constexpr int32_t kOsrm = 10;
inline constexpr int32_t kIgn = 11;
inline constexpr int32_t kWazeUs = 17;
inline constexpr int32_t kWazeWorld = 18;
inline constexpr int32_t kHere = 19;
inline constexpr int32_t kOpenRouteService = 20;
inline constexpr int32_t kTripy = 21;
inline constexpr int32_t kOfflineRoads = 100;
inline constexpr int32_t kOfflinePlaces = 101;
inline constexpr int32_t kNominatim = 102;
inline constexpr int32_t kValhalla = 103;
inline constexpr int32_t kBRouter = 104;
inline constexpr int32_t kOrs = 105;
inline constexpr int32_t kHereV8 = 106;
inline constexpr int32_t kGoogleRoutes = 107;
inline constexpr int32_t kGeoplateforme = 108;
inline constexpr int32_t kPhoton = 109;
}  // namespace provider

/// A service that is known by its name only.
inline constexpr int32_t kNoProviderId = -1;

/// What a service can do, as a mask.
enum ServiceAbility : uint32_t {
  kCanDirections = 1,
  kCanGeocode = 2,
  kCanReverse = 4,
  kCanSearch = 8,
  kCanElevation = 16,
  kCanPanorama = 32,
  kCanCountry = 64,
  kCanLinks = 128,
};

/// Settings that a service cannot do without, as a mask.
enum ServiceNeed : uint32_t {
  kNeedsNothing = 0,
  kNeedsUrl = 1,
  kNeedsKey = 2,
  kNeedsAppId = 4,
};

/// One service: everything about it that is the same for all users.
struct Service {
  std::string_view name;  ///< on the command line and in the settings
  int32_t id;             ///< one of namespace provider, or kNoProviderId
  uint32_t labelTextId;
  uint32_t abilities;  ///< ServiceAbility
  uint32_t needs;      ///< ServiceNeed; kNeedsUrl: it has an address, by default or the user's
  /// Scheme, host and perhaps a path, without a slash at the end; empty: none by default.
  std::string_view address;
  /// The service whose account and settings, save for the address, count for this one.
  std::string_view account;
  std::string_view closedSince;  ///< "2025-06", or the year alone; empty: still open
  std::string_view successor;    ///< of a closed one: the name of a service, or of a product
};

/// All services in the order in which they are listed.
std::span<const Service> Services();

/// The service of this name or number, or null. Names are compared without regard to case.
const Service* FindService(std::string_view name);
const Service* FindService(int32_t id);

/// The service of a name that is known to stand in the table.
const Service& ServiceNamed(std::string_view name);

/// The one of a provider's services that does this work: geocoding, say, has an address of its own
/// with some. The provider itself where there is no other.
const Service& ServiceFor(const Service& provider, ServiceAbility ability);

/// The number of the provider that a service belongs to; kNoProviderId where there is none.
int32_t ProviderIdOf(const Service& service);
