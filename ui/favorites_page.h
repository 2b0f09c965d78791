#pragma once

#include <QWidget>

class PointTable;
class QToolButton;
class Workspace;

/// The page with the user's favourites: to be added to the itinerary, taken from a file, written to
/// one, or removed.
class FavoritesPage : public QWidget {
 public:
  /// Both must outlive this.
  FavoritesPage(Workspace& work, PointTable& table, QWidget* parent = nullptr);

 private:
  QToolButton* AddButton(const char* icon, uint32_t textId, void (FavoritesPage::*action)());
  void AddToItinerary();
  void Import();
  void Export();
  void Remove();
  void Clear();

  Workspace& m_work;
  PointTable& m_table;
  QWidget* m_buttons;
};
