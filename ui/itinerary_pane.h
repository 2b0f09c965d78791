#pragma once

#include <QWidget>
#include <cstdint>
#include <vector>

class Actions;
class CSettings;
class PointTable;
class QBoxLayout;
class QLineEdit;
class QStackedWidget;
class QToolButton;

/// The left side of the window: the itinerary's name, the page for searching or for favourites,
/// and the list of stops with its buttons.
class ItineraryPane : public QWidget {
 public:
  /// Both must outlive this.
  ItineraryPane(const Actions& actions, const CSettings& settings, QWidget* parent = nullptr);

  QLineEdit& NameField() const { return *m_name; }
  PointTable& Stops() const { return *m_stops; }
  /// Adds a page over the list, behind a button with the text.
  void AddPage(uint32_t textId, const char* icon, QWidget* page);
  /// Puts the table of what was found under the pages; it is hidden until something is.
  void AddResults(PointTable& results);
  void ShowPage(int page);
  int ShownPage() const;

 private:
  QWidget* MakeButtons(const Actions& actions);

  QLineEdit* m_name;
  QBoxLayout* m_pageButtons;
  QStackedWidget* m_pages;
  PointTable* m_stops;
  std::vector<QToolButton*> m_choices;
};
