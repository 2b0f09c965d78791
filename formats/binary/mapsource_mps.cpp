#include "formats/binary/mapsource_mps.h"

#include <string>
#include <string_view>

#include "base/status.h"
#include "base/text.h"
#include "conversion/format_frame.h"
#include "formats/binary/mapsource_reader.h"
#include "formats/binary/mapsource_writer.h"
#include "io/byte_cursor.h"

namespace {

using std::string_view_literals::operator""sv;

constexpr std::string_view kMagic = "MsRcd\0"sv;
constexpr char kVersionLetter = 'i';

// Who wrote the file and when: what the desktop program of this version writes.
constexpr std::string_view kApplication =
    "\xF4\x01"
    "SQA\0"
    "Jul  3 2003\0"
    "08:35:33\0"sv;

constexpr MapSourceLayout kLayout{
    .altitudeIsOptional = false,
    .waypointTail =
        "\0\0\0\0\0\0\0\0\0\0\1\0\0\0\0\0\0\0\x12\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0"
        "\0\0"sv,
    .routePointClass = 8,
    .routePointMiddle = "\0\3\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0"sv,
    .routePointTail = ""sv,
    .routeSize = 41,
    .firstRoutePointSize = 52,
    .nextRoutePointSize = 120,
    .nextRoutePointAltitudeSize = 0,
};

constexpr size_t kTrackPointDetailsSize = 14;

class MpsReader final : public MapSourceReader {
 public:
  explicit MpsReader(ConversionContext& context)
      : MapSourceReader(kMagic, kLayout.altitudeIsOptional, context) {}

 private:
  uint32_t TakeVersion(uint8_t letter) override {
    if (letter < 'd' || letter > 'i') return kStatusNotImplemented;
    m_version = letter == 'd' ? 3 : letter == 'i' ? 5 : 4;
    return kStatusSuccess;
  }

  std::string Text(std::string_view bytes) const override { return WidenToUtf8(bytes); }
  void SkipBehindApplication(ByteCursor&) const override {}
  size_t SubclassSize() const override { return m_version <= 3 ? 17 : 22; }

  void SkipToLinkCount(ByteCursor& record) const override {
    if (m_version > 3) record.ZeroTerminated();
    record.Skip(kLayout.routePointMiddle.size() - 1);
  }

  size_t RoutePointTailSize() const override { return 0; }
  void SkipTrackPointDetails(ByteCursor& record) const override {
    record.Skip(kTrackPointDetailsSize);
  }

  int m_version = 0;
};

}  // namespace

uint32_t ReadMps(const WideString& path, PointLists& lists, bool) {
  ContextInPlace context;
  const auto parse = [&](std::string_view bytes) -> uint32_t {
    return bytes.empty() ? uint32_t{kStatusFailure} : ParseMps(bytes, lists, context);
  };
  return ReadFileWith(path, context, parse, TellPlatformError);
}

uint32_t ParseMps(std::string_view bytes, PointLists& lists, ConversionContext& context) {
  return MpsReader(context).Read(bytes, lists);
}

uint32_t ParseMpsBuffer(const void* data, size_t size, PointLists& lists) {
  return ParseMps({static_cast<const char*>(data), size}, lists, ContextInPlace());
}

void WriteMpsBody(ByteSink& sink, const CGpsPointArray& list) {
  sink.Write(kMagic);
  WriteMapSourceVersion(sink, kVersionLetter);
  WriteMapSourceHead(sink, 'A', kApplication.size());
  sink.Write(kApplication);
  WriteMapSourceWaypoints(sink, list, kLayout);
  WriteMapSourceRoute(sink, list, kLayout);
  WriteMapSourceEnd(sink);
}
