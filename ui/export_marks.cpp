#include "ui/export_marks.h"

#include <QComboBox>
#include <QTimer>
#include <vector>

#include "base/text_ids.h"
#include "conversion/write_trip.h"
#include "model/point_list.h"
#include "planner/post_box.h"
#include "platform/folder.h"
#include "platform/scratch_folder.h"
#include "ui/icons.h"
#include "ui/text.h"

namespace {

constexpr int kQuietTime = 1500;  // milliseconds without a change
// Longer itineraries take too long in sixty formats.
constexpr size_t kLongestList = 2000;

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
  QObject::connect(m_timer, &QTimer::timeout, &list, [this] { Start(); });
}

ExportMarks::~ExportMarks() { Stop(); }

void ExportMarks::Stop() {
  *m_isCurrent = false;
  m_timer->stop();
  m_thread.request_stop();
}

void ExportMarks::Note(const CGpsRoute& itinerary) {
  m_itinerary = &itinerary;
  Stop();
  m_timer->start(kQuietTime);
}

void ExportMarks::Mark(int entry, bool loses) {
  m_list.setItemIcon(entry, loses ? LoadIcon(QStringLiteral("loss")) : QIcon());
  m_list.setItemData(entry, loses ? Text(kTextWillLose) : QVariant(), Qt::ToolTipRole);
}

void ExportMarks::Start() {
  if (!m_itinerary || m_itinerary->points.empty() || m_itinerary->Count() > kLongestList) {
    for (int i = 0; i < m_list.count(); ++i) Mark(i, false);
    return;
  }
  std::vector<Entry> entries;
  for (int i = 0; i < m_list.count(); ++i) {
    const auto* const row =
        static_cast<const CItineraryFormat*>(m_list.itemData(i).value<const void*>());
    if (row && row->facts.isFile) entries.push_back({i, row});
  }
  m_isCurrent = std::make_shared<bool>(true);
  // The former run has been asked to stop; replacing its thread waits for that.
  m_thread = std::jthread([this, entries = std::move(entries), list = CGpsRoute(*m_itinerary),
                           isCurrent = m_isCurrent](const std::stop_token& stop) {
    for (const Entry& entry : entries) {
      if (stop.stop_requested()) return;
      const bool loses = Loses(m_table, *entry.row, list, stop);
      m_posts.Post([this, isCurrent, index = entry.index, loses] {
        if (*isCurrent) Mark(index, loses);
      });
    }
  });
}
