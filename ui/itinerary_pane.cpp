#include "ui/itinerary_pane.h"

#include <QAction>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QStackedWidget>
#include <QToolButton>
#include <QVBoxLayout>

#include "base/text_ids.h"
#include "ui/actions.h"
#include "ui/icons.h"
#include "ui/look.h"
#include "ui/point_table.h"
#include "ui/text.h"

namespace {

constexpr int kResultsHeight = 150;

/// Takes the height of the page that is shown, not that of the tallest.
class PageStack : public QStackedWidget {
 public:
  QSize sizeHint() const override {
    return currentWidget() ? currentWidget()->sizeHint() : QSize(0, 0);
  }
  QSize minimumSizeHint() const override {
    return currentWidget() ? currentWidget()->minimumSizeHint() : QSize(0, 0);
  }
};

QToolButton* MakeButton(QAction& action) {
  auto* const button = new QToolButton;
  button->setDefaultAction(&action);
  button->setToolButtonStyle(Qt::ToolButtonIconOnly);
  button->setIconSize({kIconSize, kIconSize});
  button->setFocusPolicy(Qt::StrongFocus);
  button->setAccessibleName(action.toolTip());
  return button;
}

}  // namespace

ItineraryPane::ItineraryPane(const Actions& actions, const CSettings& settings, QWidget* parent)
    : QWidget(parent),
      m_name(new QLineEdit),
      m_pageButtons(new QHBoxLayout),
      m_pages(new PageStack),
      m_stops(new PointTable(PinKind::kItinerary, settings)) {
  m_name->setAccessibleName(Text(kTextItinerary));
  m_name->setToolTip(Text(kTextItinerary));
  m_name->setPlaceholderText(Text(kTextNameOrLink));
  auto* const label = new QLabel(Text(kTextItinerary));
  label->setBuddy(m_name);
  auto* const nameRow = new QHBoxLayout;
  nameRow->setSpacing(kSmallMargin);
  nameRow->addWidget(label);
  nameRow->addWidget(m_name, 1);

  m_pageButtons->setSpacing(kGrid);
  m_pages->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
  m_stops->setAccessibleName(Text(kTextWaypoints));
  m_stops->SetHint(Text(kTextOnMapEmptyClick));

  auto* const layout = new QVBoxLayout(this);
  layout->setContentsMargins(kSmallMargin, kSmallMargin, kSmallMargin, kSmallMargin);
  layout->setSpacing(kSmallMargin);
  layout->addLayout(nameRow);
  layout->addLayout(m_pageButtons);
  layout->addWidget(m_pages);
  layout->addWidget(m_stops, 1);
  layout->addWidget(MakeButtons(actions));
}

QWidget* ItineraryPane::MakeButtons(const Actions& actions) {
  auto* const row = new QWidget;
  auto* const layout = new QHBoxLayout(row);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(kGrid);
  for (const Command command : {Command::kAdd, Command::kRemove, Command::kUp, Command::kDown,
                                Command::kInvert, Command::kRemoveAll})
    layout->addWidget(MakeButton(actions[command]));
  layout->addStretch();
  for (const Command command : {Command::kRoad, Command::kClearRoute, Command::kShowAll})
    layout->addWidget(MakeButton(actions[command]));
  return row;
}

void ItineraryPane::AddPage(uint32_t textId, const char* icon, QWidget* page) {
  const int index = m_pages->addWidget(page);
  auto* const button = new QToolButton;
  button->setText(PlainText(textId));
  button->setToolTip(PlainText(textId));
  button->setIcon(LoadIcon(QLatin1String(icon)));
  button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  button->setCheckable(true);
  button->setAutoExclusive(true);
  button->setChecked(index == 0);
  button->setFocusPolicy(Qt::StrongFocus);
  button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  connect(button, &QToolButton::toggled, this, [this, index](bool isOn) {
    if (isOn) m_pages->setCurrentIndex(index);
    m_pages->updateGeometry();
  });
  m_pageButtons->addWidget(button, 1);
  m_choices.push_back(button);
}

void ItineraryPane::AddResults(PointTable& results) {
  results.setAccessibleName(Text(kTextSearchResult));
  results.setFixedHeight(kResultsHeight);
  results.hide();
  auto* const column = qobject_cast<QVBoxLayout*>(layout());
  column->insertWidget(column->indexOf(m_stops), &results);
}

void ItineraryPane::ShowPage(int page) {
  m_choices.at(static_cast<size_t>(page))->setChecked(true);
}

int ItineraryPane::ShownPage() const { return m_pages->currentIndex(); }
