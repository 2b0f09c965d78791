#include "formats/binary/autoroute.h"

#include <cstdlib>
#include <new>

#include "base/numbers.h"
#include "base/status.h"
#include "base/text.h"
#include "conversion/format_frame.h"
#include "io/byte_cursor.h"
#include "io/compound_file.h"
#include "resources/route_templates.h"

namespace {

constexpr std::string_view kJourneyStream = "Journey";
constexpr std::string_view kMapPropertiesStream = "\005Olhud5yvVwudb10uAaq5ezn4Ac";

// The map properties, a serialized property set.
constexpr size_t kFirstSectionOffset = 44;
constexpr uint32_t kMapVersionProperty = 0x60002;
constexpr uint32_t kTypeInt32 = 3;

// The head of a journey. Stops begin right behind it.
constexpr size_t kStateOffset = 12;
constexpr size_t kCountOffset = 16;
constexpr size_t kModeOffset = 20;
constexpr size_t kRecordsOffset = 32;
constexpr int32_t kWrittenState = 0;
constexpr int32_t kWrittenMode = 6;

// The head of a stop. Newer programs have a longer one, at whose end the name's length stands
// again.
constexpr size_t kPositionOffset = 32;
constexpr size_t kNameLengthOffset = 40;
constexpr size_t kNameLengthOffset14 = 48;
constexpr size_t kNameLengthOffset16 = 64;
constexpr int32_t kLongHeadVersion = 14;
constexpr int32_t kLongestHeadVersion = 16;

// The mark between the two names, followed by the length of the second one.
constexpr std::string_view kWideNameMark = "\xFF\xFE\xFF";

// The tail of a stop: 19 words of 32 bits, with two more positions.
constexpr size_t kTailPositionOffset = 9 * sizeof(uint32_t);
constexpr size_t kTailSize = 19 * sizeof(uint32_t);

// The plain file.
constexpr std::string_view kPlainMark = "MASM";
constexpr size_t kPlainMarkOffset = 4;
constexpr size_t kPlainCountOffset = 18;
constexpr size_t kPlainRecordsOffset = 34;
constexpr size_t kPlainTailSize = 20;

// Positions are signed 32-bit fractions of the whole circle.
constexpr double kUnitsPerCircle = 4294967296.0;
constexpr double kDegreesPerCircle = 360.0;

// How far, in such units, the positions of one stop may lie apart before the second one counts.
constexpr int64_t kSamePosition = 1000;

struct JourneyPosition {
  int32_t longitude;
  int32_t latitude;
};

int32_t ToCircleFraction(double degrees) {
  return TruncateToInt32(degrees * kUnitsPerCircle / kDegreesPerCircle);
}

// In single precision, as the map programs reckon.
double FromCircleFraction(int32_t value) {
  return static_cast<float>(value * kDegreesPerCircle / kUnitsPerCircle);
}

void SetPosition(CGpsPoint& point, const JourneyPosition& position) {
  point.longitude = FromCircleFraction(position.longitude);
  point.latitude = FromCircleFraction(position.latitude);
}

bool AreClose(int32_t first, int32_t second) {
  return std::abs(int64_t{first} - second) <= kSamePosition;
}

// Takes the head up to the length of the name at `lengthOffset`.
JourneyPosition TakeHead(ByteCursor& record, size_t lengthOffset, size_t& nameLength) {
  record.Skip(kPositionOffset);
  const int32_t longitude = record.Int32();
  const int32_t latitude = record.Int32();
  record.Skip(lengthOffset - kNameLengthOffset);
  nameLength = record.Uint8();
  return {longitude, latitude};
}

// Steps over the mark and gives the length of the wide name in bytes.
size_t TakeWideNameSize(ByteCursor& record) {
  record.Skip(kWideNameMark.size());
  return size_t{2} * record.Uint8();
}

std::string NameFromUtf16(std::string_view bytes) {
  std::u16string name;
  ByteCursor units(bytes);
  while (!units.AtEnd()) name.push_back(units.Uint16());
  return WideToUtf8Lossy(name);
}

size_t NameLengthOffset(int32_t version) {
  if (version >= kLongestHeadVersion) return kNameLengthOffset16;
  return version >= kLongHeadVersion ? kNameLengthOffset14 : kNameLengthOffset;
}

// Appends the stop at the cursor and steps over it. False, and no stop, when it is cut.
bool TakeStop(std::string_view journey, ByteCursor& record, size_t lengthOffset,
              CGpsPointArray& route) {
  size_t nameLength = 0;
  const JourneyPosition head = TakeHead(record, lengthOffset, nameLength);
  record.Skip(nameLength);
  const size_t wideSize = TakeWideNameSize(record);
  // The wide name has the length of the narrow one, and the tail stands where its own length says.
  ByteCursor name(journey, record.Position());
  const std::string_view wideName = name.Take(2 * nameLength);
  record.Skip(wideSize + kTailPositionOffset);
  const int32_t tailLongitude = record.Int32();
  const int32_t tailLatitude = record.Int32();
  if (record.Overrun() || name.Overrun()) return false;
  record.Skip(kTailSize - kTailPositionOffset - 2 * sizeof(int32_t));

  const JourneyPosition tail{tailLongitude, tailLatitude};
  const bool agree =
      AreClose(head.latitude, tail.latitude) && AreClose(head.longitude, tail.longitude);
  CGpsPoint& point = route.points.emplace_back();
  point.name = NameFromUtf16(wideName);
  SetPosition(point, agree ? head : tail);
  return true;
}

uint32_t ReadStops(std::string_view bytes, CGpsPointArray& route, ConversionContext& context) {
  std::string properties;
  std::string journey;
  uint32_t status = ReadStorageStream(bytes, kMapPropertiesStream, properties);
  if (status == kStatusSuccess) status = ReadStorageStream(bytes, kJourneyStream, journey);
  if (status == kStatusNotAStorage) return ParsePlainJourney(bytes, route, context);
  if (status == kStatusModuleMissing) context.Keep(kStatusModuleNotFound);
  if (status != kStatusSuccess) return status;
  ParseJourney(journey, ReadMapVersion(properties), route, context);
  return kStatusSuccess;
}

// The storage's code for a platform error, as opening a storage gives it.
uint32_t StorageStatus(uint32_t platformError) {
  constexpr uint32_t kStorageErrors = 0x80030000;
  constexpr uint32_t kUnknownError = 0x800300FD;  // STG_E_UNKNOWN
  return platformError <= 0xFF ? kStorageErrors + platformError : kUnknownError;
}

void SetInt32(std::string& bytes, size_t offset, int32_t value) {
  StringSink word;
  word.Int32(value);
  bytes.replace(offset, sizeof value, word.Bytes());
}

}  // namespace

uint32_t ReadAutoRoute(const WideString& path, PointLists& lists, bool) {
  ContextInPlace context;
  auto& route = AddList<CGpsRoute>(lists);
  return ReadFileWith(
      path, context, [&](std::string_view bytes) { return ReadStops(bytes, route, context); },
      StorageStatus);
}

uint32_t ParseAutoRoute(std::string_view bytes, PointLists& lists, ConversionContext& context) {
  return ReadStops(bytes, AddList<CGpsRoute>(lists), context);
}

int32_t ReadMapVersion(std::string_view properties) {
  ByteCursor file(properties, kFirstSectionOffset);
  const uint32_t section = file.Uint32();
  ByteCursor table(properties, section);
  table.Skip(sizeof(int32_t));  // the section's size
  const int32_t count = table.Int32();
  for (int32_t i = 0; i < count && !table.Overrun(); ++i) {
    const uint32_t id = table.Uint32();
    const uint32_t offset = table.Uint32();
    if (id != kMapVersionProperty) continue;
    ByteCursor value(properties, size_t{section} + offset);
    if (value.Uint32() != kTypeInt32) return 0;
    return value.Int32();
  }
  return 0;
}

void ParseJourney(std::string_view journey, int32_t version, CGpsPointArray& route,
                  ConversionContext& context) {
  ByteCursor head(journey, kCountOffset);
  const int32_t count = head.Int32();
  const size_t lengthOffset = NameLengthOffset(version);
  ByteCursor record(journey, kRecordsOffset);
  for (int32_t i = 0; i < count; ++i) {
    if (TakeStop(journey, record, lengthOffset, route)) continue;
    context.Note(ConversionNote::kLinePassedOver);
    return;
  }
}

uint32_t ParsePlainJourney(std::string_view bytes, CGpsPointArray& route,
                           ConversionContext& context) {
  ByteCursor mark(bytes, kPlainMarkOffset);
  if (mark.Take(kPlainMark.size()) != kPlainMark) return kStatusFailure;
  ByteCursor head(bytes, kPlainCountOffset);
  const int32_t count = head.Int32();
  if (count == 0) return kStatusFailure;

  ByteCursor record(bytes, kPlainRecordsOffset);
  for (int32_t i = 0; i < count; ++i) {
    size_t nameLength = 0;
    const JourneyPosition position = TakeHead(record, kNameLengthOffset, nameLength);
    const std::string_view name = record.Take(nameLength);
    if (record.Overrun()) {
      context.Note(ConversionNote::kLinePassedOver);
      break;
    }
    CGpsPoint& point = route.points.emplace_back();
    point.name = name;
    SetPosition(point, position);
    record.Skip(TakeWideNameSize(record));
    record.Skip(kPlainTailSize);
  }
  return kStatusSuccess;
}

uint32_t EmitCompoundRoute(uint32_t templateNumber, ByteSink& sink, const CGpsPointArray& list,
                           ConversionContext& context) {
  std::string file;
  const uint32_t status = FillRouteTemplate(RouteTemplate(templateNumber), list, file);
  if (status == kStatusModuleMissing) context.Keep(kStatusModuleNotFound);
  if (status == kStatusSuccess) sink.Write(file);
  return status;
}

uint32_t WriteCompoundRoute(uint32_t templateNumber, const WideString& path,
                            const CGpsPointArray& list) {
  ContextInPlace context;
  return WriteFileWith(
      path, context,
      [&](ByteSink& sink) { return EmitCompoundRoute(templateNumber, sink, list, context); },
      StorageStatus);
}

uint32_t FillRouteTemplate(std::string_view templateFile, const CGpsPointArray& list,
                           std::string& file) try {
  std::string properties;
  std::string journey;
  uint32_t status = ReadStorageStream(templateFile, kMapPropertiesStream, properties);
  if (status == kStatusSuccess) status = ReadStorageStream(templateFile, kJourneyStream, journey);
  if (status != kStatusSuccess) return status;
  if (journey.size() < kRecordsOffset) return kStatusStorageCorrupt;

  SetInt32(journey, kStateOffset, kWrittenState);
  SetInt32(journey, kCountOffset, static_cast<int32_t>(list.Count()));
  SetInt32(journey, kModeOffset, kWrittenMode);
  StringSink records;
  WriteStopRecords(records, list, ReadMapVersion(properties));
  journey.insert(kRecordsOffset, records.Bytes());
  return ReplaceStorageStream(templateFile, kJourneyStream, journey, file);
} catch (const std::bad_alloc&) {
  return kStatusStorageOutOfMemory;
}

void WriteStopRecords(ByteSink& sink, const CGpsPointArray& list, int32_t version) {
  for (const CGpsPoint& point : list.points) {
    // The length is one byte: of a longer name only so much is kept as that byte can tell.
    WideString wideName = Utf8ToWideLossy(point.name);
    const auto length = static_cast<uint8_t>(wideName.size());
    wideName.resize(length);
    const int32_t longitude = ToCircleFraction(point.longitude);
    const int32_t latitude = ToCircleFraction(point.latitude);

    sink.Zeros(kPositionOffset);
    sink.Int32(longitude);
    sink.Int32(latitude);
    sink.Put(static_cast<char>(length));
    if (version >= kLongHeadVersion) {
      sink.Zeros(kNameLengthOffset14 - kNameLengthOffset - 1);
      sink.Put(static_cast<char>(length));
    }
    sink.Write(NarrowForFile(wideName));
    sink.Write(kWideNameMark);
    sink.Put(static_cast<char>(length));
    for (const char16_t unit : wideName) sink.Uint16(unit);
    for (const int32_t word :
         {0, 1, 4, 0, 1, 0, 0, 0, latitude, longitude, latitude, longitude, 0, 0, 0, 0, 6, 0, 0})
      sink.Int32(word);
  }
}
