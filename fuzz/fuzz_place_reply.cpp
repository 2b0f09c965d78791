// Any bytes as the reply of any service that knows places or countries. What comes out must be fit
// for the model, and empty unless the status is that of success. The first byte chooses the
// service.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <string_view>

#include "base/text.h"
#include "services/country.h"
#include "services/places/bing.h"
#include "services/places/elevation.h"
#include "services/places/geoplateforme.h"
#include "services/places/google.h"
#include "services/places/here.h"
#include "services/places/here_v8.h"
#include "services/places/nominatim.h"
#include "services/places/panorama.h"
#include "services/places/photon.h"
#include "services/places/tomtom.h"
#include "services/places/viamichelin.h"
#include "services/places/waze.h"

namespace {

void Expect(bool holds) {
  if (!holds) std::abort();
}

using ReadReply = uint32_t (*)(std::string_view reply, PlaceList& places);

uint32_t ReadViaMichelin(std::string_view reply, PlaceList& places) {
  return ReadViaMichelinPlaces(reply, places);
}

uint32_t ReadWazeStreets(std::string_view reply, PlaceList& places) {
  return ReadWazeStreet(reply, CGpsCoordinate(), places);
}

uint32_t ReadHeight(std::string_view reply, PlaceList& places) {
  CGpsPoint point;
  const uint32_t status = ReadElevation(reply, point);
  if (status == kServiceSuccess) places.push_back(point);
  return status;
}

uint32_t ReadCountries(std::string_view reply, PlaceList& places) {
  CCountryInfo country;
  CGpsNamedPoint place;
  ReadCountryCode(reply, country);
  ReadCountryInfo(reply, country);
  const uint32_t status = ReadMachineCountry(reply, country, place);
  Expect(IsValidUtf8(country.countryName) && IsValidUtf8(country.languages) &&
         IsValidUtf8(country.capital));
  if (status == kServiceSuccess) places.push_back(place);
  return status;
}

constexpr ReadReply kParsers[] = {
    ReadGooglePlaces, ReadBingPlaces,     ReadTomTomPlaces, ReadTomTomAddresses,
    ReadHerePlaces,   ReadHereSearch,     ReadHereV8Places, ReadNominatimPlaces,
    ReadPhotonPlaces, ReadNominatimPlace, ReadPanorama,     ReadGeoplateformePlaces,
    ReadWazePlaces,   ReadViaMichelin,    ReadWazeStreets,  ReadHeight,
    ReadCountries,
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size == 0) return 0;
  const std::string_view reply(reinterpret_cast<const char*>(data + 1), size - 1);
  PlaceList places;
  const uint32_t status = kParsers[data[0] % std::size(kParsers)](reply, places);
  Expect(places.empty() == (status != kServiceSuccess));
  for (const CGpsNamedPoint& place : places)
    Expect(IsValidUtf8(place.name) && IsValidUtf8(place.comment));
  return 0;
}
