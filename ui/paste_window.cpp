#include "ui/paste_window.h"

#include <QClipboard>
#include <QDialog>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLabel>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <numeric>

#include "base/status.h"
#include "base/text.h"
#include "base/text_ids.h"
#include "conversion/conversion_context.h"
#include "conversion/read_trip.h"
#include "planner/route_table.h"
#include "services/links/link_reading.h"
#include "settings/settings.h"
#include "ui/background_work.h"
#include "ui/dialog_buttons.h"
#include "ui/look.h"
#include "ui/lookups.h"
#include "ui/main_window.h"
#include "ui/pasted_lines.h"
#include "ui/pasted_position.h"
#include "ui/place_finder.h"
#include "ui/text.h"
#include "ui/workspace.h"

namespace {

constexpr QSize kTableSize(560, 300);
constexpr int kRowHeight = 28;

void LookUp(PastedLine& line, int32_t finder, ConversionContext& context) {
  if (const auto position = ReadPastedPosition(line.text)) {
    line.places = {*position};
    line.quality = PasteQuality::kSure;
    return;
  }
  if (IsWebAddress(Utf8ToWideLossy(line.text))) {
    PointLists lists;
    if (ParseMapLink(line.text, lists, context) != kStatusSuccess) return;
    for (const auto& list : lists)
      line.places.insert(line.places.end(), list->points.begin(), list->points.end());
    if (!line.places.empty()) line.quality = PasteQuality::kFound;
    return;
  }
  const FoundPlaces found = FindPlaces(finder, line.text, context.stop);
  if (found.status != 0 || found.places.empty()) return;
  line.places = {found.places.front()};
  const bool isSure = IsSurelyMeant(line.text, line.places.front());
  line.quality = isSure ? PasteQuality::kSure : PasteQuality::kFound;
}

std::string ShownName(const CGpsNamedPoint& place) {
  return place.name.empty() ? PositionText(place, CoordinateFormat::kDegrees) : place.name;
}

// The first of the stops, and the last where a link has several.
std::string FoundNames(const PastedLine& line) {
  const std::string first = ShownName(line.places.front());
  return line.places.size() == 1 ? first : first + " → " + ShownName(line.places.back());
}

QString QualityText(const PastedLine& line) {
  switch (line.quality) {
    case PasteQuality::kSure:
      return Text(kTextPastedSure);
    case PasteQuality::kFound:
      return FilledText(kTextPastedFound, FoundNames(line));
    case PasteQuality::kNotFound:
      return Text(kTextPastedNotFound);
  }
  return {};
}

// The lines as they are reviewed: the sure ones first.
std::vector<size_t> ReviewOrder(const std::vector<PastedLine>& lines) {
  std::vector<size_t> order(lines.size());
  std::iota(order.begin(), order.end(), size_t{0});
  std::stable_sort(order.begin(), order.end(),
                   [&lines](size_t a, size_t b) { return lines[a].quality < lines[b].quality; });
  return order;
}

// Gives the lines that the user keeps, in the order in which they were pasted.
std::vector<size_t> Review(MainWindow& window, const std::vector<PastedLine>& lines) {
  const std::vector<size_t> order = ReviewOrder(lines);
  QDialog dialog(&window);
  dialog.setWindowTitle(Text(kTextPastedTitle));
  auto* const table = new QTreeWidget;
  table->setRootIsDecorated(false);
  table->setHeaderHidden(true);
  table->setColumnCount(2);
  table->setMinimumSize(kTableSize);
  table->setAccessibleName(Text(kTextPastedTitle));
  for (const size_t index : order) {
    const PastedLine& line = lines[index];
    auto* const item = new QTreeWidgetItem(table, {FromUtf8(line.text), QualityText(line)});
    const bool isThere = line.quality != PasteQuality::kNotFound;
    item->setCheckState(0, isThere ? Qt::Checked : Qt::Unchecked);
    item->setDisabled(!isThere);
    item->setSizeHint(0, {0, kRowHeight});
  }
  table->header()->setSectionResizeMode(QHeaderView::Stretch);
  auto* const layout = new QVBoxLayout(&dialog);
  layout->setContentsMargins(kWideMargin, kWideMargin, kWideMargin, kWideMargin);
  layout->setSpacing(kSmallMargin);
  auto* const hint = new QLabel(Text(kTextPastedReview));
  hint->setWordWrap(true);
  layout->addWidget(hint);
  layout->addWidget(table);
  AddDialogButtons(dialog, *layout);
  std::vector<size_t> kept;
  if (dialog.exec() != QDialog::Accepted) return kept;
  for (int i = 0; i < table->topLevelItemCount(); ++i) {
    if (table->topLevelItem(i)->checkState(0) == Qt::Checked)
      kept.push_back(order[static_cast<size_t>(i)]);
  }
  std::sort(kept.begin(), kept.end());
  return kept;
}

}  // namespace

void CopyStops(const Workspace& work, const std::vector<size_t>& rows) {
  std::vector<CGpsNamedPoint> points;
  for (const size_t row : rows) points.push_back(work.driver.current.At(row));
  QGuiApplication::clipboard()->setText(FromUtf8(PastableText(points)));
}

void PasteStops(MainWindow& window, const CSettings& settings) {
  std::vector<PastedLine> lines = SplitPastedText(ToUtf8(QGuiApplication::clipboard()->text()));
  if (lines.empty()) {
    window.Tell(Text(kTextPastedHint));
    return;
  }
  WorkProgress progress;
  progress.inAll = lines.size();
  std::stop_source stop;
  ConversionContext context;
  AllowServices(settings, context);
  context.stop = stop.get_token();
  RunInBackground(&window, kTextSearching, progress, stop, [&, finder = settings.findProvider] {
    for (PastedLine& line : lines) {
      if (stop.stop_requested()) return;
      LookUp(line, finder, context);
      ++progress.done;
    }
  });
  if (stop.stop_requested()) return;
  CGpsWaypointList found;
  for (const size_t index : Review(window, lines)) {
    for (const CGpsNamedPoint& place : lines[index].places)
      found.InsertAt(found.Count(), CGpsPoint(place));
  }
  std::vector<size_t> all(found.Count());
  std::iota(all.begin(), all.end(), size_t{0});
  window.Work().AddToItinerary(found, all);
}
