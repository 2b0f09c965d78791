#include "app/elevation_command.h"

#include "app/place_answer.h"
#include "services/places/elevation.h"

int RunElevation(const Options& options) {
  const ServiceChoice choice = ChooseService(options, kCanElevation, "google");
  AnswerPlaces places;
  ServiceOutcome outcome = OutcomeOf(choice);
  if (choice.exitStatus == 0) {
    CGpsPoint point;
    outcome = OutcomeOf(GetElevation(options.services.position, point));
    if (outcome.status == kServiceSuccess) places.push_back(point);
  }
  return AnswerWithPlaces(options, choice, outcome, places);
}
