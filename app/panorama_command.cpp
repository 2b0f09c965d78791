#include "app/panorama_command.h"

#include "app/place_answer.h"
#include "services/places/panorama.h"

int RunPanorama(const Options& options) {
  const ServiceChoice choice = ChooseService(options, kCanPanorama, "google-panorama");
  PlaceList places;
  const ServiceOutcome outcome =
      choice.exitStatus != 0 ? OutcomeOf(choice)
                             : OutcomeOf(GetStreetViewLocation(options.services.position, places));
  return AnswerWithPlaces(options, choice, outcome, PlacesOf(places));
}
