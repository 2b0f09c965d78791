#include "conversion/loss_check.h"

#include <algorithm>

#include "base/status.h"
#include "base/text.h"
#include "conversion/list_choice.h"
#include "conversion/read_trip.h"
#include "platform/folder.h"

namespace {

// The lists of the first reader that understands the file; none when there is no such reader.
PointLists ListsOf(const std::vector<const CItineraryFormat*>& readers, const WideString& file,
                   ConversionContext& context) {
  for (const CItineraryFormat* row : readers) {
    TripRead trip = ReadTripWith(*row, file, context, /*silent=*/true);
    if (trip.status == kStatusSuccess) return std::move(trip.lists);
  }
  return {};
}

// Reads one file back; false when that fails. Without a choice, the list is taken that a
// conversion of the file would take.
bool ReadBack(const std::vector<const CItineraryFormat*>& readers, const WideString& file,
              ConversionContext& context, CGpsRoute& into) {
  const PointLists lists = ListsOf(readers, file, context);
  if (lists.empty()) return false;
  for (const size_t index : SelectLists(lists, ListChoice())) {
    CGpsPointArray& list = *lists[index];
    // A part of a split itinerary begins with the last stop of the one before.
    if (!into.points.empty() && into.points.back() == list.points.front()) list.points.pop_front();
    into.TakePoints(list);
  }
  return true;
}

}  // namespace

std::vector<const CItineraryFormat*> ReadersOf(const FormatTable& table,
                                               const CItineraryFormat& row) {
  if (!row.facts.readsBack) return {};
  std::vector<const CItineraryFormat*> readers;
  if (row.read) readers.push_back(&row);
  for (const CItineraryFormat& other : table) {
    const bool isKin = EqualsIgnoringCase(other.extension, row.extension) ||
                       (row.textId != 0 && other.textId == row.textId);
    if (other.read && isKin) readers.push_back(&other);
  }
  return readers;
}

bool LossCheck::HasLosses() const {
  return outcome == Outcome::kNotReadable || losses.HasLosses() || listsMerged > 0 ||
         notes.HasLosses() || fit.HasLosses();
}

bool LossCheck::HasGraveLosses() const {
  return outcome == Outcome::kNotReadable || losses.HasGraveLosses() ||
         StopsWithoutWaypoint() > 0 || StopsNotLookedUp() > 0 ||
         notes.Count(ConversionNote::kStopNotAsked) > 0;
}

bool LossCheck::MayBeFitted() const {
  return outcome == Outcome::kNotReadable || losses.HasGraveLosses() || losses.stopsAdded > 0 ||
         losses.namesChanged > 0 || losses.commentsChanged > 0;
}

LossCheck CheckStream(const CGpsPointArray& list, const TripSource& source) {
  LossCheck check;
  check.outcome = LossCheck::Outcome::kNoFile;
  check.listsMerged = source.listsTaken > 1 ? source.listsTaken : 0;
  check.listsLeft = source.listsFound - source.listsTaken;
  check.notes = source.notes;
  check.doubtfulPositions = CountDoubtfulPositions(list);
  return check;
}

LossCheck CheckWrittenFiles(const FormatTable& table, const CItineraryFormat& row,
                            const std::vector<WideString>& files, const CGpsPointArray& list,
                            const std::optional<LossReport>& known, const TripSource& source,
                            const ConversionContext& context) {
  LossCheck check = CheckStream(list, source);
  check.outcome = LossCheck::Outcome::kChecked;
  const std::vector<const CItineraryFormat*> readers = ReadersOf(table, row);
  if (readers.empty()) {
    check.outcome = LossCheck::Outcome::kOnlyWritten;
    return check;
  }
  if (!std::all_of(files.begin(), files.end(), IsRegularFile)) {
    check.outcome = LossCheck::Outcome::kNoFile;
    return check;
  }
  if (known && files.size() == 1) {
    check.losses = *known;
    return check;
  }
  ConversionContext readingBack = context.ForReadingBack();
  CGpsRoute written;
  for (const WideString& file : files) {
    if (!ReadBack(readers, file, readingBack, written))
      check.outcome = LossCheck::Outcome::kNotReadable;
  }
  if (check.outcome == LossCheck::Outcome::kChecked) check.losses = CompareLists(list, written);
  return check;
}
