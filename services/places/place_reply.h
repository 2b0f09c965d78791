#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "model/point.h"
#include "services/reply.h"

/// Places in the order of the service's answer.
using PlaceList = std::vector<CGpsNamedPoint>;

/// Fills `places` by `read(document, hasStatus)`, as ReadJsonReply. No place at all is
/// `kServiceNoResults`; with any other status than 0 the list is empty.
template <typename Read>
uint32_t ReadPlaces(std::string_view reply, PlaceList& places, Read read) {
  places.clear();
  uint32_t status = ReadJsonReply(reply, read);
  if (status == kServiceSuccess && places.empty()) status = kServiceNoResults;
  if (status != kServiceSuccess) places.clear();
  return status;
}

/// The first element of an array, or null.
const CJsonValue* FirstOf(const CJsonValue& array);

/// A place of which both texts are valid UTF-8.
CGpsNamedPoint MakePlace(double latitude, double longitude, std::string name,
                         std::string comment = {});

/// Appends `part` behind ", "; an empty one leaves the text alone.
void JoinText(std::string& text, std::string_view part);

/// Element `index` of an array as a number.
double NumberAt(const CJsonValue& array, size_t index);
