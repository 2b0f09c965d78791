#include "ui/recovery.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTimer>
#include <algorithm>
#include <memory>

#include "base/text_ids.h"
#include "conversion/format_search.h"
#include "conversion/read_trip.h"
#include "conversion/write_trip.h"
#include "platform/debug_log.h"
#include "platform/folder.h"
#include "ui/main_window.h"
#include "ui/text.h"
#include "ui/workspace.h"

namespace {

constexpr int kQuietTime = 2000;  // milliseconds without a change
constexpr char16_t kKey[] = u"gpx:107";
constexpr char kSuffix[] = ".gpx";

// What programs keep between two runs and nobody else needs.
QString StateFolder() {
  QString base = qEnvironmentVariable("XDG_STATE_HOME");
  if (base.isEmpty()) base = QDir::homePath() + QStringLiteral("/.local/state");
  return base + QStringLiteral("/CorvaneMap");
}

// The name of a file is the number of the process that writes it.
bool IsRunning(const QString& path) {
  const qint64 process = QFileInfo(path).completeBaseName().toLongLong();
  return process == QCoreApplication::applicationPid() ||
         QFileInfo::exists(QStringLiteral("/proc/%1").arg(process));
}

QString FindLeftOver() {
  const QDir folder(StateFolder());
  for (const QFileInfo& file :
       folder.entryInfoList({QLatin1Char('*') + QLatin1String(kSuffix)}, QDir::Files, QDir::Time)) {
    if (!IsRunning(file.filePath())) return file.filePath();
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
      m_path(StateFolder() + QLatin1Char('/') +
             QString::number(QCoreApplication::applicationPid()) + QLatin1String(kSuffix)),
      m_leftOver(FindLeftOver()) {
  m_timer->setSingleShot(true);
  QObject::connect(m_timer, &QTimer::timeout, &window, [this] { Write(); });
}

Recovery::~Recovery() = default;

void Recovery::Note(const CGpsRoute& itinerary) {
  m_itinerary = &itinerary;
  m_timer->start(kQuietTime);
}

void Recovery::Write() {
  if (!m_itinerary) return;
  if (!HasUnsavedChanges(*m_itinerary)) {
    Forget();
    return;
  }
  CreatePrivateFolder(ToPath(StateFolder()));
  const FormatTable& table = m_window.Work().driver.table;
  const CItineraryFormat* const row = FindWriter(table, kKey);
  if (!row) return;
  const auto list = std::make_shared<CGpsRoute>();
  list->Assign(*m_itinerary);
  // The former one ends first.
  m_thread = {};
  m_thread = std::jthread([&table, row, path = ToPath(m_path), list](const std::stop_token& stop) {
    ConversionContext context;
    context.lookups.isOffline = true;
    context.stop = stop;
    WriteOptions options;
    options.silent = true;
    options.force = true;
    const TripWrite trip = WriteTrip(table, *row, path, *list, {}, options, context);
    if (trip.status != kStatusSuccess && trip.status != kStatusCancelled)
      DebugLog("recovery: " + std::to_string(trip.status));
  });
}

void Recovery::Forget() {
  m_timer->stop();
  m_thread = {};
  QFile::remove(m_path);
}

void Recovery::Restore() {
  Workspace& work = m_window.Work();
  ConversionContext context;
  context.lookups.isOffline = true;
  ReadOptions options;
  options.silent = true;
  const TripRead trip = ReadTrip(work.driver.table, ToPath(m_leftOver), context, options);
  if (trip.status != kStatusSuccess) {
    work.front.SetSubject(ToPath(m_leftOver));
    work.front.ShowMessage(MessageIcon::kError, kTextCannotBeRead, trip.reason);
    return;
  }
  CGpsRoute& current = work.driver.current;
  current.Clear();
  current.TakePoints(*trip.lists.front());
  current.name = trip.lists.front()->name;
  work.front.ItineraryLoaded();
  // From here on it is the file of this window, until a newer one stands.
  QFile::rename(m_leftOver, m_path);
  m_leftOver.clear();
}

void Recovery::Drop() {
  QFile::remove(m_leftOver);
  m_leftOver.clear();
}
