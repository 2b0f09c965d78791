#include "ui/main_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFileInfo>
#include <QLineEdit>
#include <QMenuBar>
#include <QMimeData>
#include <QSplitter>
#include <QTimer>
#include <QToolBar>
#include <algorithm>
#include <iterator>

#include "base/status.h"
#include "base/text_ids.h"
#include "conversion/loss_description.h"
#include "platform/settings_backend.h"
#include "settings/settings.h"
#include "settings/settings_list.h"
#include "ui/boxes.h"
#include "ui/export_marks.h"
#include "ui/favorites_page.h"
#include "ui/icons.h"
#include "ui/itinerary_pane.h"
#include "ui/map_view.h"
#include "ui/notice_bar.h"
#include "ui/point_table.h"
#include "ui/progress_dialog.h"
#include "ui/recovery.h"
#include "ui/search_page.h"
#include "ui/settings_trouble.h"
#include "ui/status_line.h"
#include "ui/text.h"
#include "ui/window_placement.h"
#include "ui/workspace.h"

namespace {

constexpr char kSplitterValue[] = "Splitter";
constexpr char kColumnsValue[] = "Columns";
constexpr QSize kFirstSize(1180, 760);

}  // namespace

MainWindow::MainWindow(CSettings& settings) : m_settings(settings), m_actions(*this) {
  MainWindow::ShowNormalTitle();
  setWindowIcon(ProductIcon());
  m_progress = std::make_unique<ProgressDialog>(this);
  m_recovery = std::make_unique<Recovery>(*this);
  MakeBody();
  MakeWork();
  MakeMenus();
  MakeToolBar();
  ConnectList();
  ConnectCommands();
  FillExportList();
  UpdateCommands();
}

MainWindow::~MainWindow() {
  m_marks.reset();
  m_map->Close();
  m_work->Close();
  // What is on its way in the controls ends while there is somebody to be told.
  delete takeCentralWidget();
}

void MainWindow::MakeWork() {
  FrontEvents events;
  events.busy = [this](bool busy) { SetBusy(busy); };
  events.cleared = [this] {
    m_work->itineraryView.Hide();
    m_pane->NameField().clear();
    m_status->ShowMessage({});
    m_status->ShowTotals({});
  };
  events.loaded = [this] { ItineraryLoaded(); };
  events.nameText = [this] { return ToWide(m_pane->NameField().text()); };
  events.nameChanged = [this] { ShowName(); };
  m_work = std::make_unique<Workspace>(
      m_settings, WorkspaceParts{*this, *this, m_pane->Stops(), *m_results, *m_favorites, *m_pois,
                                 *m_status, *m_progress, std::move(events)});
  m_pane->Stops().SetList(&m_work->driver.current);
  m_results->SetList(&m_work->results);
  m_favorites->SetList(&m_work->favorites);
  m_pois->SetList(&m_work->pois);
  m_work->driver.exported = [this](const WideString& path, const CItineraryFormat& row,
                                   const TripWrite& trip) { Exported(path, row, trip); };
  m_work->favoritesStored = [this](uint32_t status) { TellOfFavorites(status); };
  m_map->SetBridge(*m_work->bridge);
  AddSearchPage(SearchKind::kEverywhere, kTextLocationSearch, "search");
  AddSearchPage(SearchKind::kNearby, kTextProximitySearch, "near");
  m_pane->AddPage(kTextFavorites, "favourite", new FavoritesPage(*m_work, *m_favorites));
  m_pane->AddResults(*m_results);
}

void MainWindow::Start(const QString& file, std::vector<std::string> settingsMessages) {
  const uint32_t status = m_work->LoadFavorites();
  std::ranges::move(TakeSettingsMessages(), std::back_inserter(settingsMessages));
  TellOfSettings(DescribeReadTrouble(status, settingsMessages));
  m_map->Load(QUrl(FromWide(m_settings.plannerPage)));
  resize(kFirstSize);
  if (m_settings.editorPosition)
    ApplyPlacement(*this, *m_settings.editorPosition);
  else
    CentreWindow(*this);
  m_pane->Stops().RestoreColumns(m_store.Bytes(kColumnsValue));
  m_splitter->restoreState(m_store.Bytes(kSplitterValue));
  setAcceptDrops(true);
  show();
  QTimer::singleShot(0, this, [this, file] {
    OfferRecovery();
    OpenArgument(file);
  });
}

void MainWindow::OpenArgument(const QString& file) {
  // What a crash has left may have been taken back before.
  if (!QFileInfo::exists(file) || !m_work->driver.ConfirmDiscard()) return;
  const WideString path = ToPath(file);
  m_work->front.SetSubject(path);
  m_work->driver.OpenFile(path, /*append=*/false, /*silent=*/true);
  UpdateCommandsSoon();
}

void MainWindow::OpenPath(const QString& path) {
  const WideString file = ToPath(path);
  m_work->front.SetSubject(file);
  m_work->driver.OpenFile(file, /*append=*/false, /*silent=*/false);
  UpdateCommandsSoon();
}

void MainWindow::Exported(const WideString& path, const CItineraryFormat& row,
                          const TripWrite& trip) {
  if (trip.status != kStatusSuccess) return;
  m_recovery->Forget();
  if (!row.facts.isFile) return;
  const QString name = QFileInfo(FromPath(path)).fileName();
  if (trip.check && trip.check->HasLosses()) {
    const WideString source = ToWide(QFileInfo(FromPath(m_work->driver.sourcePath)).fileName());
    const QString details = FromUtf8(DescribeCheck(source, ToWide(name), *trip.check)).trimmed();
    m_notice->ShowNotice(
        NoticeSubject::kExport, FilledText(kTextExportLost, ToUtf8(name)),
        {{Text(kTextDetails), [this, details] { ShowMessageBox(this, details, kBoxOk); }}});
  } else {
    m_notice->Withdraw(NoticeSubject::kExport);
    Tell(FilledText(kTextExportDone, ToUtf8(name)));
  }
}

void MainWindow::OfferRecovery() {
  if (!m_recovery->HasLeftOver()) return;
  const int32_t answer =
      ShowMessageBox(this, Text(kTextRecoverQuestion), kBoxYesNo | kBoxQuestionIcon);
  if (answer == kAnswerYes)
    m_recovery->Restore();
  else
    m_recovery->Drop();
  UpdateCommandsSoon();
}

void MainWindow::ShowName() {
  m_knownName = FromUtf8(m_work->driver.current.name);
  m_pane->NameField().setText(m_knownName);
}

void MainWindow::ItineraryLoaded() {
  ShowName();
  m_work->itineraryView.Rebuild();
  if (CPlannerScript* const page = m_work->itineraryView.planner) page->AutoViewMap();
  // A link stands in the place of a path for a moment.
  if (!m_work->driver.sourcePath.empty() && !m_isInterpreting)
    m_store.AddRecentFile(QFileInfo(FromPath(m_work->driver.sourcePath)).absoluteFilePath());
}

void MainWindow::SetBusy(bool busy) {
  m_isBusy = busy;
  for (QWidget* const part : {static_cast<QWidget*>(menuBar()), centralWidget()})
    part->setEnabled(!busy);
  for (QToolBar* const bar : findChildren<QToolBar*>()) bar->setEnabled(!busy);
  if (busy)
    QApplication::setOverrideCursor(Qt::WaitCursor);
  else
    QApplication::restoreOverrideCursor();
}

void MainWindow::closeEvent(QCloseEvent* event) {
  if (m_isBusy || !m_work->driver.ConfirmDiscard()) {
    event->ignore();
    return;
  }
  if (!SaveBeforeClosing()) {
    event->ignore();
    return;
  }
  m_recovery->Forget();
  m_work->bridge->Close();
  m_map->Close();
  event->accept();
}

// False when the user wants to stay, since not everything could be kept.
bool MainWindow::SaveBeforeClosing() {
  m_settings.editorPosition = PlacementOf(*this);
  m_store.SetBytes(kSplitterValue, m_splitter->saveState());
  m_store.SetBytes(kColumnsValue, m_pane->Stops().Columns());
  const uint32_t status = m_settings.Save();
  // Who has no home was told so at the start.
  if (UserSettingsFile().empty()) return true;
  const QString trouble = DescribeStoreTrouble(status);
  if (status != kStatusSuccess) {
    const QString question = trouble + QStringLiteral("\n\n") + Text(kTextCloseAllTheSame);
    return ShowMessageBox(this, question, kBoxYesNo | kBoxWarningIcon) == kAnswerYes;
  }
  if (!trouble.isEmpty()) ShowMessageBox(this, trouble, kBoxOk | kBoxWarningIcon);
  return true;
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
  if (!m_isBusy && event->mimeData()->hasUrls()) event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event) {
  std::vector<WideString> paths;
  for (const QUrl& url : event->mimeData()->urls()) {
    if (url.isLocalFile()) paths.push_back(ToPath(url.toLocalFile()));
  }
  if (paths.empty()) return;
  event->acceptProposedAction();
  // The program that the file comes from waits for the end of the drop.
  QTimer::singleShot(0, this, [this, paths = std::move(paths)] {
    m_work->front.SetSubject(paths.front());
    m_work->driver.DropFiles(paths);
    UpdateCommandsSoon();
  });
}

void MainWindow::Tell(const QString& text) { m_status->ShowMessage(ToUtf8(text)); }
