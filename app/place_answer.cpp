#include "app/place_answer.h"

#include "app/json_point.h"
#include "app/output_sink.h"
#include "base/format_text.h"
#include "conversion/geocoder.h"

namespace {

constexpr int kDecimals = 6;

void WriteJson(ByteSink& sink, const AnswerPlaces& places) {
  sink.Write(",\n \"places\": [");
  const char* separator = "\n  ";
  for (const CGpsPoint& place : places) {
    sink.Write(separator);
    WriteJsonPoint(sink, place);
    separator = ",\n  ";
  }
  sink.Write("]}\n");
}

// "48.077700,7.358000  189.5 m  Colmar (Alsace)"; the position can be typed again as it stands.
void WriteText(ByteSink& sink, const CGpsPoint& place, bool withAltitude) {
  sink.Fixed(place.latitude, kDecimals);
  sink.Put(',');
  sink.Fixed(place.longitude, kDecimals);
  if (withAltitude) {
    sink.Write("  ");
    sink.Fixed(place.altitude, 1);
    sink.Write(" m");
  }
  if (!place.name.empty()) sink.Write("  " + Printable(place.name));
  if (!place.comment.empty()) sink.Write(" (" + Printable(place.comment) + ")");
  sink.Put('\n');
}

}  // namespace

AnswerPlaces PlacesOf(const PlaceList& places) {
  return AnswerPlaces(places.begin(), places.end());
}

int AnswerWithPlaces(const Options& options, const ServiceChoice& choice,
                     const ServiceOutcome& outcome, const AnswerPlaces& places) {
  OutputSink sink;
  if (options.json && choice.provider) {
    WriteJsonOutcome(sink, choice, outcome);
    WriteJson(sink, places);
  } else {
    const bool withAltitude = options.services.typed.elevation.has_value();
    for (const CGpsPoint& place : places) WriteText(sink, place, withAltitude);
  }
  return Conclude(choice, outcome, sink.Finish());
}
