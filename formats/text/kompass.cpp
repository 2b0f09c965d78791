#include "formats/text/kompass.h"

#include <vector>

#include "base/numbers.h"
#include "base/text.h"
#include "conversion/conversion_lines.h"

namespace {

constexpr int kAngleDecimals = 6;
constexpr int kAltitudeDecimals = 2;

}  // namespace

uint32_t ParseKompass(std::string_view bytes, PointLists& lists, ConversionContext& context) {
  auto& route = AddList<CGpsRoute>(lists);
  ConversionLines lines(bytes.substr(DetectEncoding(bytes).skipped), context);
  std::vector<std::string_view> fields;
  for (std::string_view line; lines.Next(line);) {
    SplitFirstFields(line, ',', 3, fields);
    CGpsPoint point;
    if (fields.size() < 2 || !TryParseReal(fields[0], point.latitude)) {
      if (!line.empty()) context.Note(ConversionNote::kLinePassedOver);
      continue;
    }
    point.longitude = ParseReal(fields[1]);
    if (fields.size() > 2) point.altitude = ParseReal(fields[2]);
    route.points.push_back(std::move(point));
  }
  return kStatusSuccess;
}

void WriteKompassBody(ByteSink& sink, const CGpsPointArray& list) {
  for (const CGpsPoint& point : list.points) {
    sink.Fixed(point.latitude, kAngleDecimals);
    sink.Put(',');
    sink.Fixed(point.longitude, kAngleDecimals);
    sink.Put(',');
    sink.Fixed(point.altitude, kAltitudeDecimals);
    sink.Write("\r\n");
  }
}
