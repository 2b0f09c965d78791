#include "conversion/format_search.h"

#include <algorithm>
#include <exception>
#include <iterator>
#include <new>
#include <utility>

#include <fmt/printf.h>

#include "base/localized_text.h"
#include "base/numbers.h"
#include "base/status.h"
#include "base/text.h"

namespace {

// Numbers of the texts that file dialogs need.
constexpr uint32_t kTextAllFormats = 105;
constexpr uint32_t kTextAllFiles = 140;

constexpr std::u16string_view kPseudoExtensions[] = {u"ggm", u"here", u"vmm", u"tth", u"ttd"};

bool EndsSearch(uint32_t status) {
  return status == kStatusSuccess || status == kStatusSharingViolation ||
         status == kStatusCancelled || status == kStatusStorageSharing;
}

// What a reader throws is a fault of the file.
uint32_t CallAnyway(FormatReadFn read, const WideString& path, PointLists& lists, bool silent) {
  try {
    return read(path, lists, silent);
  } catch (const std::bad_alloc&) {
    return kStatusOutOfMemory;
  } catch (const std::exception&) {
    return kStatusInvalidData;
  } catch (...) {
    // Expat's plain error code, when there is no memory for a parser.
    return kStatusOutOfMemory;
  }
}

}  // namespace

uint32_t CallReader(const CItineraryFormat& row, const WideString& path, PointLists& lists,
                    bool silent, ConversionContext& context) {
  const ConversionNotes before = std::exchange(context.notes, {});
  uint32_t status = kStatusSuccess;
  {
    const ConversionScope scope(context);
    status = CallAnyway(row.read, path, lists, silent);
  }
  std::erase_if(lists, [](const auto& list) { return list->points.empty(); });
  if (status == kStatusSuccess && lists.empty()) status = kStatusBadFormat;
  const ConversionNotes noted = std::exchange(context.notes, before);
  for (size_t i = 0; i < static_cast<size_t>(ConversionNote::kCount); ++i) {
    const auto note = static_cast<ConversionNote>(i);
    const bool isLookup =
        note == ConversionNote::kStopLookedUp || note == ConversionNote::kStopNotFound;
    if (status == kStatusSuccess || isLookup) context.Note(note, noted.Count(note));
  }
  return status;
}

std::string FormatLabel(const CItineraryFormat& row) {
  const std::string_view text = LoadTextUtf8(row.textId);
  return std::string(text.substr(0, text.find('|')));
}

std::string FormatPatterns(const CItineraryFormat& row) {
  const std::string_view text = LoadTextUtf8(row.textId);
  const size_t start = text.find('|');
  if (start == std::string_view::npos) return {};
  return std::string(text.substr(start + 1, text.find('|', start + 1) - start - 1));
}

bool IsPseudoFormat(const CItineraryFormat& row) {
  return std::find(std::begin(kPseudoExtensions), std::end(kPseudoExtensions), row.extension) !=
         std::end(kPseudoExtensions);
}

const CItineraryFormat* FindWriter(const FormatTable& table, std::u16string_view key) {
  const size_t colon = key.find(u':');
  const std::u16string_view extension = key.substr(0, colon);
  for (const CItineraryFormat& row : table) {
    if (!row.write || !EqualsIgnoringCase(row.extension, extension)) continue;
    if (colon == std::u16string_view::npos ||
        WidenAscii(std::to_string(row.textId)) == key.substr(colon + 1))
      return &row;
  }
  return nullptr;
}

std::string FormatKey(const FormatTable& table, const CItineraryFormat& row) {
  const CItineraryFormat* byExtension = FindWriter(table, row.extension);
  std::string extension = NarrowForFile(row.extension);
  if (!byExtension || byExtension == &row) return extension;
  return extension + ":" + std::to_string(row.textId);
}

std::vector<const CItineraryFormat*> ExportList(const FormatTable& table) {
  std::vector<const CItineraryFormat*> rows;
  for (const CItineraryFormat& row : table) {
    if (row.textId != 0 && row.write) rows.push_back(&row);
  }
  return rows;
}

WideString OpenFilter(const FormatTable& table) {
  std::string collection;
  std::string rows;
  for (const CItineraryFormat& row : table) {
    if (!row.read || row.textId == 0) continue;
    const std::string patterns = FormatPatterns(row) + "|";
    if (collection.find(patterns) == std::string::npos) collection += patterns;
    rows += LoadTextUtf8(row.textId);
  }
  std::replace(collection.begin(), collection.end(), '|', ';');
  collection.erase(std::min(collection.rfind(';'), collection.size()));
  const std::string_view allFormats = LoadTextUtf8(kTextAllFormats);
  std::string filter =
      fmt::sprintf(fmt::string_view(allFormats.data(), allFormats.size()), collection);
  filter += rows;
  filter += LoadTextUtf8(kTextAllFiles);
  return Utf8ToWide(filter);
}

WideString SaveFilter(const CItineraryFormat& row) {
  return LoadText(row.textId) + LoadText(kTextAllFiles);
}

uint32_t ReadWithRow(const CItineraryFormat& row, const WideString& path, bool silent,
                     ConversionContext& context, const AcceptLists& accept) {
  PointLists lists;
  const uint32_t status = CallReader(row, path, lists, silent, context);
  return status == kStatusSuccess ? accept(row, lists) : status;
}

uint32_t SearchReaders(const FormatTable& table, const WideString& path, bool silent,
                       ConversionContext& context, const AcceptLists& accept) {
  const std::u16string_view extension = ExtensionOfPath(path);
  uint32_t result = kStatusBadFormat;
  if (extension.empty()) return result;
  for (const CItineraryFormat& row : table) {
    if (!row.read || !EqualsIgnoringCase(row.extension, extension)) continue;
    result = ReadWithRow(row, path, silent, context, accept);
    if (EndsSearch(result)) break;
  }
  return result;
}
