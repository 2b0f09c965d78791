#include <algorithm>
#include <string>
#include <string_view>

#include "services/places/bing.h"
#include "services/places/geoplateforme.h"
#include "services/places/google.h"
#include "services/places/here.h"
#include "services/places/here_v8.h"
#include "services/places/nominatim.h"
#include "services/places/photon.h"
#include "services/places/reverse_geocoder.h"
#include "services/places/stoppable_geocoder.h"
#include "services/places/tomtom.h"
#include "services/places/viamichelin.h"
#include "services/places/waze.h"
#include "services/service_registry.h"
#include "services/service_request.h"

namespace {

// What tells the geocoders of two services apart: where they ask, how, and how they are answered.

struct GeocoderKind {
  int32_t id;
  std::string_view service;
  std::string (*buildUrl)(const ServiceAccess& access, std::string_view text);
  uint32_t (*read)(std::string_view reply, PlaceList& places);
};

struct ReverseKind {
  int32_t id;
  std::string_view service;
  std::string (*buildUrl)(const ServiceAccess& access, const CGpsCoordinate& position);
  uint32_t (*read)(std::string_view reply, const CGpsCoordinate& asked, PlaceList& places);
};

uint32_t ReadViaMichelin(std::string_view reply, PlaceList& places) {
  return ReadViaMichelinPlaces(reply, places);
}

// For replies that hold positions of their own.
template <uint32_t (*read)(std::string_view, PlaceList&)>
uint32_t WithItsPosition(std::string_view reply, const CGpsCoordinate&, PlaceList& places) {
  return read(reply, places);
}

constexpr GeocoderKind kGeocoders[] = {
    {provider::kGoogle, "google", GoogleGeocodingUrl, ReadGooglePlaces},
    {provider::kBing, "bing", BingGeocodingUrl, ReadBingPlaces},
    {provider::kTomTom, "tomtom-search", TomTomGeocodingUrl, ReadTomTomPlaces},
    {provider::kTomTomSearch, "tomtom-search", TomTomGeocodingUrl, ReadTomTomPlaces},
    {provider::kViaMichelin, "viamichelin", ViaMichelinGeocodingUrl, ReadViaMichelin},
    {provider::kWazeUs, "waze-us-search", WazeGeocodingUrl, ReadWazePlaces},
    {provider::kWazeWorld, "waze-world-search", WazeGeocodingUrl, ReadWazePlaces},
    {provider::kHere, "here-geocoder", HereGeocodingUrl, ReadHerePlaces},
    {provider::kNominatim, "nominatim", NominatimGeocodingUrl, ReadNominatimPlaces},
    {provider::kHereV8, "here-v8-search", HereV8GeocodingUrl, ReadHereV8Places},
    {provider::kGeoplateforme, "geoplateforme", GeoplateformeGeocodingUrl, ReadGeoplateformePlaces},
    {provider::kPhoton, "photon", PhotonGeocodingUrl, ReadPhotonPlaces},
};

constexpr ReverseKind kReverseGeocoders[] = {
    {provider::kGoogle, "google", GoogleReverseUrl, WithItsPosition<ReadGooglePlaces>},
    {provider::kBing, "bing", BingReverseUrl, WithItsPosition<ReadBingPlaces>},
    {provider::kTomTom, "tomtom-search", TomTomReverseUrl, WithItsPosition<ReadTomTomAddresses>},
    {provider::kTomTomSearch, "tomtom-search", TomTomReverseUrl,
     WithItsPosition<ReadTomTomAddresses>},
    {provider::kViaMichelin, "viamichelin", ViaMichelinReverseUrl,
     WithItsPosition<ReadViaMichelin>},
    {provider::kWazeUs, "waze-us-reverse", WazeReverseUrl, ReadWazeStreet},
    {provider::kWazeWorld, "waze-world-reverse", WazeReverseUrl, ReadWazeStreet},
    {provider::kHere, "here-reverse", HereReverseUrl, WithItsPosition<ReadHerePlaces>},
    {provider::kNominatim, "nominatim", NominatimReverseUrl, WithItsPosition<ReadNominatimPlace>},
    {provider::kHereV8, "here-v8-search", HereV8ReverseUrl, WithItsPosition<ReadHereV8Places>},
    {provider::kGeoplateforme, "geoplateforme", GeoplateformeReverseUrl,
     WithItsPosition<ReadGeoplateformePlaces>},
    {provider::kPhoton, "photon", PhotonReverseUrl, WithItsPosition<ReadPhotonPlaces>},
};

class HttpGeocoder final : public CStoppableGeocoder {
 public:
  explicit HttpGeocoder(const GeocoderKind& kind) : m_kind(kind) {}

  uint32_t Search(const std::string& query) override {
    m_results.clear();
    const Service& service = ServiceNamed(m_kind.service);
    std::string reply;
    m_status = AskService(service, m_kind.buildUrl(AccessTo(service), query), reply,
                          kWaitForever, m_stop);
    if (m_status == kServiceSuccess) m_status = m_kind.read(reply, m_results);
    return m_status;
  }
  int32_t GetId() const override { return m_kind.id; }

 private:
  const GeocoderKind& m_kind;
};

class HttpReverseGeocoder final : public CReverseGeocoder {
 public:
  explicit HttpReverseGeocoder(const ReverseKind& kind) : m_kind(kind) {}

  uint32_t Search(const CGpsCoordinate& position) override {
    m_results.clear();
    const Service& service = ServiceNamed(m_kind.service);
    std::string reply;
    m_status = AskService(service, m_kind.buildUrl(AccessTo(service), position), reply, m_waitMs);
    if (m_status == kServiceSuccess) m_status = m_kind.read(reply, position, m_results);
    return m_status;
  }
  int32_t GetId() const override { return m_kind.id; }

 private:
  const ReverseKind& m_kind;
};

template <typename Base, typename Finder, typename Kinds>
std::unique_ptr<Base> MakeFinder(const Kinds& kinds, int32_t id) {
  for (const auto& kind : kinds) {
    if (kind.id == id) return std::make_unique<Finder>(kind);
  }
  return nullptr;
}

}  // namespace

std::unique_ptr<CGeocoder> CServiceRegistry::CreateGeocoder(int32_t id) const {
  if (const GeocoderMaker maker = MakerFor(m_geocoders, id)) return maker();
  return MakeFinder<CGeocoder, HttpGeocoder>(kGeocoders, id);
}

std::unique_ptr<CReverseGeocoder> CServiceRegistry::CreateReverseGeocoder(int32_t id) const {
  if (const ReverseGeocoderMaker maker = MakerFor(m_reverseGeocoders, id)) return maker();
  return MakeFinder<CReverseGeocoder, HttpReverseGeocoder>(kReverseGeocoders, id);
}
