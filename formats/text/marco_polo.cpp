#include "formats/text/marco_polo.h"

#include <algorithm>
#include <string>

#include "base/numbers.h"
#include "base/status.h"
#include "base/text.h"
#include "conversion/conversion_context.h"
#include "markup/profile_file.h"
#include "model/projection.h"

namespace {

// [CLIENT] has the request, the list's name and, for every station, its kind and how exactly it is
// placed; [COORDINATES] has "x,y" and [DESCRIPTION] the name of every station. Stations count
// from 1.
constexpr std::string_view kClient = "CLIENT";
constexpr std::string_view kCoordinates = "COORDINATES";
constexpr std::string_view kDescription = "DESCRIPTION";
constexpr std::string_view kRequest = "REQUEST";
constexpr std::string_view kRouteName = "ROUTENAME";
constexpr std::string_view kStation = "STATION";

// Every station is a place, and placed as exactly as can be.
constexpr std::string_view kPlacedExactly = "Standort,999999999\r\n";
constexpr std::string_view kLineEnd = "\r\n";

std::string StationKey(size_t number) { return std::string(kStation) + std::to_string(number); }

// Takes a decimal number off the front of a text. False, and both untouched, when there is none.
bool TakeWhole(std::string_view& text, int32_t& number) {
  const std::string_view start = TrimLeft(text, " \t\n\v\f\r");
  const size_t sign = start.starts_with('-') || start.starts_with('+') ? 1 : 0;
  const size_t end = std::min(start.find_first_not_of("0123456789", sign), start.size());
  if (end <= sign) return false;
  number = ParseWhole(start.substr(0, end));
  text = start.substr(end);
  return true;
}

// The result of scanf's "%d,%d": the comma stands right behind the first number, and what is
// behind the first thing that doesn't fit stays 0.
CGridCoordinate ScanGrid(std::string_view text) {
  CGridCoordinate place;
  if (TakeWhole(text, place.x) && text.starts_with(',')) {
    text.remove_prefix(1);
    TakeWhole(text, place.y);
  }
  return place;
}

size_t CountStations(const ProfileSection& coordinates) {
  const auto& keys = coordinates.Keys().Entries();
  return static_cast<size_t>(std::count_if(keys.begin(), keys.end(), [](const auto& key) {
    return ToLowerAscii(key.name).starts_with(ToLowerAscii(kStation));
  }));
}

void WriteSectionStart(ByteSink& sink, std::string_view name) { sink.Printf("[%s]\r\n", name); }

void WriteStationKey(ByteSink& sink, size_t number) {
  sink.Write(kStation);
  sink.Whole(static_cast<int64_t>(number));
  sink.Put('=');
}

}  // namespace

uint32_t ParseBcr(std::string_view bytes, PointLists& lists, ConversionContext& context) {
  const ProfileFile profile(bytes, ProfileText::kNarrow);
  context.TellEncoding(DetectEncoding(bytes).encoding);
  const ProfileSection client = profile.Section(kClient);
  if (client.GetText(kRequest) == kProfileError) return kStatusFileNotFound;

  auto& route = AddList<CGpsRoute>(lists);
  const std::string routeName = client.GetText(kRouteName);
  if (routeName != kProfileError) route.name = routeName;

  const ProfileSection coordinates = profile.Section(kCoordinates);
  const ProfileSection description = profile.Section(kDescription);
  const CMercatorProjection6371 projection;
  for (size_t number = 1;; ++number) {
    const std::string key = StationKey(number);
    const std::string place = coordinates.GetText(key);
    if (place == kProfileError) break;
    CGpsPoint& point = route.points.emplace_back();
    static_cast<CGpsCoordinate&>(point) = projection.Unproject(ScanGrid(place));
    const std::string name = description.GetText(key);
    if (name != kProfileError) point.name = name;
  }
  // Stations behind a gap in the numbers.
  context.Note(ConversionNote::kLinePassedOver, CountStations(coordinates) - route.Count());
  return kStatusSuccess;
}

void WriteBcrBody(ByteSink& sink, const CGpsPointArray& list) {
  WriteSectionStart(sink, kClient);
  sink.Printf("%s=TRUE\r\n%s=%s\r\n", kRequest, kRouteName, NarrowUtf8(list.name));
  for (size_t number = 1; number <= list.Count(); ++number) {
    WriteStationKey(sink, number);
    sink.Write(kPlacedExactly);
  }
  if (list.Count() == 0) return;  // a section comes into being with its first key

  WriteSectionStart(sink, kCoordinates);
  const CMercatorProjection6371 projection;
  size_t number = 0;
  for (const CGpsPoint& point : list.points) {
    const CGridCoordinate place = projection.Project(point);
    WriteStationKey(sink, ++number);
    sink.Whole(place.x);
    sink.Put(',');
    sink.Whole(place.y);
    sink.Write(kLineEnd);
  }

  WriteSectionStart(sink, kDescription);
  number = 0;
  for (const CGpsPoint& point : list.points) {
    WriteStationKey(sink, ++number);
    sink.Narrow(point.name);
    sink.Write(kLineEnd);
  }
}
