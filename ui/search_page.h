#pragma once

#include <QWidget>
#include <functional>
#include <memory>
#include <optional>
#include <thread>

#include "model/point_list.h"

class CPointListView;
class CSettings;
class PointTable;
class PostBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QToolButton;

/// Where a search looks.
enum class SearchKind : int { kEverywhere, kNearby };

/// The page with which places are searched, everywhere or around a position, and what was found.
class SearchPage : public QWidget {
 public:
  /// Both must outlive this.
  SearchPage(SearchKind kind, const CSettings& settings, PostBox& posts, QWidget* parent = nullptr);
  ~SearchPage() override;

  void StartSearch();

  /// The position around which a search looks, if there is any; kNearby only.
  std::function<std::optional<CGpsCoordinate>()> center;
  /// A search has ended: places, or a text that says why there are none.
  std::function<void(std::vector<CGpsNamedPoint> places)> found;

 private:
  void EndSearch(uint64_t number, uint32_t status, std::vector<CGpsNamedPoint> places);
  void Tell(const QString& text);

  const SearchKind m_kind;
  const CSettings& m_settings;
  PostBox& m_posts;
  QLineEdit* m_field;
  QToolButton* m_button;
  QLabel* m_message;
  uint64_t m_lastSearch = 0;
  std::jthread m_thread;
  /// Posted answers look here whether the page is still there.
  std::shared_ptr<bool> m_isThere = std::make_shared<bool>(true);
};
