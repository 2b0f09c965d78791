#include "ui/export_marks.h"

#include <QComboBox>
#include <QEvent>
#include <QTimer>
#include <algorithm>
#include <utility>
#include <vector>

#include "base/text_ids.h"
#include "conversion/write_trip.h"
#include "model/point_list.h"
#include "planner/post_box.h"
#include "platform/folder.h"
#include "platform/scratch_folder.h"
#include "platform/thread_priority.h"
#include "ui/icons.h"
#include "ui/text.h"

namespace {

constexpr int kQuietTime = 1500;  // milliseconds without a change
// A million points at once would keep the window waiting.
constexpr size_t kCopiedAtOnce = 10'000;
// With more points than this all formats together keep a processor busy for more than a second.
constexpr size_t kFewPoints = 10'000;

struct Entry {
  int index;
  const CItineraryFormat* row;
};

bool Loses(const FormatTable& table, const CItineraryFormat& row, const CGpsRoute& list,
           const std::stop_token& stop) {
  const ScratchFolder folder;
  if (folder.Status() != 0) return false;
  ConversionContext context;
  context.lookups.isOffline = true;
  context.stop = stop;
  WriteOptions options;
  options.silent = true;
  options.checks = true;
  options.keepsNothing = true;
  options.durability = Durability::kLeftToTheSystem;
  const WideString path = JoinedPath(folder.Path(), WideString(u"itinerary.") + row.extension);
  const TripWrite trip = WriteTrip(table, row, path, list, {}, options, context);
  return trip.check && trip.check->outcome == LossCheck::Outcome::kChecked &&
         trip.check->losses.HasLosses();
}

}  // namespace

ExportMarks::ExportMarks(QComboBox& list, const FormatTable& table, PostBox& posts)
    : m_list(list), m_table(table), m_posts(posts), m_timer(new QTimer(&list)) {
  m_timer->setSingleShot(true);
  QObject::connect(m_timer, &QTimer::timeout, &list, [this] { CopyMore(); });
  m_list.installEventFilter(this);
}

ExportMarks::~ExportMarks() { Stop(); }

void ExportMarks::Stop() {
  *m_isCurrent = false;
  m_timer->stop();
  m_copy.reset();
  m_thread.request_stop();
}

void ExportMarks::Note(const CGpsRoute& itinerary) {
  m_itinerary = &itinerary;
  m_isUserThere = false;
  Stop();
  m_timer->start(kQuietTime);
}

void ExportMarks::Mark(int entry, bool loses) {
  m_list.setItemIcon(entry, loses ? LoadIcon(QStringLiteral("loss")) : QIcon());
  m_list.setItemData(entry, loses ? Text(kTextWillLose) : QVariant(), Qt::ToolTipRole);
}

bool ExportMarks::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::Enter:
    case QEvent::FocusIn:
    case QEvent::MouseButtonPress:
    case QEvent::KeyPress:
      TryTheOthers();
      break;
    default:
      break;
  }
  return QObject::eventFilter(watched, event);
}

void ExportMarks::TryTheOthers() {
  m_isUserThere = true;
  if (!std::exchange(m_hasLeftOut, false)) return;
  Stop();
  m_timer->start(0);
}

void ExportMarks::CopyMore() {
  if (!m_copy) m_copy = std::make_unique<CGpsRoute>();
  const size_t end = std::min(m_itinerary->Count(), m_copy->Count() + kCopiedAtOnce);
  // Without the ways, which are shapes that no format is given here.
  for (size_t i = m_copy->Count(); i < end; ++i)
    m_copy->InsertAt(i, CGpsPoint(static_cast<const CGpsNamedPoint&>(m_itinerary->points[i])));
  if (end < m_itinerary->Count()) return m_timer->start(0);
  m_copy->name = m_itinerary->name;
  Start();
}

void ExportMarks::Start() {
  const std::shared_ptr<const CGpsRoute> list = std::move(m_copy);
  if (list->points.empty()) {
    for (int i = 0; i < m_list.count(); ++i) Mark(i, false);
    return;
  }
  std::vector<Entry> entries;
  for (int i = 0; i < m_list.count(); ++i) {
    const auto* const row =
        static_cast<const CItineraryFormat*>(m_list.itemData(i).value<const void*>());
    if (row && row->facts.isFile) entries.push_back({i, row});
  }
  const auto isSelected = [selected = m_list.currentIndex()](const Entry& entry) {
    return entry.index == selected;
  };
  const auto others = std::stable_partition(entries.begin(), entries.end(), isSelected);
  m_hasLeftOut = !m_isUserThere && list->Count() > kFewPoints;
  if (m_hasLeftOut) {
    for (auto entry = others; entry != entries.end(); ++entry) Mark(entry->index, false);
    entries.erase(others, entries.end());
  }
  m_isCurrent = std::make_shared<bool>(true);
  m_thread = std::jthread([this, entries = std::move(entries), list, isCurrent = m_isCurrent,
                           former = std::move(m_thread)](const std::stop_token& stop) mutable {
    // It has been asked to stop.
    former = {};
    LetOthersGoFirst();
    for (const Entry& entry : entries) {
      if (stop.stop_requested()) return;
      const bool loses = Loses(m_table, *entry.row, *list, stop);
      m_posts.Post([this, isCurrent, index = entry.index, loses] {
        if (*isCurrent) Mark(index, loses);
      });
    }
  });
}
