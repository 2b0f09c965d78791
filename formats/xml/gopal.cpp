#include "formats/xml/gopal.h"

#include "base/numbers.h"
#include "base/text.h"
#include "formats/xml/point_element_reader.h"
#include "model/projection.h"

namespace {

constexpr std::string_view kHead =
    "<?xml version=\"1.0\" encoding=\"ISO-8859-1\" standalone=\"yes\"?>\n"
    "<tour><options VehicleSpeedNonMotorway=\"27\" VehicleSpeedMotorway=\"33\" "
    "VehicleSpeedInPedestrianArea=\"2\" Type=\"3\" Tunnels=\"1\" TollRoad=\"1\" TTIMode=\"0\" "
    "PedestrianSpeed=\"1\" MotorWays=\"0\" Mode=\"2\" Ferries=\"1\" CyclistSpeed=\"4\"/>\n";

// The metres of the plane stand in the fields of the degrees until the point is whole.
bool TakeX(CGpsPoint& point, std::string_view text) {
  point.longitude = ParseWhole(text);
  return true;
}
bool TakeY(CGpsPoint& point, std::string_view text) {
  point.latitude = ParseWhole(text);
  return true;
}

constexpr PointField kAttributes[] = {
    {"City", TakeName}, {"Longitude", TakeX}, {"Latitude", TakeY}};

void FromPlane(CGpsPoint& point) {
  const CGpsCoordinate position = CMercatorProjection6371().Unproject(
      {TruncateToInt32(point.longitude), TruncateToInt32(point.latitude)});
  point.latitude = position.latitude;
  point.longitude = position.longitude;
}

}  // namespace

constinit const PointFormat kGoPalFormat{
    .point = {"dest"}, .attributes = kAttributes, .finish = FromPlane};

void WriteGoPalBody(ByteSink& sink, const CGpsPointArray& list) {
  const CMercatorProjection6371 projection;
  sink.Write(kHead);
  for (const CGpsPoint& point : list.points) {
    const CGridCoordinate grid = projection.Project(point);
    sink.Printf("<dest Longitude=\"%d\" Latitude=\"%d\" Country=\"0\" City=\"%s\"/>\n", grid.x,
                grid.y, NarrowUtf8(point.name));
  }
  sink.Write("</tour>\n");
}
