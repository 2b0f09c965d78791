#include "app/loss_description.h"

#include "app/console_text.h"
#include "base/format_text.h"
#include "base/text_ids.h"
#include "markup/json_string.h"

std::string DescribeCheck(const WideString& source, const WideString& target,
                          const LossCheck& check) {
  const std::string shown = ShownPath(target);
  const LossReport& losses = check.losses;
  std::string text;
  const auto tell = [&text](const std::string& line) { text += line + "\n"; };

  if (check.outcome == LossCheck::Outcome::kOnlyWritten) {
    tell(FormatText(kTextOnlyWritten, shown));
  } else if (check.outcome == LossCheck::Outcome::kNotReadable) {
    tell(FormatText(kTextNotReadBack, shown));
  } else if (check.outcome == LossCheck::Outcome::kNoFile) {
    // There is nothing to say about what nobody can look at.
  } else if (!losses.HasLosses()) {
    tell(FormatText(kTextNothingLost, shown, losses.stops, losses.largestShift));
  } else {
    if (losses.stopsLost > 0 || losses.stopsAdded > 0)
      tell(FormatText(kTextStopsLost, shown, losses.stopsLost, losses.stops, losses.stopsAdded));
    if (losses.namesChanged > 0) {
      tell(FormatText(kTextNamesChanged, shown, losses.namesChanged, losses.nameBefore,
                      losses.nameAfter));
    }
    if (losses.commentsChanged > 0 || losses.altitudesChanged > 0 ||
        losses.largestShift > kReceiverAccuracy) {
      tell(FormatText(kTextDetailsLost, shown, losses.commentsChanged, losses.altitudesChanged,
                      losses.largestShift));
    }
  }
  if (check.listsMerged > 0) tell(FormatText(kTextListsMerged, shown, check.listsMerged));
  if (check.LinesPassedOver() + check.StopsWithoutWaypoint() + check.PointsWithoutPosition() > 0) {
    tell(FormatText(kTextPassedOver, ShownPath(source), check.LinesPassedOver(),
                    check.StopsWithoutWaypoint(), check.PointsWithoutPosition()));
  }
  return text;
}

void WriteJsonCheck(ByteSink& sink, const WideString& source, const WideString& target,
                    const LossCheck& check) {
  sink.Write("{\"source\": ");
  WriteJsonString(sink, ShownPath(source));
  sink.Write(", \"target\": ");
  WriteJsonString(sink, ShownPath(target));
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
      "\"pointsWithoutPosition\": %d}",
      check.listsMerged, check.LinesPassedOver(), check.StopsWithoutWaypoint(),
      check.PointsWithoutPosition());
}
