#include "app/locate_command.h"

#include "app/place_answer.h"
#include "conversion/geocoder.h"
#include "services/places/reverse_geocoder.h"
#include "services/service_registry.h"

namespace {

uint32_t Locate(int32_t id, const CGpsCoordinate& position, PlaceList& places) {
  const auto geocoder = CServiceRegistry::Instance().CreateReverseGeocoder(id);
  if (!geocoder) return kServiceInvalid;
  const uint32_t status = geocoder->Search(position);
  places = geocoder->GetResults();
  return status;
}

}  // namespace

int RunLocate(const Options& options) {
  const ServiceChoice choice = ChooseService(options, kCanReverse, DefaultFinder(kCanReverse));
  PlaceList places;
  const ServiceOutcome outcome =
      choice.exitStatus != 0
          ? OutcomeOf(choice)
          : OutcomeOf(Locate(ProviderIdOf(*choice.provider), options.services.position, places));
  return AnswerWithPlaces(options, choice, outcome, PlacesOf(places));
}
