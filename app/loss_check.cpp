#include "app/loss_check.h"

#include "app/console_text.h"
#include "app/json_string.h"
#include "app/list_selection.h"
#include "base/status.h"
#include "base/text.h"
#include "conversion/format_search.h"

namespace {

// Texts of rows whose files are for the device alone: no reader of the table follows their layout.
constexpr uint32_t kDestinator = 130;
constexpr uint32_t kSygic11 = 299;
constexpr uint32_t kSygic13 = 328;

// The rows whose readers may understand what `row` writes, its own first.
FormatTable ReadersOf(const FormatTable& table, const CItineraryFormat& row) {
  if (row.textId == kDestinator || row.textId == kSygic11 || row.textId == kSygic13) return {};
  FormatTable readers;
  if (row.read) readers.push_back(row);
  for (const CItineraryFormat& other : table) {
    const bool isKin = EqualsIgnoringCase(other.extension, row.extension) ||
                       (row.textId != 0 && other.textId == row.textId);
    if (other.read && isKin) readers.push_back(other);
  }
  return readers;
}

// The lists of the first reader that understands the file; none when there is no such reader.
PointLists ListsOf(const FormatTable& readers, const WideString& file, ConversionContext& context) {
  for (const CItineraryFormat& row : readers) {
    PointLists lists;
    if (CallReader(row, file, lists, true, context) == kStatusSuccess) return lists;
  }
  return {};
}

// Reads one file back; false when that fails. Without a choice, the list is taken that a
// conversion of the file would take.
bool ReadBack(const FormatTable& readers, const WideString& file, ConversionContext& context,
              CGpsRoute& into) {
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

bool ConversionCheck::HasLosses() const {
  return outcome == EOutcome::kNotReadable || losses.HasLosses() || listsMerged > 0 ||
         linesPassedOver > 0 || stopsWithoutWaypoint > 0 || pointsWithoutPosition > 0;
}

void TakeReaderNotes(const ConversionNotes& notes, ConversionCheck& check) {
  check.linesPassedOver = notes.Count(ConversionNote::kLinePassedOver);
  check.stopsWithoutWaypoint = notes.Count(ConversionNote::kStopWithoutWaypoint);
  check.pointsWithoutPosition = notes.Count(ConversionNote::kPointWithoutPosition) +
                                notes.Count(ConversionNote::kStopNotFound);
}

void CheckWrittenFiles(const FormatTable& table, const CItineraryFormat& row,
                       const std::vector<WideString>& files, const CGpsPointArray& list,
                       const ConversionContext& context, ConversionCheck& check) {
  const FormatTable readers = ReadersOf(table, row);
  if (readers.empty()) {
    check.outcome = ConversionCheck::EOutcome::kOnlyWritten;
    return;
  }
  ConversionContext readingBack = context.ForReadingBack();
  CGpsRoute written;
  for (const WideString& file : files) {
    if (!ReadBack(readers, file, readingBack, written))
      check.outcome = ConversionCheck::EOutcome::kNotReadable;
  }
  if (check.outcome == ConversionCheck::EOutcome::kChecked)
    check.losses = CompareLists(list, written);
}

std::string DescribeCheck(const ConversionCheck& check) {
  const std::string target = ShownPath(check.target);
  const LossReport& losses = check.losses;
  std::string text;
  const auto tell = [&text](const std::string& line) { text += line + "\n"; };

  if (check.outcome == ConversionCheck::EOutcome::kOnlyWritten) {
    tell(Text(kTextOnlyWritten, target));
  } else if (check.outcome == ConversionCheck::EOutcome::kNotReadable) {
    tell(Text(kTextNotReadBack, target));
  } else if (!losses.HasLosses()) {
    tell(Text(kTextNothingLost, target, losses.stops, losses.largestShift));
  } else {
    if (losses.stopsLost > 0 || losses.stopsAdded > 0)
      tell(Text(kTextStopsLost, target, losses.stopsLost, losses.stops, losses.stopsAdded));
    if (losses.namesChanged > 0) {
      tell(Text(kTextNamesChanged, target, losses.namesChanged, losses.nameBefore,
                losses.nameAfter));
    }
    if (losses.commentsChanged > 0 || losses.altitudesChanged > 0 ||
        losses.largestShift > kReceiverAccuracy) {
      tell(Text(kTextDetailsLost, target, losses.commentsChanged, losses.altitudesChanged,
                losses.largestShift));
    }
  }
  if (check.listsMerged > 0) tell(Text(kTextListsMerged, target, check.listsMerged));
  if (check.linesPassedOver + check.stopsWithoutWaypoint + check.pointsWithoutPosition > 0) {
    tell(Text(kTextPassedOver, ShownPath(check.source), check.linesPassedOver,
              check.stopsWithoutWaypoint, check.pointsWithoutPosition));
  }
  return text;
}

void WriteJsonCheck(ByteSink& sink, const ConversionCheck& check) {
  sink.Write("{\"source\": ");
  WriteJsonString(sink, ShownPath(check.source));
  sink.Write(", \"target\": ");
  WriteJsonString(sink, ShownPath(check.target));
  const bool isChecked = check.outcome == ConversionCheck::EOutcome::kChecked;
  sink.Printf(", \"checked\": %s, \"losses\": %s", isChecked ? "true" : "false",
              check.HasLosses() ? "true" : "false");
  if (isChecked) {
    const LossReport& losses = check.losses;
    sink.Printf(
        ", \"stops\": %d, \"stopsLost\": %d, \"stopsAdded\": %d, \"namesChanged\": %d, "
        "\"commentsLost\": %d, \"altitudesLost\": %d, \"largestShift\": %.2f",
        losses.stops, losses.stopsLost, losses.stopsAdded, losses.namesChanged,
        losses.commentsChanged, losses.altitudesChanged, losses.largestShift);
    if (losses.namesChanged > 0) {
      sink.Write(", \"firstName\": {\"before\": ");
      WriteJsonString(sink, losses.nameBefore);
      sink.Write(", \"after\": ");
      WriteJsonString(sink, losses.nameAfter);
      sink.Put('}');
    }
  }
  sink.Printf(
      ", \"listsMerged\": %d, \"linesPassedOver\": %d, \"stopsWithoutWaypoint\": %d, "
      "\"pointsWithoutPosition\": %d}",
      check.listsMerged, check.linesPassedOver, check.stopsWithoutWaypoint,
      check.pointsWithoutPosition);
}
