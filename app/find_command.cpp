#include "app/find_command.h"

#include <memory>
#include <string>

#include "app/place_answer.h"
#include "base/localized_text.h"
#include "base/text.h"
#include "base/text_ids.h"
#include "conversion/geocoder.h"
#include "services/places/place_search.h"
#include "services/service_registry.h"

namespace {

uint32_t Geocode(int32_t id, const std::string& text, PlaceList& places) {
  const auto geocoder = CServiceRegistry::Instance().CreateGeocoder(id);
  if (!geocoder) return kServiceInvalid;
  const uint32_t status = geocoder->Search(text);
  places = geocoder->GetResults();
  return status;
}

uint32_t SearchAround(int32_t id, const std::string& text, const ServiceOptions& options,
                      PlaceList& places) {
  const auto search = CreatePlaceSearch(id);
  if (!search) return kServiceInvalid;
  if (options.radius)
    search->Search(text, *options.near, *options.radius);
  else
    search->SearchNear(text, *options.near);
  const uint32_t status = search->Wait(-1);
  places = search->GetResults();
  return status;
}

}  // namespace

int RunFind(const Options& options) {
  const std::string& text = *options.services.typed.find;
  const bool isSearch = options.services.near.has_value();
  const ServiceAbility ability = isSearch ? kCanSearch : kCanGeocode;
  const ServiceChoice choice = ChooseService(options, ability, DefaultFinder(ability));
  PlaceList places;
  ServiceOutcome outcome;
  if (choice.exitStatus != 0) {
    outcome = OutcomeOf(choice);
  } else if (Trim(text, " \t\r\n").empty()) {
    outcome = {kServiceInvalid, std::string(LoadTextUtf8(kTextEmptySearch))};
  } else {
    const int32_t id = ProviderIdOf(*choice.provider);
    outcome = OutcomeOf(isSearch ? SearchAround(id, text, options.services, places)
                                 : Geocode(id, text, places));
  }
  return AnswerWithPlaces(options, choice, outcome, PlacesOf(places));
}
