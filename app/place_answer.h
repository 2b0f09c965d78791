#pragma once

#include "app/options.h"
#include "app/service_outcome.h"
#include "services/places/place_reply.h"

/// A place with its altitude.
using AnswerPlaces = std::vector<CGpsPoint>;

/// The same places without legs, for the output.
AnswerPlaces PlacesOf(const PlaceList& places);

/// Prints an answer as text, a line a place, or as JSON, and tells of a failure. Returns the exit
/// status.
int AnswerWithPlaces(const Options& options, const ServiceChoice& choice,
                     const ServiceOutcome& outcome, const AnswerPlaces& places);
