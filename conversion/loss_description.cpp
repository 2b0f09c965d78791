#include "conversion/loss_description.h"

#include "base/format_text.h"
#include "base/text.h"
#include "base/text_ids.h"
#include "markup/json_string.h"

namespace {

// What a reader can pass over, and its name in JSON where it has not one of its own outside.
struct PassedOverKind {
  ConversionNote note;
  uint32_t text;
  const char* name;
};

constexpr PassedOverKind kPassedOverKinds[] = {
    {ConversionNote::kLinePassedOver, kTextLineCount, nullptr},
    {ConversionNote::kStopWithoutWaypoint, kTextStopsWithoutWaypoint, nullptr},
    {ConversionNote::kPointWithoutPosition, kTextPointsWithoutPosition, nullptr},
    {ConversionNote::kTime, kTextTimeCount, "times"},
    {ConversionNote::kSymbol, kTextSymbolCount, "symbols"},
    {ConversionNote::kMeasurement, kTextMeasurementCount, "measurements"},
    {ConversionNote::kLink, kTextLinkCount, "links"},
    {ConversionNote::kDescription, kTextDescriptionCount, "descriptions"},
    {ConversionNote::kDetail, kTextDetailCount, "details"},
    {ConversionNote::kShapingPoint, kTextShapingPointCount, "shapingPoints"},
    {ConversionNote::kSegmentBreak, kTextSegmentBreakCount, "segmentBreaks"},
    {ConversionNote::kExtension, kTextExtensionCount, "extensions"},
    {ConversionNote::kArea, kTextAreaCount, "areas"},
    {ConversionNote::kOverlay, kTextOverlayCount, "overlays"},
    {ConversionNote::kDocument, kTextDocumentCount, "documents"},
    {ConversionNote::kRelation, kTextRelationCount, "relations"},
};

uint64_t CountOf(const LossCheck& check, ConversionNote note) {
  return note == ConversionNote::kPointWithoutPosition ? check.PointsWithoutPosition()
                                                       : check.notes.Count(note);
}

// What fitting has done, and its name in JSON.
struct FitKind {
  size_t FitReport::*count;
  uint32_t text;
  const char* name;
};

constexpr FitKind kFitKinds[] = {
    {&FitReport::namesGiven, kTextNamesGiven, "namesGiven"},
    {&FitReport::namesMadeUnique, kTextNamesMadeUnique, "namesMadeUnique"},
    {&FitReport::textsSpelled, kTextTextsSpelled, "textsSpelled"},
    {&FitReport::separatorsReplaced, kTextSeparatorsReplaced, "separatorsReplaced"},
    {&FitReport::textsCut, kTextTextsCut, "textsCut"},
};

void AppendItem(std::string& list, const std::string& item) {
  if (!list.empty()) list += ", ";
  list += item;
}

std::string DescribeFit(const WideString& target, const FitReport& fit) {
  std::string done;
  for (const FitKind& kind : kFitKinds) {
    if (fit.*kind.count > 0) AppendItem(done, FormatText(kind.text, fit.*kind.count));
  }
  if (fit.mostPoints > 0) AppendItem(done, FormatText(kTextSplitToFit, fit.mostPoints));
  std::string text;
  if (!done.empty()) text += FormatText(kTextFitted, WideToUtf8Lossy(target), done) + "\n";
  if (fit.lacksSpeller) text += FormatText(kTextNoSpeller, WideToUtf8Lossy(target)) + "\n";
  return text;
}

void WriteJsonFit(ByteSink& sink, const FitReport& fit) {
  sink.Write(", \"fit\": {");
  const char* separator = "";
  for (const FitKind& kind : kFitKinds) {
    if (fit.*kind.count == 0) continue;
    sink.Printf("%s\"%s\": %d", separator, kind.name, fit.*kind.count);
    separator = ", ";
  }
  if (fit.mostPoints > 0) sink.Printf("%s\"mostPoints\": %d", separator, fit.mostPoints);
  sink.Put('}');
}

// All kinds with their numbers, parted by commas.
std::string PassedOver(const LossCheck& check) {
  std::string text;
  for (const PassedOverKind& kind : kPassedOverKinds) {
    const uint64_t count = CountOf(check, kind.note);
    if (count == 0) continue;
    AppendItem(text, FormatText(kind.text, count));
  }
  return text;
}

// What is lost beside stops and names; empty when nothing is.
std::string LostDetails(const std::string& shown, const LossReport& losses) {
  const uint64_t comments = losses.commentsChanged;
  const uint64_t altitudes = losses.altitudesChanged;
  const double shift = losses.largestShift;
  if (comments > 0 && altitudes > 0)
    return FormatText(kTextDetailsLost, shown, comments, altitudes, shift);
  if (comments > 0) return FormatText(kTextCommentsLost, shown, comments, shift);
  if (altitudes > 0) return FormatText(kTextAltitudesLost, shown, altitudes, shift);
  return shift > kReceiverAccuracy ? FormatText(kTextPositionsMoved, shown, shift) : "";
}

void WriteJsonPassedOver(ByteSink& sink, const LossCheck& check) {
  sink.Write(", \"passedOver\": {");
  const char* separator = "";
  for (const PassedOverKind& kind : kPassedOverKinds) {
    const uint64_t count = check.notes.Count(kind.note);
    if (!kind.name || count == 0) continue;
    sink.Printf("%s\"%s\": %d", separator, kind.name, count);
    separator = ", ";
  }
  sink.Put('}');
}

}  // namespace

std::string DescribeCheck(const WideString& source, const WideString& target,
                          const LossCheck& check) {
  const std::string shown = WideToUtf8Lossy(target);
  const LossReport& losses = check.losses;
  std::string text = DescribeFit(target, check.fit);
  const auto tell = [&text](const std::string& line) { text += line + "\n"; };

  if (check.outcome == LossCheck::Outcome::kOnlyWritten) {
    tell(FormatText(kTextOnlyWritten, shown));
  } else if (check.outcome == LossCheck::Outcome::kNotReadable) {
    tell(FormatText(kTextNotReadBack, shown));
  } else if (check.outcome == LossCheck::Outcome::kNoFile) {
    // There is nothing to say about what nobody can look at.
  } else if (!losses.HasLosses()) {
    const uint32_t all = !check.IsComplete()     ? kTextAllThatWasRead
                         : check.fit.HasLosses() ? kTextAllAsAdapted
                                                 : kTextNothingLost;
    tell(FormatText(all, shown, losses.stops, losses.largestShift));
  } else {
    if (losses.stopsLost > 0 || losses.stopsAdded > 0)
      tell(FormatText(kTextStopsLost, shown, losses.stopsLost, losses.stops, losses.stopsAdded));
    if (losses.namesChanged > 0) {
      tell(FormatText(kTextNamesChanged, shown, losses.namesChanged, losses.nameBefore,
                      losses.nameAfter));
    }
    const std::string details = LostDetails(shown, losses);
    if (!details.empty()) tell(details);
  }
  if (check.fitHelps) tell(FormatText(kTextFitRemedy, shown));
  if (check.listsMerged > 0) tell(FormatText(kTextListsMerged, shown, check.listsMerged));
  const std::string passedOver = PassedOver(check);
  if (!passedOver.empty()) tell(FormatText(kTextPassedOver, WideToUtf8Lossy(source), passedOver));
  if (check.doubtfulPositions > 0)
    tell(FormatText(kTextDoubtfulPositions, WideToUtf8Lossy(source), check.doubtfulPositions));
  return text;
}

void WriteJsonCheck(ByteSink& sink, const WideString& source, const WideString& target,
                    const LossCheck& check) {
  sink.Write("{\"source\": ");
  WriteJsonString(sink, WideToUtf8Lossy(source));
  sink.Write(", \"target\": ");
  WriteJsonString(sink, WideToUtf8Lossy(target));
  const bool isChecked = check.outcome == LossCheck::Outcome::kChecked;
  sink.Printf(", \"status\": 0, \"checked\": %s, \"losses\": %s", isChecked ? "true" : "false",
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
      "\"pointsWithoutPosition\": %d",
      check.listsMerged, check.LinesPassedOver(), check.StopsWithoutWaypoint(),
      check.PointsWithoutPosition());
  WriteJsonPassedOver(sink, check);
  sink.Printf(", \"doubtfulPositions\": %d", check.doubtfulPositions);
  if (check.fit.HasDone()) WriteJsonFit(sink, check.fit);
  if (check.fitHelps) sink.Write(", \"remedy\": \"--fit\"");
  sink.Put('}');
}

void WriteJsonFailure(ByteSink& sink, const WideString& source, const WideString& target,
                      uint32_t status, const std::string& error) {
  sink.Write("{\"source\": ");
  WriteJsonString(sink, WideToUtf8Lossy(source));
  sink.Write(", \"target\": ");
  WriteJsonString(sink, WideToUtf8Lossy(target));
  sink.Printf(", \"status\": %u, \"error\": ", status);
  WriteJsonString(sink, error);
  sink.Put('}');
}
