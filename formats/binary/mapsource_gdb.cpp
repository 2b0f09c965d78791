#include "formats/binary/mapsource_gdb.h"

#include <iterator>
#include <string>
#include <string_view>

#include "base/product.h"
#include "base/text.h"
#include "conversion/format_frame.h"
#include "formats/binary/mapsource_reader.h"
#include "formats/binary/mapsource_writer.h"
#include "io/byte_cursor.h"

namespace {

using std::string_view_literals::operator""sv;

constexpr std::string_view kMagic = "MsRcf\0"sv;

// Version letters count up from this one. Ours is "l", 2; text is UTF-8 from 3 on.
constexpr uint8_t kVersionZero = 'j';
constexpr char kVersionLetter = 'l';
constexpr int kFirstVersionInUtf8 = 3;

// What stands for the program's number and for the time it was made at.
constexpr uint16_t kApplicationNumber = 605;
constexpr std::string_view kApplicationDate = "Sep 21 2020\0"sv;
constexpr std::string_view kApplicationTime = "14:30:32\0"sv;

// The desktop program's name stands behind the application record without being counted. Its
// successor has a shorter one, but nothing at all is no name.
constexpr std::string_view kProgram = "MapSource\0"sv;

constexpr MapSourceLayout kLayout{
    .altitudeIsOptional = true,
    .waypointTail = "\0\0\1\0\0\0\0\0\0\0\x12\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0"sv,
    .routePointClass = 0,
    .routePointMiddle = "\0\3\0\0\0\xFF\xFF\xFF\xFF\0\0\0\0\0\0\0\0\0\0"sv,
    .routePointTail = "\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"sv,
    .routeSize = 42,
    .firstRoutePointSize = 60,
    .nextRoutePointSize = 112,
    .nextRoutePointAltitudeSize = 16,
};

// Time, depth and temperature of a track point, each behind a flag that says whether it is there.
constexpr size_t kTrackPointDetailSizes[] = {4, 8, 8};

class GdbReader final : public MapSourceReader {
 public:
  explicit GdbReader(ConversionContext& context)
      : MapSourceReader(kMagic, kLayout.altitudeIsOptional, context) {}

 private:
  uint32_t TakeVersion(uint8_t letter) override {
    m_version = letter - kVersionZero;
    if (m_version >= kFirstVersionInUtf8) Context().TellEncoding(kEncodingUtf8);
    return kStatusSuccess;
  }

  std::string Text(std::string_view bytes) const override {
    return m_version < kFirstVersionInUtf8 ? WidenToUtf8(bytes) : MendUtf8(bytes);
  }

  void SkipBehindApplication(ByteCursor& file) const override {
    ByteCursor ahead = file;
    ByteCursor text(ahead.Take(kProgram.size()));
    const bool isName = !text.ZeroTerminated().empty() && !text.Overrun();
    file.Skip(isName ? text.Position() : kProgram.size());
  }

  size_t SubclassSize() const override { return 22; }

  void SkipToLinkCount(ByteCursor& record) const override {
    const bool isLonger = record.Uint8() != 0;
    if (isLonger) record.Skip(m_version > 2 ? 16 : 8);
    record.Skip(kLayout.routePointMiddle.size() - 1);
  }

  size_t RoutePointTailSize() const override { return m_version < 2 ? 0 : m_version == 2 ? 8 : 10; }

  void SkipTrackPointDetails(ByteCursor& record) const override {
    for (size_t i = 0; i < std::size(kTrackPointDetailSizes); ++i) {
      if (record.Uint8() == 0) continue;
      record.Skip(kTrackPointDetailSizes[i]);
      Context().Note(i == 0 ? ConversionNote::kTime : ConversionNote::kMeasurement);
    }
  }

  int m_version = 0;
};

}  // namespace

uint32_t ReadGdb(const WideString& path, PointLists& lists, bool) {
  ContextInPlace context;
  const auto parse = [&](std::string_view bytes) -> uint32_t {
    return bytes.empty() ? uint32_t{kStatusFailure} : ParseGdb(bytes, lists, context);
  };
  return ReadFileWith(path, context, parse, TellPlatformError);
}

uint32_t ParseGdb(std::string_view bytes, PointLists& lists, ConversionContext& context) {
  return GdbReader(context).Read(bytes, lists);
}

uint32_t ParseGdbBuffer(const void* data, size_t size, PointLists& lists) {
  return ParseGdb({static_cast<const char*>(data), size}, lists, ContextInPlace());
}

void WriteGdbBody(ByteSink& sink, const CGpsPointArray& list) {
  sink.Write(kMagic);
  WriteMapSourceVersion(sink, kVersionLetter);

  WriteMapSourceHead(
      sink, 'A', 2 + kProductName.size() + 1 + kApplicationDate.size() + kApplicationTime.size());
  sink.Uint16(kApplicationNumber);
  sink.Write(kProductName);
  sink.Put('\0');
  sink.Write(kApplicationDate);
  sink.Write(kApplicationTime);
  sink.Write(kProgram);

  WriteMapSourceWaypoints(sink, list, kLayout);
  WriteMapSourceRoute(sink, list, kLayout);
  sink.Put('\0');  // the route counts it as its own; without a route it stands alone
  WriteMapSourceEnd(sink);
}
