#include "conversion/read_trip.h"

#include <algorithm>
#include <exception>
#include <new>
#include <utility>

#include "base/text.h"

namespace {

bool EndsSearch(uint32_t status) {
  return status == kStatusSuccess || status == kStatusSharingViolation ||
         status == kStatusCancelled || status == kStatusStorageSharing;
}

// What a reader throws is a fault of the file.
uint32_t CallReader(FormatReadFn read, const WideString& path, PointLists& lists, bool silent) {
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

// Calls the reader of a row and takes its result.
void TryReader(const CItineraryFormat& row, const WideString& path, ConversionContext& context,
               bool silent, TripRead& trip) {
  context.notes = {};
  trip.row = &row;
  trip.lists.clear();
  trip.status = CallReader(row.read, path, trip.lists, silent);
  std::erase_if(trip.lists, [](const auto& list) { return list->points.empty(); });
  if (trip.status == kStatusSuccess && trip.lists.empty()) trip.status = kStatusBadFormat;
  if (trip.status != kStatusSuccess) trip.lists.clear();
  AddNotes(context.notes, trip.status, trip.notes);
}

void Finish(TripRead& trip, const ConversionContext& context) {
  if (trip.status != kStatusSuccess) trip.reason = context.failure;
}

}  // namespace

bool IsWebAddress(std::u16string_view path) {
  constexpr std::u16string_view kSchemes[] = {u"http://", u"https://"};
  return std::ranges::any_of(kSchemes, [path](std::u16string_view scheme) {
    return path.size() > scheme.size() && EqualsIgnoringCase(path.substr(0, scheme.size()), scheme);
  });
}

TripRead ReadTrip(const FormatTable& table, const WideString& path, ConversionContext& context,
                  bool silent, const CItineraryFormat* after) {
  context.Renew();
  const ConversionScope scope(context);
  TripRead trip;
  std::u16string_view extension = ExtensionOfPath(path);
  // An archive with a KML file in it, which the reader of KML unpacks.
  if (EqualsIgnoringCase(extension, u"kmz")) extension = u"kml";
  // A link is what a file of this kind would hold.
  if (IsWebAddress(path)) extension = u"url";
  if (extension.empty()) return trip;
  const CItineraryFormat* row = after ? after + 1 : table.data();
  for (const CItineraryFormat* end = table.data() + table.size(); row < end; ++row) {
    if (!row->read || !EqualsIgnoringCase(row->extension, extension)) continue;
    TryReader(*row, path, context, silent, trip);
    if (EndsSearch(trip.status)) break;
  }
  Finish(trip, context);
  return trip;
}

TripRead ReadTripWith(const CItineraryFormat& row, const WideString& path,
                      ConversionContext& context, bool silent) {
  context.Renew();
  const ConversionScope scope(context);
  TripRead trip;
  TryReader(row, path, context, silent, trip);
  Finish(trip, context);
  return trip;
}
