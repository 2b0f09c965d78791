#include "ui/favorites_page.h"

#include <QHBoxLayout>
#include <QToolButton>
#include <QVBoxLayout>

#include "base/text.h"
#include "base/text_ids.h"
#include "conversion/format_search.h"
#include "conversion/read_trip.h"
#include "conversion/write_trip.h"
#include "planner/window_parts.h"
#include "ui/boxes.h"
#include "ui/icons.h"
#include "ui/look.h"
#include "ui/point_table.h"
#include "ui/text.h"
#include "ui/workspace.h"

namespace {

constexpr int kTableHeight = 180;
constexpr char16_t kFileKey[] = u"gpx:107";

}  // namespace

FavoritesPage::FavoritesPage(Workspace& work, PointTable& table, QWidget* parent)
    : QWidget(parent), m_work(work), m_table(table), m_buttons(new QWidget) {
  table.setAccessibleName(Text(kTextFavorites));
  table.SetHint(Text(kTextNoFavorites));
  table.setFixedHeight(kTableHeight);
  auto* const row = new QHBoxLayout(m_buttons);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(kGrid);
  AddButton("add", kTextAddToItinerary, &FavoritesPage::AddToItinerary);
  AddButton("remove", kTextRemovePoints, &FavoritesPage::Remove);
  row->addStretch();
  AddButton("import", kTextImportFavorites, &FavoritesPage::Import);
  AddButton("export", kTextExportFavorites, &FavoritesPage::Export);
  AddButton("remove-all", kTextClearFavorites, &FavoritesPage::Clear);
  auto* const layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(kGrid);
  layout->addWidget(&table);
  layout->addWidget(m_buttons);
  table.opened = [this](size_t) { AddToItinerary(); };
  table.selected = [this](int64_t index) { m_work.ViewOnMap(m_work.favoritesView, index); };
}

QToolButton* FavoritesPage::AddButton(const char* icon, uint32_t textId,
                                      void (FavoritesPage::*action)()) {
  auto* const button = new QToolButton;
  button->setIcon(LoadIcon(QLatin1String(icon)));
  button->setIconSize({kIconSize, kIconSize});
  button->setToolTip(PlainText(textId));
  button->setAccessibleName(PlainText(textId));
  button->setFocusPolicy(Qt::StrongFocus);
  connect(button, &QToolButton::clicked, this, [this, action] { (this->*action)(); });
  m_buttons->layout()->addWidget(button);
  return button;
}

void FavoritesPage::AddToItinerary() {
  m_work.AddToItinerary(m_work.favorites, m_table.SelectedRows());
}

void FavoritesPage::Remove() {
  if (!m_table.HasSelection()) return;
  m_work.favoritesView.RemoveRows(kSelectedRows);
  m_work.SaveFavorites();
}

void FavoritesPage::Clear() {
  if (m_work.favorites.points.empty()) return;
  const int32_t answer =
      ShowMessageBox(window(), Text(kTextClearFavoritesQuestion), kBoxYesNo | kBoxQuestionIcon);
  if (answer != kAnswerYes) return;
  m_work.favoritesView.RemoveAll();
  m_work.SaveFavorites();
}

void FavoritesPage::Import() {
  const CItineraryFormat* const row = FindWriter(m_work.driver.table, kFileKey);
  if (!row) return;
  FileDialog dialog;
  dialog.title = ToWide(PlainText(kTextImportFavorites));
  dialog.filter = SaveFilter(*row);
  const auto chosen = m_work.front.AskOpenFile(dialog);
  if (!chosen) return;
  TripRead trip;
  m_work.front.Run(
      [&] { trip = ReadTrip(m_work.driver.table, chosen->path, m_work.Context(), {}); });
  if (trip.status != kStatusSuccess) {
    if (trip.status != kStatusCancelled)
      m_work.front.ShowMessage(MessageIcon::kError, kTextCannotBeRead, trip.reason);
    return;
  }
  for (const size_t index : m_work.front.ChooseLists(trip.lists))
    m_work.favorites.TakePoints(*trip.lists[index]);
  m_work.favorites.SortByName();
  m_work.favoritesView.Rebuild();
  m_work.SaveFavorites();
}

void FavoritesPage::Export() {
  const CItineraryFormat* const row = FindWriter(m_work.driver.table, kFileKey);
  if (!row || m_work.favorites.points.empty()) return;
  FileDialog dialog;
  dialog.title = ToWide(PlainText(kTextExportFavorites));
  dialog.filter = SaveFilter(*row);
  dialog.defaultName = ToWide(Text(kTextFavoritesFile));
  dialog.defaultExtension = row->extension;
  const auto chosen = m_work.front.AskSaveFile(dialog);
  if (!chosen) return;
  TripWrite trip;
  m_work.front.Run([&] {
    trip = WriteTrip(m_work.driver.table, *row, chosen->path, m_work.favorites, {}, {},
                     m_work.Context());
  });
  if (trip.status != kStatusSuccess)
    m_work.front.ShowMessage(MessageIcon::kError, kTextCannotBeWritten, trip.reason);
}
