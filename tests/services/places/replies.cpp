#include "tests/services/places/replies.h"

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

uint32_t ReadViaMichelin(std::string_view reply, PlaceList& places) {
  return ReadViaMichelinPlaces(reply, places);
}

uint32_t ReadStreet(std::string_view reply, PlaceList& places) {
  CGpsCoordinate asked;
  asked.latitude = 48.08;
  asked.longitude = 7.36;
  return ReadWazeStreet(reply, asked, places);
}

}  // namespace

const SampleReply kSampleReplies[14] = {
    {"google",
     R"({"results":[{"formatted_address":"Colmar","geometry":{"location":{"lat":48.08,"lng":7.36}}},)"
     R"({"name":"Le Puits","formatted_address":"1 rue des Clefs","geometry":{"location":)"
     R"({"lat":48.1,"lng":7.4}}}],"status":"OK"})",
     ReadGooglePlaces, 2, "Colmar", ""},
    {"bing",
     R"({"statusCode":200,"resourceSets":[{"estimatedTotal":1,"resources":[{"name":"Colmar",)"
     R"("point":{"type":"Point","coordinates":[48.08,7.36]}}]}]})",
     ReadBingPlaces, 1, "Colmar", ""},
    {"tomtom",
     R"({"summary":{"numResults":2},"results":[{"address":{"freeformAddress":"Colmar"},)"
     R"("position":{"lat":48.08,"lon":7.36}},{"address":{"freeformAddress":"Metz"},)"
     R"("position":{"lat":49.1,"lon":6.2}}]})",
     ReadTomTomPlaces, 1, "Colmar", ""},
    {"tomtom addresses",
     R"({"addresses":[{"address":{"freeformAddress":"Colmar"},"position":"48.08,7.36"}]})",
     ReadTomTomAddresses, 1, "Colmar", ""},
    {"here",
     R"({"Response":{"View":[{"Result":[{"Location":{"DisplayPosition":{"Latitude":48.08,)"
     R"("Longitude":7.36},"Address":{"Label":"Colmar"}}}]}]}})",
     ReadHerePlaces, 1, "Colmar", ""},
    {"here search",
     R"({"results":{"items":[{"position":[48.08,7.36],"title":"Pizza","vicinity":"rue des Clefs"},)"
     R"({"position":[48.09,7.37],"title":"Pasta"}]}})",
     ReadHereSearch, 2, "Pizza", "rue des Clefs"},
    {"viamichelin",
     R"(HTTPResponseLoaded({"locationList":[{"id":"31NDJ","formattedAddressLine":"1 rue des Clefs",)"
     R"("formattedCityLine":"68000 Colmar","area":"Haut-Rhin","countryLabel":"France",)"
     R"("coords":{"lon":7.36,"lat":48.08}}]}))",
     ReadViaMichelin, 1, "1 rue des Clefs, 68000 Colmar, Haut-Rhin, France", ""},
    {"waze", R"([{"location":{"lat":48.08,"lon":7.36},"name":"Colmar","state":"Alsace"}])",
     ReadWazePlaces, 1, "Colmar", "Alsace"},
    {"waze street", R"([{"street":"rue des Clefs","city":"Colmar","country":"France"}])",
     ReadStreet, 1, "rue des Clefs, Colmar, France", ""},
    {"nominatim", R"([{"place_id":1,"lat":"48.08","lon":"7.36","display_name":"Colmar"}])",
     ReadNominatimPlaces, 1, "Colmar", ""},
    {"photon",
     R"({"type":"FeatureCollection","features":[{"type":"Feature","geometry":{"type":"Point",)"
     R"("coordinates":[7.36,48.08]},"properties":{"name":"Maison","housenumber":"11",)"
     R"("street":"Rue des Marchands","postcode":"68000","city":"Colmar","country":"France"}}]})",
     ReadPhotonPlaces, 1, "Maison, 11 Rue des Marchands, 68000 Colmar, France", ""},
    {"here v8",
     R"({"items":[{"title":"Colmar","position":{"lat":48.08,"lng":7.36},)"
     R"("address":{"label":"Colmar, France"}}]})",
     ReadHereV8Places, 1, "Colmar", "Colmar, France"},
    {"geoplateforme",
     R"({"type":"FeatureCollection","features":[{"geometry":{"coordinates":[7.36,48.08]},)"
     R"("properties":{"label":"Colmar"}}]})",
     ReadGeoplateformePlaces, 1, "Colmar", ""},
    {"panorama",
     R"({"Location":{"lat":"48.08","lng":"7.36","description":"Rue des Clefs","region":"Colmar"}})",
     ReadPanorama, 1, "Rue des Clefs", "Colmar"},
};
