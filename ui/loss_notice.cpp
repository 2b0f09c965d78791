#include "ui/loss_notice.h"

#include "base/text_ids.h"
#include "conversion/loss_check.h"
#include "ui/text.h"

QString DescribeLosses(const QString& fileName, const LossCheck& check) {
  const std::string name = ToUtf8(fileName);
  const LossReport& losses = check.losses;
  QStringList lines;
  if (check.outcome == LossCheck::Outcome::kNotReadable)
    lines.append(FilledText(kTextNotReadBack, name));
  if (losses.stopsLost > 0 || losses.stopsAdded > 0)
    lines.append(
        FilledText(kTextStopsLost, name, losses.stopsLost, losses.stops, losses.stopsAdded));
  if (losses.namesChanged > 0)
    lines.append(FilledText(kTextNamesChanged, name, losses.namesChanged, losses.nameBefore,
                            losses.nameAfter));
  if (losses.commentsChanged > 0 || losses.altitudesChanged > 0 ||
      losses.largestShift > kReceiverAccuracy)
    lines.append(FilledText(kTextDetailsLost, name, losses.commentsChanged,
                            losses.altitudesChanged, losses.largestShift));
  if (check.listsMerged > 0) lines.append(FilledText(kTextListsMerged, name, check.listsMerged));
  return lines.join(QLatin1Char('\n'));
}
