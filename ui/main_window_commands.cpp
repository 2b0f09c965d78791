#include <QAction>
#include <QComboBox>
#include <QLineEdit>
#include <QTimer>

#include "base/status.h"
#include "base/text_ids.h"
#include "planner/tile_layers.h"
#include "settings/map_sources.h"
#include "settings/settings.h"
#include "ui/about_window.h"
#include "ui/boxes.h"
#include "ui/export_marks.h"
#include "ui/itinerary_pane.h"
#include "ui/main_window.h"
#include "ui/map_view.h"
#include "ui/notice_bar.h"
#include "ui/optimise.h"
#include "ui/paste_window.h"
#include "ui/point_table.h"
#include "ui/point_window.h"
#include "ui/printing.h"
#include "ui/provider_choice.h"
#include "ui/recovery.h"
#include "ui/settings_trouble.h"
#include "ui/settings_window.h"
#include "ui/status_line.h"
#include "ui/stop_menu.h"
#include "ui/text.h"
#include "ui/workspace.h"

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
  stops.menuWanted = [this](size_t row, const QPoint& place) {
    OpenStopMenu(*this, {Command::kEdit, Command::kFavorite, Command::kCopy, Command::kRemove},
                 m_work->driver.current.At(row), static_cast<int32_t>(row) + 1, place);
  };
  m_results->menuWanted = [this](size_t row, const QPoint& place) {
    OpenStopMenu(*this, {}, m_work->results.At(row), static_cast<int32_t>(row) + 1, place);
  };
  m_favorites->menuWanted = [this](size_t row, const QPoint& place) {
    OpenStopMenu(*this, {}, m_work->favorites.At(row), static_cast<int32_t>(row) + 1, place);
  };
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

void MainWindow::NameFieldLeft() {
  const QString text = m_pane->NameField().text();
  if (m_isInterpreting || text == m_knownName) return;
  m_knownName = text;
  m_isInterpreting = true;
  m_work->driver.InterpretLink(ToWide(text));
  m_isInterpreting = false;
}

void MainWindow::ChangeSettings() {
  const auto maps = [] {
    MapSources stored;
    LoadMaps(storage::OpenUserStorage(), stored);
    return std::pair(stored, LoadPageLayers(storage::OpenUserStorage()));
  };
  const auto before = maps();
  const std::optional<uint32_t> status = ShowSettingsWindow(this, m_settings, *m_work->bridge);
  if (!status) return;
  TellOfSettings(DescribeStoreTrouble(*status));
  m_actions[Command::kRoad].setChecked(m_settings.forceRoad);
  m_work->bridge->SettingsChanged();
  // The page learns its maps when it starts.
  if (maps() != before) m_map->Reload();
}

void MainWindow::TellOfSettings(const QString& trouble) {
  if (trouble.isEmpty())
    m_notice->Withdraw(NoticeSubject::kSettings);
  else
    m_notice->ShowNotice(NoticeSubject::kSettings, trouble);
}

void MainWindow::TellOfFavorites(uint32_t status) {
  const QString trouble = DescribeStoreTrouble(status);
  m_notice->Withdraw(NoticeSubject::kFavorites);
  if (trouble.isEmpty()) return;
  std::vector<NoticeButton> buttons;
  if (status != kStatusSuccess)
    buttons.push_back({Text(kTextRetry), [this] { m_work->SaveFavorites(); }});
  m_notice->ShowNotice(NoticeSubject::kFavorites, trouble, std::move(buttons));
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
