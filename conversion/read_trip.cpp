#include "conversion/read_trip.h"

#include <algorithm>
#include <exception>
#include <new>
#include <string>
#include <utility>

#include "base/text.h"
#include "conversion/content_search.h"
#include "conversion/format_aliases.h"
#include "conversion/text_encoding.h"
#include "platform/input_file.h"

namespace {

bool EndsSearch(uint32_t status) {
  return status == kStatusSuccess || status == kStatusSharingViolation ||
         status == kStatusCancelled || status == kStatusStorageSharing;
}

// What a reader throws is a fault of the file.
template <typename Read>
uint32_t CallReader(Read read, PointLists& lists) {
  try {
    return read(lists);
  } catch (const std::bad_alloc&) {
    return kStatusOutOfMemory;
  } catch (const std::exception&) {
    return kStatusInvalidData;
  } catch (...) {
    // Expat's plain error code, when there is no memory for a parser.
    return kStatusOutOfMemory;
  }
}

// Notes of what was asked of somebody, or had to be.
bool IsOfAQuestion(ConversionNote note) {
  return note == ConversionNote::kStopLookedUp || note == ConversionNote::kStopNotFound ||
         note == ConversionNote::kPlaceNotAsked || note == ConversionNote::kPageNotFetched;
}

// Adds what counts of the notes of a reader that has ended with this status.
void AddNotes(const ConversionNotes& noted, uint32_t status, ConversionNotes& notes) {
  for (size_t i = 0; i < static_cast<size_t>(ConversionNote::kCount); ++i) {
    const auto note = static_cast<ConversionNote>(i);
    if (status == kStatusSuccess || IsOfAQuestion(note)) notes.Add(note, noted.Count(note));
  }
}

// Decodes what an 8-bit format has read as it was told for the run.
void DecodeLists(const CItineraryFormat& row, const PointLists& lists, ConversionContext& context) {
  const bool isNarrow = row.facts.text == TextForm::kNarrow && !context.IsUnicode();
  if (!isNarrow || context.encoding.empty()) return;
  for (const auto& list : lists) {
    DecodeTexts(context.encoding, *list);
    context.usesEncoding = context.usesEncoding || !list->points.empty();
  }
}

// Calls a reader of a row, which takes the lists, and takes its result.
template <typename Read>
void TryReader(const CItineraryFormat& row, Read read, ConversionContext& context, TripRead& trip) {
  context.notes = {};
  context.TellEncoding(kEncodingNarrow);
  trip.row = &row;
  trip.lists.clear();
  const auto readAndDecode = [&](PointLists& lists) {
    const uint32_t status = read(lists);
    if (status == kStatusSuccess) DecodeLists(row, lists, context);
    return status;
  };
  trip.status = CallReader(readAndDecode, trip.lists);
  std::erase_if(trip.lists, [](const auto& list) { return list->points.empty(); });
  if (trip.status == kStatusSuccess && trip.lists.empty()) trip.status = kStatusBadFormat;
  if (trip.status != kStatusSuccess) trip.lists.clear();
  AddNotes(context.notes, trip.status, trip.notes);
}

void Finish(TripRead& trip, const ConversionContext& context) {
  if (trip.status != kStatusSuccess) trip.reason = context.failure;
}

// Whether a row is one that a key means: by its extension, and by its text where the key has one.
bool IsMeant(const CItineraryFormat& row, std::u16string_view name) {
  const std::u16string_view key = KeyForReading(name);
  const size_t colon = key.find(u':');
  std::u16string_view extension = key.substr(0, colon);
  // An archive with a KML file in it, which the reader of KML unpacks.
  if (EqualsIgnoringCase(extension, u"kmz")) extension = u"kml";
  if (!row.read || !EqualsIgnoringCase(row.extension, extension)) return false;
  return colon == std::u16string_view::npos ||
         WidenAscii(std::to_string(row.textId)) == key.substr(colon + 1);
}

// Tries the readers that a key means. `read` takes a row and the lists.
template <typename Read>
TripRead ReadByKey(const FormatTable& table, std::u16string_view key, ConversionContext& context,
                   const CItineraryFormat* after, Read read) {
  context.Renew();
  const ConversionScope scope(context);
  TripRead trip;
  if (key.empty()) return trip;
  const CItineraryFormat* row = after ? after + 1 : table.data();
  for (const CItineraryFormat* end = table.data() + table.size(); row < end; ++row) {
    if (!IsMeant(*row, key)) continue;
    TryReader(
        *row, [&read, row](PointLists& lists) { return read(*row, lists); }, context, trip);
    if (EndsSearch(trip.status)) break;
  }
  Finish(trip, context);
  return trip;
}

TripRead ReadBytesByKey(const FormatTable& table, std::string_view bytes, std::u16string_view key,
                        ConversionContext& context, const CItineraryFormat* after) {
  const auto parse = [&](const CItineraryFormat& row, PointLists& lists) {
    if (!row.facts.parse) return static_cast<uint32_t>(kStatusNotImplemented);
    context.Begin(ConversionProgress::Stage::kReading, bytes.size());
    const uint32_t status = row.facts.parse(bytes, lists, context);
    return context.IsCancelled() ? static_cast<uint32_t>(kStatusCancelled) : status;
  };
  return ReadByKey(table, key, context, after, parse);
}

// The key for a path. A link is what a file with the extension "url" would hold, and a dot of a
// folder makes no extension.
std::u16string_view KeyOfPath(const WideString& path) {
  if (IsWebAddress(path)) return u"url";
  return HasNoExtension(path) ? std::u16string_view() : ExtensionOfPath(path);
}

}  // namespace

bool IsWebAddress(std::u16string_view path) {
  constexpr std::u16string_view kSchemes[] = {u"http://", u"https://"};
  return std::ranges::any_of(kSchemes, [path](std::u16string_view scheme) {
    return path.size() > scheme.size() && EqualsIgnoringCase(path.substr(0, scheme.size()), scheme);
  });
}

TripRead ReadTrip(const FormatTable& table, const WideString& path, ConversionContext& context,
                  const ReadOptions& options) {
  const std::u16string_view key =
      options.key.empty() ? KeyOfPath(path) : std::u16string_view(options.key);
  if (key.empty() && options.byContent && HasNoExtension(path)) {
    InputFile file;
    context.Renew();
    if (context.Keep(file.Open(path)) == kStatusSuccess)
      return ReadTripBytes(table, file.Bytes(), context, options);
    TripRead trip;
    trip.status = kStatusFailure;
    trip.reason = context.failure;
    return trip;
  }
  return ReadByKey(table, key, context, options.after,
                   [&](const CItineraryFormat& row, PointLists& lists) {
                     return row.read(path, lists, options.silent);
                   });
}

TripRead ReadTripBytes(const FormatTable& table, std::string_view bytes, ConversionContext& context,
                       const ReadOptions& options) {
  if (!options.key.empty())
    return ReadBytesByKey(table, bytes, options.key, context, options.after);
  if (!options.byContent) return {};
  const WideString key = KeyOfContent(table, bytes, context);
  return ReadBytesByKey(table, bytes, key, context, options.after);
}

TripRead ReadTripWith(const CItineraryFormat& row, const WideString& path,
                      ConversionContext& context, bool silent) {
  context.Renew();
  const ConversionScope scope(context);
  TripRead trip;
  TryReader(
      row, [&](PointLists& lists) { return row.read(path, lists, silent); }, context, trip);
  Finish(trip, context);
  return trip;
}

const CItineraryFormat* FindReader(const FormatTable& table, std::u16string_view key) {
  for (const CItineraryFormat& row : table) {
    if (IsMeant(row, key)) return &row;
  }
  return nullptr;
}
