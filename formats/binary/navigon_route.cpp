#include "formats/binary/navigon_route.h"

#include <cmath>
#include <string>

#include "conversion/conversion_context.h"
#include "io/byte_cursor.h"
#include "platform/clock.h"

namespace {

using std::string_view_literals::operator""sv;

// Head of the file.
constexpr std::string_view kMagic = "\xFF\xFF\x00\x00\x01\x00\x00\x00\x00\x00\x00\x00"sv;
constexpr size_t kRestOffset = 12;        // the file's size behind the magic
constexpr int32_t kHeadBehindMagic = 20;  // without the id text

// Head of a record, behind its size: two words, the length of a name, and the name.
constexpr size_t kRecordNameLengthOffset = 12;
constexpr int32_t kSubRecordCount = 2;

// Sub-records: type, 4, length of what follows these three.
constexpr int32_t kPositionType = 0x28;
constexpr int32_t kPositionTypeB = 0x3C;
constexpr int32_t kPositionTypeC = 0x8C;
constexpr int32_t kPositionSizeWithoutName = 48;
constexpr int32_t kCountryType = 10;
constexpr int32_t kCountrySize = 15;
constexpr int32_t kCountryTextLength = 3;

// Packed coordinates: a sign, eleven bits of exponent and 28 of mantissa, reckoned in 1/10000000
// degree from 256 degrees down.
constexpr double kUnitsPerDegree = 10000000.0;
constexpr double kTopBase = 2560000000.0;
constexpr int kTopExponent = 0x407;
constexpr uint64_t kSignBit = uint64_t{1} << 39;
constexpr int kMantissaBits = 28;
constexpr uint64_t kMantissaMask = (uint64_t{1} << kMantissaBits) - 1;
constexpr int kMantissaSteps[] = {4, 8, 8, 8};

bool IsPosition(int32_t type) {
  return type == kPositionType || type == kPositionTypeB || type == kPositionTypeC;
}

// Reads a position sub-record behind its head. False when it is cut.
bool TakePosition(ByteCursor& body, CGpsPoint& point) {
  body.Skip(4);
  const std::string_view name = body.Take(body.Uint32());
  body.Skip(7);
  const double longitude = UnpackCoordinate(body.Uint64());
  const double latitude = UnpackCoordinate(body.Uint64());
  if (body.Overrun()) return false;
  if (point.name.empty()) point.name = name;
  if (point.IsNull()) {
    point.longitude = longitude;
    point.latitude = latitude;
  }
  return true;
}

// Reads one record, which begins with its size. Nothing is read beyond its end.
CGpsPoint ParseRecord(std::string_view bytes) {
  CGpsPoint point;
  ByteCursor record(bytes, kRecordNameLengthOffset);
  point.name = record.Take(record.Uint32());
  record.Skip(4);
  const int32_t count = record.Int32();
  record.Skip(4);
  for (int32_t i = 0; i < count; ++i) {
    const int32_t type = record.Int32();
    record.Skip(4);
    const int32_t length = record.Int32();
    if (record.Overrun() || length < 0) break;
    ByteCursor body(bytes, record.Position());
    if (IsPosition(type) && !TakePosition(body, point)) break;
    record.Skip(static_cast<size_t>(length));
  }
  return point;
}

// The three letters of the stop's country, or nothing.
std::string CountryOf(const CGpsPoint& stop, ConversionContext& context) {
  std::string country = context.lookups.CountryAt(stop);
  if (country.empty()) context.Note(ConversionNote::kCountryNotFound);
  return country;
}

void WriteSubRecordHead(ByteSink& sink, int32_t type, int32_t length) {
  sink.Int32(type);
  sink.Int32(4);
  sink.Int32(length);
}

void WriteRecord(ByteSink& sink, const CGpsPoint& point, const std::string& country) {
  const auto idA = static_cast<int32_t>(UnixNow());
  const int32_t idB = idA / 2;
  const auto nameLength = static_cast<int32_t>(point.name.size());
  // Two sub-record heads, their bodies, and what stands around them.
  constexpr int32_t kSizeWithoutTexts = 24 + 12 + kPositionSizeWithoutName + 12 + 12 + 24;

  sink.Int32(kSizeWithoutTexts + nameLength + static_cast<int32_t>(country.size()));
  sink.Zeros(12);
  sink.Int32(1);
  sink.Int32(kSubRecordCount);
  sink.Int32(idB);

  WriteSubRecordHead(sink, kPositionType, nameLength + kPositionSizeWithoutName);
  sink.Int32(0);
  sink.Int32(nameLength);
  sink.Write(point.name);
  sink.Zeros(7);
  sink.Uint64(PackCoordinate(point.longitude));
  sink.Uint64(PackCoordinate(point.latitude));
  sink.Put('\0');
  sink.Int32(8);
  sink.Int32(nameLength);
  sink.Int32(0);
  sink.Int32(idA);

  // Both lengths are those of a text of three letters, even without one.
  WriteSubRecordHead(sink, kCountryType, kCountrySize);
  sink.Int32(0);
  sink.Int32(kCountryTextLength);
  sink.Write(country);
  sink.Int32(idB);

  sink.Int32(idA);
  sink.Int32(0);
  sink.Zeros(16);
}

// The id text of a file written at that time.
std::string IdText(const CalendarTime& time) {
  return fmt::sprintf("R%04d%02d%02d-%02d:%02d:%02d", time.year, time.month, time.day, time.hour,
                      time.minute, time.second);
}

std::string Records(const CGpsPointArray& list, ConversionContext& context) {
  StringSink records;
  for (const CGpsPoint& point : list.points) WriteRecord(records, point, CountryOf(point, context));
  return records.Bytes();
}

void WriteFile(ByteSink& sink, const std::string& id, size_t count, const std::string& records) {
  sink.Write(kMagic);
  sink.Int32(static_cast<int32_t>(kHeadBehindMagic + id.size() + records.size()));
  sink.Int32(0);
  sink.Int32(static_cast<int32_t>(id.size()));
  sink.Write(id);
  sink.Uint64(count);
  sink.Write(records);
}

}  // namespace

uint32_t ParseNavigonRoute(std::string_view bytes, PointLists& lists, ConversionContext& context) {
  ByteCursor head(bytes, kRestOffset);
  const int64_t rest = head.Int32();
  if (!bytes.starts_with(kMagic) || head.Overrun() ||
      static_cast<int64_t>(bytes.size() - kMagic.size()) != rest)
    return kStatusFailure;

  auto& route = AddList<CGpsRoute>(lists);
  head.Skip(4);
  head.Skip(head.Uint32());
  const uint64_t count = head.Uint64();
  size_t start = head.Position();
  for (uint64_t i = 0; i < count && start < bytes.size() && context.GoesOn(start); ++i) {
    ByteCursor record(bytes, start);
    const int32_t size = record.Int32();
    // A record that does not lead on would be read for ever.
    if (record.Overrun() || size < 0) {
      context.Note(ConversionNote::kLinePassedOver);
      break;
    }
    const size_t length = sizeof size + static_cast<size_t>(size);
    CGpsPoint point = ParseRecord(bytes.substr(start, length));
    if (point.IsValid()) {
      route.points.push_back(std::move(point));
    } else {
      context.Note(ConversionNote::kPointWithoutPosition);
    }
    start += length;
  }
  return kStatusSuccess;
}

uint32_t WriteNavigonRoute(const WideString& path, const CGpsPointArray& list, uint32_t, bool) {
  // The look-ups may take their time, so the file is opened behind them.
  ContextInPlace context;
  const std::string id = IdText(LocalNow());
  const std::string records = Records(list, context);
  return WriteFileWith(path, context,
                       [&](ByteSink& sink) { WriteFile(sink, id, list.Count(), records); });
}

void WriteNavigonRouteBody(ByteSink& sink, const CGpsPointArray& list, ConversionContext& context) {
  const std::string id = IdText(LocalNow());
  WriteFile(sink, id, list.Count(), Records(list, context));
}

uint64_t PackCoordinate(double degrees) {
  double rest = std::abs(degrees * kUnitsPerDegree);
  if (rest == 0.0 || !std::isfinite(rest)) return 0;
  double base = kTopBase;
  int exponent = kTopExponent;
  for (; rest < base; --exponent) base /= 2;
  for (; rest >= 2 * base; ++exponent) base *= 2;
  if (exponent <= 0) return 0;

  rest -= base;
  uint64_t mantissa = 0;
  double step = base;
  for (const int bits : kMantissaSteps) {
    step /= 1 << bits;
    const double part = std::floor(rest / step);
    rest -= part * step;
    mantissa = mantissa << bits | static_cast<uint64_t>(part);
  }
  const uint64_t sign = degrees < 0 ? kSignBit : 0;
  return sign | static_cast<uint64_t>(exponent) << kMantissaBits | mantissa;
}

double UnpackCoordinate(uint64_t packed) {
  const uint64_t magnitude = packed & (kSignBit - 1);
  if (magnitude == 0) return 0.0;
  const auto exponent = static_cast<int>(magnitude >> kMantissaBits);
  const double base = std::ldexp(kTopBase, exponent - kTopExponent);
  const auto mantissa = static_cast<double>(magnitude & kMantissaMask);
  const double degrees = (base + mantissa * std::ldexp(base, -kMantissaBits)) / kUnitsPerDegree;
  return packed & kSignBit ? -degrees : degrees;
}
