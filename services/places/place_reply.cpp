#include "services/places/place_reply.h"

#include <utility>

const CJsonValue* FirstOf(const CJsonValue& array) {
  const CJsonArray& values = array.AsArray();
  return values.Count() == 0 ? nullptr : &values.At(0);
}

CGpsNamedPoint MakePlace(double latitude, double longitude, std::string name, std::string comment) {
  CGpsNamedPoint place;
  place.latitude = latitude;
  place.longitude = longitude;
  place.name = std::move(name);
  place.comment = std::move(comment);
  return place;
}

void JoinText(std::string& text, std::string_view part) {
  if (part.empty()) return;
  if (!text.empty()) text += ", ";
  text += part;
}

double NumberAt(const CJsonValue& array, size_t index) {
  return array.AsArray().At(index).AsNumber();
}
