#include "formats/xml/kmz.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>

#include "base/status.h"
#include "base/text.h"
#include "conversion/format_frame.h"
#include "conversion/xml_frame.h"
#include "platform/sequential_file.h"
#include "platform/zip_archive.h"

namespace {

constexpr std::string_view kArchiveMark = "PK\x03\x04";
constexpr std::string_view kMainDocument = "doc.kml";
constexpr std::string_view kExtension = ".kml";

// Large maps bring along thousands of pictures.
constexpr size_t kMostEntries = 100000;
// Text like that of KML shrinks to a tenth or a twentieth; what unpacks to far more was made to
// fill the memory.
constexpr uint64_t kMostUnpacked = uint64_t{1} << 30;
constexpr uint64_t kFreeUnpacked = uint64_t{1} << 24;
constexpr uint64_t kMostTimesLarger = 100;

// The document that a map program would open. Others are counted.
std::optional<size_t> FindDocument(const ZipArchive& archive, ConversionContext& context) {
  std::optional<size_t> found;
  bool isMain = false;
  size_t documents = 0;
  const size_t count = std::min(archive.Count(), kMostEntries);
  for (size_t i = 0; i < count; ++i) {
    const std::string name = ToLowerAscii(archive.Name(i));
    if (!name.ends_with(kExtension)) continue;
    ++documents;
    if (found && (isMain || name != kMainDocument)) continue;
    found = i;
    isMain = name == kMainDocument;
  }
  if (documents > 1) context.Note(ConversionNote::kDocument, documents - 1);
  return found;
}

}  // namespace

bool IsKmzFile(const WideString& path) {
  SequentialFile file;
  std::array<char, kArchiveMark.size()> start;
  return file.Open(path) == kStatusSuccess &&
         file.Read(start.data(), start.size()) == start.size() &&
         std::string_view(start.data(), start.size()) == kArchiveMark;
}

uint32_t ReadKmzFile(CXmlReader& reader, const WideString& path, ConversionContext& context) {
  return ReadFileWith(path, context,
                      [&](std::string_view archive) { return ParseKmz(reader, archive, context); });
}

uint32_t ParseKmz(CXmlReader& reader, std::string_view archive, ConversionContext& context) {
  const auto entries = OpenZipArchive(archive);
  const std::optional<size_t> document = entries ? FindDocument(*entries, context) : std::nullopt;
  if (!document || !entries->Open(*document)) return kStatusFailure;
  uint64_t left =
      std::min(kMostUnpacked, kFreeUnpacked + kMostTimesLarger * entries->PackedSize(*document));
  return ParseXmlSource(reader, context, [&](char* data, size_t size) -> std::optional<size_t> {
    const std::optional<size_t> count = entries->Read(data, size);
    if (!count || *count > left) return std::nullopt;
    left -= *count;
    return count;
  });
}
