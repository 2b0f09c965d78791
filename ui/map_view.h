#pragma once

#include <QUrl>
#include <QWidget>
#include <functional>
#include <memory>

class MapRequests;
class PageEngine;
class PageFiles;
class PageWatch;
class PlannerBridge;
class PlannerPage;
class QLabel;
class QStackedLayout;
class QWebEngineProfile;
class QWebEngineView;

/// The map's part of the window: the planner page, or a dark ground with a button that loads it
/// anew when it cannot be shown.
class MapView : public QWidget {
 public:
  explicit MapView(QWidget* parent = nullptr);
  ~MapView() override;

  /// `bridge` must outlive this, or be taken away by `Close`.
  void SetBridge(PlannerBridge& bridge);
  /// Loads a page: our own for an empty address.
  void Load(const QUrl& address);
  void Reload();
  /// The page cannot be used.
  void GoDark();
  /// What the dark ground tells.
  QString DarkText() const;
  bool IsDark() const;
  /// The window closes; nothing reaches the page any more.
  void Close();

  QWebEngineView& View() const { return *m_view; }
  PlannerPage& Page() const { return *m_page; }

 private:
  void PageEnded();
  void PageIsSilent();

  std::unique_ptr<PageFiles> m_files;
  std::unique_ptr<MapRequests> m_requests;
  std::unique_ptr<QWebEngineProfile> m_profile;  ///< behind what it uses
  QStackedLayout* m_layout;
  QWebEngineView* m_view;
  QWidget* m_dark;
  QLabel* m_darkText;
  std::unique_ptr<PlannerPage> m_page;
  std::unique_ptr<PageEngine> m_engine;
  std::unique_ptr<PageWatch> m_watch;
  PlannerBridge* m_bridge = nullptr;
  QUrl m_address;
};
