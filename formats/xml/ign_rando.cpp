#include "formats/xml/ign_rando.h"

#include <string>

#include <fmt/printf.h>

#include "base/numbers.h"
#include "base/text.h"
#include "formats/xml/point_element_reader.h"
#include "markup/xml_writer.h"
#include "platform/clock.h"

namespace {

constexpr int kDecimals = 6;

bool TakePosition(CGpsPoint& point, std::string_view text) {
  const size_t comma = text.find(',');
  if (comma == std::string_view::npos) return text.empty();
  point.latitude = ParseReal(text.substr(0, comma));
  // A third part ends this number by its comma.
  point.longitude = ParseReal(text.substr(comma + 1));
  return true;
}

constexpr PointField kElements[] = {
    {"POSITION", TakePosition},
    {"ALTITUDE", TakeAltitude},
    {"DESCRIPTION_ETAPE", TakeName},
};

}  // namespace

constinit const PointFormat kRdnFormat{.point = {"ETAPE"}, .elements = kElements};

void WriteRdnBody(ByteSink& sink, const CGpsPointArray& list) {
  CXmlWriter writer(sink);
  writer.Declaration("windows-1252", "1.0");
  CXmlElement root = writer.Element("RANDONNEE");
  {
    const CalendarTime now = UtcNow();
    CXmlElement head = root.Child("ENTETE");
    head.Child("VERSION_XML").Text("1.1");
    head.Child("VERSION_BASE").Text("IHA03AA");
    head.Child("DATE").Text(fmt::sprintf("%02d/%02d/%04d", now.day, now.month, now.year));
    head.Child("HEURE").Text(fmt::sprintf("%02d:%02d:%02d", now.hour, now.minute, now.second));
  }
  {
    CXmlElement information = root.Child("INFORMATIONS");
    information.Child("NB_ETAPES").Text(std::to_string(list.Count()));
    information.Child("DESCRIPTION").Text(NarrowUtf8(list.name));
  }
  for (const CGpsPoint& point : list.points) {
    CXmlElement stage = root.Child("ETAPE");
    stage.Child("POSITION")
        .Text(ToFixedString(point.latitude, kDecimals) + "," +
              ToFixedString(point.longitude, kDecimals));
    stage.Child("ALTITUDE").Text(ToFixedString(point.altitude, kDecimals));
    if (!point.name.empty()) stage.Child("DESCRIPTION_ETAPE").Text(NarrowUtf8(point.name));
  }
}
