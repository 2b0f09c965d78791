#include "ui/recovery.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTimer>
#include <algorithm>
#include <memory>

#include "base/text_ids.h"
#include "conversion/format_search.h"
#include "conversion/read_trip.h"
#include "conversion/reason_text.h"
#include "conversion/write_trip.h"
#include "platform/folder.h"
#include "platform/known_folders.h"
#include "platform/output_file.h"
#include "platform/process_mark.h"
#include "ui/main_window.h"
#include "ui/text.h"
#include "ui/workspace.h"

namespace {

constexpr int kQuietTime = 2000;      // milliseconds without a change
constexpr int kLongestWait = 10'000;  // milliseconds, for those who change on and on
constexpr int kRetryTime = 30'000;    // milliseconds behind a write that failed
constexpr char16_t kKey[] = u"gpx:107";
constexpr char kSuffix[] = ".gpx";

// The name of a file is the mark of the process that writes it. The newest comes first.
QString FindLeftOver(const QString& folder) {
  if (folder.isEmpty()) return {};
  const QStringList names{QLatin1Char('*') + QLatin1String(kSuffix)};
  for (const QFileInfo& file : QDir(folder).entryInfoList(names, QDir::Files, QDir::Time)) {
    if (!IsProcessThere(ToUtf8(file.completeBaseName()))) return file.filePath();
  }
  return {};
}

bool HasUnsavedChanges(const CGpsRoute& itinerary) {
  return !itinerary.points.empty() &&
         !std::equal(itinerary.points.begin(), itinerary.points.end(),
                     itinerary.snapshot.points.begin(), itinerary.snapshot.points.end());
}

}  // namespace

Recovery::Recovery(MainWindow& window)
    : m_window(window),
      m_timer(new QTimer(&window)),
      m_folder(FromPath(StateFolder())),
      m_path(m_folder + QLatin1Char('/') + FromUtf8(OwnProcessMark()) + QLatin1String(kSuffix)),
      m_leftOver(FindLeftOver(m_folder)) {
  if (!m_folder.isEmpty()) ClearUnfinishedFiles(ToPath(m_folder));
  m_timer->setSingleShot(true);
  QObject::connect(m_timer, &QTimer::timeout, &window, [this] { Write(); });
}

Recovery::~Recovery() = default;

void Recovery::Note(const CGpsRoute& itinerary) {
  if (m_folder.isEmpty()) return;
  m_itinerary = &itinerary;
  const bool isWaiting = m_timer->isActive();
  if (!isWaiting) m_firstChange.start();
  if (!isWaiting || m_firstChange.elapsed() < kLongestWait) m_timer->start(kQuietTime);
}

void Recovery::Write() {
  if (!m_itinerary) return;
  if (!HasUnsavedChanges(*m_itinerary)) {
    Forget();
    return;
  }
  // A write that takes long must come to its end, however often the list changes.
  if (m_isWriting) {
    m_timer->start(kQuietTime);
    return;
  }
  CreatePrivateFolder(ToPath(m_folder));
  const FormatTable& table = m_window.Work().driver.table;
  const CItineraryFormat* const row = FindWriter(table, kKey);
  if (!row) return;
  const auto list = std::make_shared<CGpsRoute>();
  list->Assign(*m_itinerary);
  m_isWriting = true;
  m_thread = std::jthread([this, &table, row, list](const std::stop_token& stop) {
    ConversionContext context;
    context.lookups.isOffline = true;
    context.stop = stop;
    WriteOptions options;
    options.silent = true;
    options.force = true;
    const TripWrite trip = WriteTrip(table, *row, ToPath(m_path), *list, {}, options, context);
    QMetaObject::invokeMethod(
        m_timer, [this, status = trip.status, reason = trip.reason] { Written(status, reason); },
        Qt::QueuedConnection);
  });
}

void Recovery::Written(uint32_t status, const FailureReason& reason) {
  m_isWriting = false;
  if (status == kStatusCancelled) return;
  const bool hasFailed = status != kStatusSuccess;
  if (hasFailed && !m_timer->isActive()) m_timer->start(kRetryTime);
  if (hasFailed && !m_hasFailed)
    m_window.Tell(Text(kTextChangesNotKept) + FromUtf8(DescribeFailure(reason, ToPath(m_path))));
  m_hasFailed = hasFailed;
}

void Recovery::Forget() {
  m_timer->stop();
  m_thread = {};
  if (!m_folder.isEmpty()) QFile::remove(m_path);
}

void Recovery::Restore() {
  // From here on it is the file of this window, until a newer one stands. Of several windows that
  // offer it only one can take it.
  Forget();
  if (!QFile::rename(m_leftOver, m_path)) {
    m_leftOver.clear();
    return;
  }
  Workspace& work = m_window.Work();
  ConversionContext context;
  context.lookups.isOffline = true;
  ReadOptions options;
  options.silent = true;
  const TripRead trip = ReadTrip(work.driver.table, ToPath(m_path), context, options);
  if (trip.status != kStatusSuccess) {
    QFile::rename(m_path, m_leftOver);
    work.front.SetSubject(ToPath(m_leftOver));
    work.front.ShowMessage(MessageIcon::kError, kTextCannotBeRead, trip.reason);
    return;
  }
  CGpsRoute& current = work.driver.current;
  current.Clear();
  current.TakePoints(*trip.lists.front());
  current.name = trip.lists.front()->name;
  work.front.ItineraryLoaded();
  m_leftOver.clear();
}

void Recovery::Drop() {
  QFile::remove(m_leftOver);
  m_leftOver.clear();
}
