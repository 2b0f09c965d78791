#include <QAction>
#include <QComboBox>
#include <QMenuBar>
#include <QSplitter>
#include <QStatusBar>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

#include "base/text_ids.h"
#include "conversion/format_search.h"
#include "settings/settings.h"
#include "ui/export_marks.h"
#include "ui/icons.h"
#include "ui/itinerary_pane.h"
#include "ui/look.h"
#include "ui/main_window.h"
#include "ui/map_view.h"
#include "ui/notice_bar.h"
#include "ui/point_table.h"
#include "ui/search_page.h"
#include "ui/status_line.h"
#include "ui/text.h"
#include "ui/workspace.h"

namespace {

constexpr int kDefaultExport = 15;  // the entry that the list opens on
constexpr int kMapWidth = 740;
constexpr int kPaneWidth = 440;

QToolButton* AddToolButton(QToolBar& bar, QAction& action) {
  bar.addAction(&action);
  auto* const button = qobject_cast<QToolButton*>(bar.widgetForAction(&action));
  button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  button->setFocusPolicy(Qt::StrongFocus);
  button->setAccessibleName(action.toolTip());
  return button;
}

}  // namespace

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
  m_splitter->setSizes({kPaneWidth, kMapWidth});
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
