#include "formats/text/polstar.h"

#include <bit>
#include <string>

#include "base/numbers.h"
#include "base/status.h"
#include "conversion/conversion_context.h"
#include "io/byte_cursor.h"
#include "io/file_hole.h"

namespace {

// A record: int32 zero, int32 longitude, int32 latitude, double zero, double altitude. The whole
// numbers are little-endian, the doubles big-endian.
constexpr size_t kRecordSize = 28;
constexpr size_t kWordSize = 4;
constexpr size_t kDoubleSize = 8;

// Other than in most formats of this unit, positions are cut toward zero on both sides of it.
constexpr double kUnitsPerDegree = 100000.0;

double FromBigEndian(std::string_view bytes) {
  uint64_t value = 0;
  for (const char byte : bytes) value = value << 8 | static_cast<unsigned char>(byte);
  return std::bit_cast<double>(value);
}

std::string ToBigEndian(double number) {
  auto value = std::bit_cast<uint64_t>(number);
  std::string bytes(kDoubleSize, '\0');
  for (size_t i = kDoubleSize; i-- > 0; value >>= 8) bytes[i] = static_cast<char>(value & 0xFF);
  return bytes;
}

}  // namespace

uint32_t ParsePolstar(std::string_view bytes, PointLists& lists, ConversionContext& context) {
  auto& route = AddList<CGpsRoute>(lists);
  ByteCursor records(bytes);
  size_t empty = 0;
  while (records.Remaining() >= kRecordSize && context.GoesOn(records.Position())) {
    CGpsPoint& point = route.points.emplace_back();
    records.Skip(kWordSize);
    point.longitude = records.Int32() / kUnitsPerDegree;
    point.latitude = records.Int32() / kUnitsPerDegree;
    records.Skip(kDoubleSize);
    point.altitude = FromBigEndian(records.Take(kDoubleSize));
    empty = point.IsNull() ? empty + 1 : 0;
    if (empty == kRecordsOfAHole) return kStatusInvalidData;
  }
  if (!records.AtEnd()) context.Note(ConversionNote::kLinePassedOver);
  return kStatusSuccess;
}

void WritePolstarBody(ByteSink& sink, const CGpsPointArray& list) {
  for (const CGpsPoint& point : list.points) {
    sink.Int32(0);
    sink.Int32(TruncateToInt32(point.longitude * kUnitsPerDegree));
    sink.Int32(TruncateToInt32(point.latitude * kUnitsPerDegree));
    sink.Write(ToBigEndian(0.0));
    sink.Write(ToBigEndian(point.altitude));
  }
}
