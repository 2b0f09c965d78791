#include "ui/search_page.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>
#include <QVBoxLayout>

#include "base/text_ids.h"
#include "planner/post_box.h"
#include "services/service_access.h"
#include "services/service_table.h"
#include "settings/settings.h"
#include "ui/icons.h"
#include "ui/look.h"
#include "ui/place_finder.h"
#include "ui/text.h"

SearchPage::SearchPage(SearchKind kind, const CSettings& settings, PostBox& posts, QWidget* parent)
    : QWidget(parent),
      m_kind(kind),
      m_settings(settings),
      m_posts(posts),
      m_field(new QLineEdit),
      m_button(new QToolButton),
      m_message(new QLabel) {
  m_field->setAccessibleName(Text(kTextSearchText));
  m_field->setPlaceholderText(
      Text(kind == SearchKind::kEverywhere ? kTextSearchHint : kTextSearchNearHint));
  m_field->setClearButtonEnabled(true);
  m_button->setIcon(LoadIcon(QStringLiteral("search")));
  m_button->setText(Text(kTextSearch));
  m_button->setToolTip(Text(kTextSearch));
  m_button->setAccessibleName(Text(kTextSearch));
  m_button->setFocusPolicy(Qt::StrongFocus);
  m_message->setProperty("role", QStringLiteral("hint"));
  m_message->setWordWrap(true);
  m_message->setTextFormat(Qt::PlainText);
  m_message->hide();

  auto* const row = new QHBoxLayout;
  row->setSpacing(kGrid);
  row->addWidget(m_field, 1);
  row->addWidget(m_button);
  auto* const layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(kGrid);
  layout->addLayout(row);
  layout->addWidget(m_message);
  connect(m_button, &QToolButton::clicked, this, [this] { StartSearch(); });
  connect(m_field, &QLineEdit::returnPressed, this, [this] { StartSearch(); });
}

// The thread stops a search that runs, and is waited for.
SearchPage::~SearchPage() { *m_isThere = false; }

void SearchPage::Tell(const QString& text) {
  m_message->setText(text);
  m_message->setVisible(!text.isEmpty());
}

void SearchPage::StartSearch() {
  if (!m_button->isEnabled()) return;
  const std::string text = ToUtf8(m_field->text().trimmed());
  if (text.empty()) {
    Tell(Text(kTextEmptySearch));
    return;
  }
  const int32_t provider = m_settings.findProvider;
  const Service* const service = FindService(provider);
  const auto ability = m_kind == SearchKind::kNearby ? kCanSearch : kCanGeocode;
  if (!service || !IsUsable(ServiceFor(*service, ability))) {
    Tell(Text(kTextFinderNotUsable));
    return;
  }
  const std::optional<CGpsCoordinate> around = center ? center() : std::nullopt;
  if (m_kind == SearchKind::kNearby && !around) {
    Tell(Text(kTextNoSearchCenter));
    return;
  }
  Tell(Text(kTextSearching));
  m_button->setEnabled(false);
  const uint64_t number = ++m_lastSearch;
  m_thread = std::jthread(
      [this, isThere = m_isThere, &posts = m_posts, kind = m_kind, number, provider, text,
       position = around.value_or(CGpsCoordinate())](const std::stop_token& stop) {
        const FoundPlaces answer = kind == SearchKind::kNearby
                                       ? FindPlacesNear(provider, text, position, stop)
                                       : FindPlaces(provider, text, stop);
        posts.Post([this, isThere, number, answer] {
          if (*isThere) EndSearch(number, answer.status, answer.places);
        });
      });
}

void SearchPage::EndSearch(uint64_t number, uint32_t status, std::vector<CGpsNamedPoint> places) {
  if (number != m_lastSearch) return;
  m_button->setEnabled(true);
  Tell(status == 0 ? QString() : FromUtf8(DescribeSearchFailure(status)));
  if (found) found(std::move(places));
}
