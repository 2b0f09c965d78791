#include "ui/main_window.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QFileInfo>
#include <QLineEdit>
#include <QMenuBar>
#include <QMimeData>
#include <QSplitter>
#include <QStatusBar>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

#include "base/text_ids.h"
#include "conversion/format_search.h"
#include "conversion/loss_description.h"
#include "planner/tile_layers.h"
#include "platform/debug_log.h"
#include "platform/open_link.h"
#include "settings/map_sources.h"
#include "settings/settings.h"
#include "ui/about_window.h"
#include "ui/boxes.h"
#include "ui/export_marks.h"
#include "ui/favorites_page.h"
#include "ui/icons.h"
#include "ui/itinerary_pane.h"
#include "ui/look.h"
#include "ui/map_view.h"
#include "ui/notice_bar.h"
#include "ui/optimise.h"
#include "ui/paste_window.h"
#include "ui/point_table.h"
#include "ui/point_window.h"
#include "ui/printing.h"
#include "ui/progress_dialog.h"
#include "ui/provider_choice.h"
#include "ui/recovery.h"
#include "ui/search_page.h"
#include "ui/settings_window.h"
#include "ui/status_line.h"
#include "ui/text.h"
#include "ui/window_placement.h"
#include "ui/workspace.h"

namespace {

constexpr char kSplitterValue[] = "Splitter";
constexpr char kColumnsValue[] = "Columns";
constexpr int kDefaultExport = 15;  // the entry that the list opens on
constexpr QSize kFirstSize(1180, 760);
constexpr int kPaneWidth = 440;

QString CaptionText() { return QStringLiteral("Corvane Map"); }

QToolButton* AddToolButton(QToolBar& bar, QAction& action) {
  bar.addAction(&action);
  auto* const button = qobject_cast<QToolButton*>(bar.widgetForAction(&action));
  button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  button->setFocusPolicy(Qt::StrongFocus);
  button->setAccessibleName(action.toolTip());
  return button;
}

}  // namespace

MainWindow::MainWindow(CSettings& settings) : m_settings(settings), m_actions(*this) {
  setWindowTitle(CaptionText());
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

void MainWindow::MakeBody() {
  m_pane = new ItineraryPane(m_actions, m_settings);
  m_results = new PointTable(PinKind::kSearchResults, m_settings);
  m_favorites = new PointTable(PinKind::kFavorites, m_settings);
  m_pois = new PointTable(PinKind::kPois, m_settings, this);
  m_pois->hide();
  m_map = new MapView;
  m_splitter = new QSplitter;
  m_splitter->setChildrenCollapsible(false);
  m_splitter->setHandleWidth(1);
  m_splitter->addWidget(m_pane);
  m_splitter->addWidget(m_map);
  m_splitter->setStretchFactor(1, 1);
  m_splitter->setSizes({kPaneWidth, kFirstSize.width() - kPaneWidth});
  m_notice = new NoticeBar;
  auto* const body = new QWidget;
  auto* const layout = new QVBoxLayout(body);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addWidget(m_notice);
  layout->addWidget(m_splitter, 1);
  setCentralWidget(body);
  m_status = new StatusLine;
  statusBar()->addWidget(m_status, 1);
  statusBar()->setSizeGripEnabled(false);
}

void MainWindow::MakeWork() {
  FrontEvents events;
  events.busy = [this](bool busy) { SetBusy(busy); };
  events.cleared = [this] {
    m_pane->Stops().ResetRows(0);
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
  m_map->SetBridge(*m_work->bridge);
  AddSearchPage(SearchKind::kEverywhere, kTextLocationSearch, "search");
  AddSearchPage(SearchKind::kNearby, kTextProximitySearch, "near");
  m_pane->AddPage(kTextFavorites, "favourite", new FavoritesPage(*m_work, *m_favorites));
  m_pane->AddResults(*m_results);
}

void MainWindow::AddSearchPage(SearchKind kind, uint32_t textId, const char* icon) {
  auto* const page = new SearchPage(kind, m_settings, m_work->Posts());
  page->center = [this] { return SearchCenter(); };
  page->found = [this](const std::vector<CGpsNamedPoint>& places) {
    m_work->ShowResults(places);
    m_results->setVisible(!places.empty());
    if (!places.empty()) m_work->resultsView.SelectRow(0);
  };
  m_pane->AddPage(textId, icon, page);
}

std::optional<CGpsCoordinate> MainWindow::SearchCenter() const {
  const CGpsPointArray& stops = m_work->driver.current;
  const int64_t row = m_work->itineraryView.FirstSelectedRow();
  if (row != kNoRow) return stops.At(static_cast<size_t>(row));
  if (stops.points.empty()) return std::nullopt;
  return stops.points.back();
}

void MainWindow::MakeMenus() {
  const auto fill = [this](uint32_t textId, std::initializer_list<Command> commands) {
    QMenu* const menu = menuBar()->addMenu(Text(textId));
    for (const Command command : commands) {
      if (command == Command::kCount)
        menu->addSeparator();
      else
        menu->addAction(&m_actions[command]);
    }
    return menu;
  };
  constexpr Command kSeparator = Command::kCount;
  QMenu* const file = fill(kTextMenuFile, {Command::kOpen, Command::kExport, kSeparator,
                                           Command::kPrint, kSeparator, Command::kExit});
  m_recentFiles = new QMenu(Text(kTextRecentFiles), this);
  file->insertMenu(&m_actions[Command::kExport], m_recentFiles);
  connect(m_recentFiles, &QMenu::aboutToShow, this, [this] { FillRecentFiles(); });
  fill(kTextMenuEdit, {Command::kUndo, Command::kRedo, kSeparator, Command::kCopy, Command::kPaste,
                       kSeparator, Command::kSettings});
  fill(kTextMenuItinerary, {Command::kAdd, Command::kEdit, Command::kRemove, Command::kUp,
                            Command::kDown, Command::kInvert, Command::kRemoveAll, kSeparator,
                            Command::kCalculate, Command::kClearRoute, Command::kOptimise,
                            kSeparator, Command::kFavorite, Command::kRoad, Command::kShowAll});
  fill(kTextMenuHelp, {Command::kAbout});
}

void MainWindow::MakeToolBar() {
  auto* const bar = new QToolBar(Text(kTextToolBar));
  bar->setMovable(false);
  bar->setIconSize({kIconSize, kIconSize});
  bar->setContextMenuPolicy(Qt::PreventContextMenu);
  addToolBar(bar);
  QToolButton* const open = AddToolButton(*bar, m_actions[Command::kOpen]);
  open->setMenu(m_recentFiles);
  open->setPopupMode(QToolButton::MenuButtonPopup);
  bar->addSeparator();
  AddToolButton(*bar, m_actions[Command::kExport]);
  m_exportList = new QComboBox;
  m_exportList->setAccessibleName(Text(kTextExportFormat));
  m_exportList->setToolTip(Text(kTextExportFormat));
  m_exportList->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  m_exportList->setMinimumContentsLength(24);
  m_exportList->setMaxVisibleItems(24);
  bar->addWidget(m_exportList);
  bar->addSeparator();
  for (const Command command : {Command::kUndo, Command::kRedo})
    AddToolButton(*bar, m_actions[command])->setToolButtonStyle(Qt::ToolButtonIconOnly);
  bar->addSeparator();
  AddToolButton(*bar, m_actions[Command::kCalculate]);
  AddToolButton(*bar, m_actions[Command::kOptimise]);
  bar->addSeparator();
  AddToolButton(*bar, m_actions[Command::kPrint]);
  AddToolButton(*bar, m_actions[Command::kSettings]);
}

void MainWindow::ConnectList() {
  PointTable& stops = m_pane->Stops();
  CPointListView& view = m_work->itineraryView;
  stops.changed = [this] { UpdateCommandsSoon(); };
  stops.selected = [this, &view](int64_t row) {
    m_work->ViewOnMap(view, row);
    UpdateCommandsSoon();
  };
  stops.opened = [this](size_t row) { EditPoint(row); };
  stops.renamed = [&view](size_t row, const QString& name) { view.RenamePoint(row, ToUtf8(name)); };
  stops.moved = [&view](size_t from, size_t to) { view.MoveRow(from, to); };
  m_results->selected = [this](int64_t row) { m_work->ViewOnMap(m_work->resultsView, row); };
  m_results->opened = [this](size_t row) { m_work->AddToItinerary(m_work->results, {row}); };
  connect(&m_pane->NameField(), &QLineEdit::editingFinished, this, [this] { NameFieldLeft(); });
}

void MainWindow::Connect(Command command, std::function<void()> action) {
  connect(&m_actions[command], &QAction::triggered, this,
          [action = std::move(action)] { action(); });
}

void MainWindow::ConnectCommands() {
  CPointListView& view = m_work->itineraryView;
  Connect(Command::kOpen, [this] { Open(); });
  Connect(Command::kExport, [this] { Export(); });
  Connect(Command::kExit, [this] { close(); });
  Connect(Command::kUndo, [&view] { view.Undo(); });
  Connect(Command::kRedo, [&view] { view.Redo(); });
  Connect(Command::kAdd, [this] { AddPointByWindow(); });
  Connect(Command::kEdit, [this, &view] {
    if (view.FirstSelectedRow() != kNoRow) EditPoint(static_cast<size_t>(view.FirstSelectedRow()));
  });
  Connect(Command::kRemove, [&view] { view.RemoveRows(kSelectedRows); });
  Connect(Command::kUp, [&view] { view.MoveSelectedUp(); });
  Connect(Command::kDown, [&view] { view.MoveSelectedDown(); });
  Connect(Command::kInvert, [&view] { view.ReverseAll(); });
  Connect(Command::kRemoveAll, [this] { RemoveAll(); });
  Connect(Command::kCalculate, [this, &view] {
    if (ChooseDirectionsProvider(this, m_settings)) view.CalculateAll(/*showProgress=*/true);
  });
  Connect(Command::kOptimise, [this] { OptimiseItinerary(*this, m_settings); });
  Connect(Command::kClearRoute, [&view] { view.ClearRoute(); });
  Connect(Command::kShowAll, [&view] {
    if (view.planner) view.planner->AutoViewMap();
  });
  Connect(Command::kRoad, [this] {
    m_settings.forceRoad = m_actions[Command::kRoad].isChecked();
    m_work->bridge->SettingsChanged();
  });
  Connect(Command::kFavorite, [this] { m_work->AddFavorites(m_pane->Stops().SelectedRows()); });
  Connect(Command::kSettings, [this] { ChangeSettings(); });
  Connect(Command::kPrint, [this] { PrintItinerary(*this, m_settings); });
  Connect(Command::kCopy, [this] { CopyStops(*m_work, m_pane->Stops().SelectedRows()); });
  Connect(Command::kPaste, [this] { PasteStops(*this, m_settings); });
  Connect(Command::kAbout, [this] { ShowAboutWindow(this); });
  m_actions[Command::kRoad].setChecked(m_settings.forceRoad);
}

void MainWindow::FillExportList() {
  const auto rows = ::ExportList(m_work->driver.table);
  for (const CItineraryFormat* const row : rows)
    m_exportList->addItem(FromUtf8(FormatLabel(*row)),
                          QVariant::fromValue(static_cast<const void*>(row)));
  const bool isStored =
      m_settings.exportIndex >= 0 && m_settings.exportIndex < m_exportList->count();
  m_exportList->setCurrentIndex(isStored ? m_settings.exportIndex : kDefaultExport);
  m_marks = std::make_unique<ExportMarks>(*m_exportList, m_work->driver.table, m_work->Posts());
  connect(m_exportList, &QComboBox::currentIndexChanged, this, [this](int index) {
    m_settings.exportIndex = index;
    m_work->driver.exportIndex = index;
  });
}

void MainWindow::FillRecentFiles() {
  m_recentFiles->clear();
  for (const QString& path : m_store.RecentFiles()) {
    QString shown = path;
    QAction* const action =
        m_recentFiles->addAction(shown.replace(QLatin1Char('&'), QLatin1String("&&")));
    connect(action, &QAction::triggered, this, [this, path] {
      if (m_work->driver.ConfirmDiscard()) OpenPath(path);
    });
  }
  if (m_recentFiles->isEmpty()) {
    m_recentFiles->addAction(Text(kTextNoRecentFiles))->setEnabled(false);
    return;
  }
  m_recentFiles->addSeparator();
  connect(m_recentFiles->addAction(Text(kTextForgetRecentFiles)), &QAction::triggered, this,
          [this] { m_store.ClearRecentFiles(); });
}

void MainWindow::Start() {
  m_work->LoadFavorites();
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
  QTimer::singleShot(0, this, [this] { OfferRecovery(); });
}

void MainWindow::OpenPath(const QString& path) {
  const WideString file = ToPath(path);
  m_work->front.SetSubject(file);
  m_work->driver.OpenFile(file, /*append=*/false, /*silent=*/false);
  UpdateCommandsSoon();
}

void MainWindow::Open() {
  m_work->driver.OpenCommand();
  UpdateCommandsSoon();
}

void MainWindow::Export() {
  const auto* const row =
      static_cast<const CItineraryFormat*>(m_exportList->currentData().value<const void*>());
  m_work->driver.ExportCommand(row);
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
        FilledText(kTextExportLost, ToUtf8(name)),
        {{Text(kTextDetails), [this, details] { ShowMessageBox(this, details, kBoxOk); }}});
  } else {
    m_notice->hide();
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
  m_pane->NameField().setText(FromUtf8(m_work->driver.current.name));
  m_pane->NameField().setModified(false);
}

void MainWindow::ItineraryLoaded() {
  ShowName();
  m_work->itineraryView.Rebuild();
  if (CPlannerScript* const page = m_work->itineraryView.planner) page->AutoViewMap();
  if (!m_work->driver.sourcePath.empty())
    m_store.AddRecentFile(QFileInfo(FromPath(m_work->driver.sourcePath)).absoluteFilePath());
}

void MainWindow::ChangeSettings() {
  const auto maps = [] {
    MapSources stored;
    LoadMaps(storage::OpenUserStorage(), stored);
    return std::pair(stored, LoadPageLayers(storage::OpenUserStorage()));
  };
  const auto before = maps();
  if (!ShowSettingsWindow(this, m_settings, *m_work->bridge)) return;
  m_actions[Command::kRoad].setChecked(m_settings.forceRoad);
  m_work->bridge->SettingsChanged();
  // The page learns its maps when it starts.
  if (maps() != before) m_map->Reload();
}

void MainWindow::NameFieldLeft() {
  QLineEdit& field = m_pane->NameField();
  if (m_isInterpreting || !field.isModified()) return;
  m_isInterpreting = true;
  field.setModified(false);
  m_work->driver.InterpretLink(ToWide(field.text()));
  m_isInterpreting = false;
}

void MainWindow::RemoveAll() {
  const auto answer =
      ShowMessageBox(this, Text(kTextRemoveAllQuestion), kBoxYesNo | kBoxQuestionIcon);
  if (answer == kAnswerYes) m_work->itineraryView.RemoveAll();
}

void MainWindow::AddPointByWindow() {
  CGpsNamedPoint point;
  if (!EditPointInWindow(this, m_settings, kTextAddPoint, point)) return;
  m_work->itineraryView.AddPoint(CGpsPoint(point));
  m_work->itineraryView.AfterEdit();
}

void MainWindow::EditPoint(size_t row) {
  CGpsNamedPoint point = m_work->driver.current.At(row);
  if (!EditPointInWindow(this, m_settings, kTextEditPoint, point)) return;
  if (row < m_work->driver.current.Count())
    m_work->itineraryView.ChangePoint(row, CGpsPoint(point));
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

void MainWindow::UpdateCommandsSoon() {
  if (std::exchange(m_updateWaits, true)) return;
  QTimer::singleShot(0, this, [this] {
    m_updateWaits = false;
    UpdateCommands();
  });
}

void MainWindow::UpdateCommands() {
  const CPointListView& view = m_work->itineraryView;
  const size_t count = m_work->driver.current.Count();
  const bool hasSelection = m_pane->Stops().HasSelection();
  m_status->ShowCount(count);
  m_actions[Command::kUndo].setEnabled(view.CanUndo());
  m_actions[Command::kRedo].setEnabled(view.CanRedo());
  for (const Command command : {Command::kRemove, Command::kUp, Command::kDown, Command::kEdit,
                                Command::kCopy, Command::kFavorite})
    m_actions[command].setEnabled(hasSelection);
  for (const Command command :
       {Command::kRemoveAll, Command::kShowAll, Command::kExport, Command::kPrint})
    m_actions[command].setEnabled(count > 0);
  for (const Command command : {Command::kInvert, Command::kCalculate, Command::kClearRoute})
    m_actions[command].setEnabled(count > 1);
  m_actions[Command::kOptimise].setEnabled(count > 3);
  if (std::exchange(m_notedEdits, view.EditCount()) == view.EditCount()) return;
  m_recovery->Note(m_work->driver.current);
  if (m_marks) m_marks->Note(m_work->driver.current);
}

void MainWindow::closeEvent(QCloseEvent* event) {
  if (m_isBusy || !m_work->driver.ConfirmDiscard()) {
    event->ignore();
    return;
  }
  m_settings.editorPosition = PlacementOf(*this);
  m_store.SetBytes(kSplitterValue, m_splitter->saveState());
  m_store.SetBytes(kColumnsValue, m_pane->Stops().Columns());
  m_settings.Save();
  m_recovery->Forget();
  m_work->bridge->Close();
  m_map->Close();
  event->accept();
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

int32_t MainWindow::ShowBox(std::string_view text, uint32_t style) {
  return ShowMessageBox(this, FromUtf8(text), style);
}

int32_t MainWindow::ShowRepeatedBox(std::string_view text, uint32_t style, bool& forTheRest) {
  const RepeatedAnswer given = ::ShowRepeatedBox(this, FromUtf8(text), style);
  forTheRest = given.forTheRest;
  return given.answer;
}

void MainWindow::Tell(const QString& text) { m_status->ShowMessage(ToUtf8(text)); }

void MainWindow::DispatchMessages() { QApplication::processEvents(); }

void MainWindow::ShowNormalTitle() { setWindowTitle(CaptionText()); }

void MainWindow::ShowUpdateNotice(std::string_view text, std::string_view url) {
  m_notice->ShowNotice(FromUtf8(text), {{Text(kTextShowPage), [link = std::string(url)] {
                                           if (link.starts_with("http")) OpenLink(link);
                                         }}});
}

void MainWindow::DisableMap(std::string_view reason) {
  DebugLog("map: " + std::string(reason));
  m_map->GoDark();
}

void MainWindow::ReloadPage() { m_map->Reload(); }

void MainWindow::StartTimer(int32_t timer, int32_t milliseconds) {
  QTimer*& running = m_timers[timer];
  if (!running) {
    running = new QTimer(this);
    connect(running, &QTimer::timeout, this, [this, timer] { m_work->bridge->OnTimer(timer); });
  }
  running->start(milliseconds);
}

void MainWindow::StopTimer(int32_t timer) {
  const auto found = m_timers.find(timer);
  if (found != m_timers.end()) found->second->stop();
}

bool MainWindow::MayDownloadTo(const WideString& path) {
  const QString question = FilledText(kTextMayDownload, ToUtf8(FromPath(path)));
  return ShowMessageBox(this, question, kBoxYesNo | kBoxWarningIcon) == kAnswerYes;
}
