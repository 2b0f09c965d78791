#pragma once

#include <QMainWindow>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "planner/window_parts.h"
#include "ui/actions.h"
#include "ui/page_box_limit.h"
#include "ui/window_store.h"

class CGpsCoordinate;
class CSettings;
class ExportMarks;
class ItineraryPane;
class MapView;
class NoticeBar;
class PointTable;
class ProgressDialog;
class QComboBox;
class QMenu;
class QSplitter;
class QTimer;
class Recovery;
class StatusLine;
class Workspace;
struct CItineraryFormat;
struct TripWrite;
enum class SearchKind : int;

/// The program's one window: list on the left, map on the right, and what can be done with them.
class MainWindow : public QMainWindow, public PlannerWindow {
 public:
  /// `settings` must outlive this, and may be changed by it.
  explicit MainWindow(CSettings& settings);
  ~MainWindow() override;

  /// Loads the map page; shows the window where it stood last.
  /// `file` is opened then, if there is any and it exists, without a question about its layout.
  /// `settingsMessages` are what the user has to know about the settings that were loaded.
  void Start(const QString& file = {}, std::vector<std::string> settingsMessages = {});
  /// Reads a file as if it had been opened, without a question about changes.
  void OpenPath(const QString& path);

  /// Shows a text in the line at the bottom.
  void Tell(const QString& text);

  Workspace& Work() const { return *m_work; }
  MapView& Map() const { return *m_map; }
  ItineraryPane& Pane() const { return *m_pane; }
  QComboBox& ExportList() const { return *m_exportList; }
  NoticeBar& Notice() const { return *m_notice; }
  const Actions& Commands() const { return m_actions; }

  int32_t ShowBox(std::string_view text, uint32_t style) override;
  int32_t ShowPageBox(std::string_view text, uint32_t style) override;
  int32_t ShowRepeatedBox(std::string_view text, uint32_t style, bool& forTheRest) override;
  void DispatchMessages() override;
  void ShowNormalTitle() override;
  void ShowUpdateNotice(std::string_view text, std::string_view url) override;
  void DisableMap(std::string_view reason) override;
  void ReloadPage() override;
  void StartTimer(int32_t timer, int32_t milliseconds) override;
  void StopTimer(int32_t timer) override;
  bool MayDownloadTo(const WideString& path) override;

 protected:
  void closeEvent(QCloseEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  void MakeWork();
  void MakeMenus();
  void MakeToolBar();
  void MakeBody();
  void AddSearchPage(SearchKind kind, uint32_t textId, const char* icon);
  std::optional<CGpsCoordinate> SearchCenter() const;
  void ConnectList();
  void ConnectCommands();
  void FillExportList();
  void FillRecentFiles();
  void Connect(Command command, std::function<void()> action);

  void SetBusy(bool busy);
  void ShowName();
  void ItineraryLoaded();
  void UpdateCommandsSoon();
  void UpdateCommands();

  void Open();
  void Export();
  void RemoveAll();
  void AddPointByWindow();
  void EditPoint(size_t row);
  void NameFieldLeft();
  void ChangeSettings();
  void TellOfSettings(const QString& trouble);
  void TellOfFavorites(uint32_t status);
  bool SaveBeforeClosing();
  void Exported(const WideString& path, const CItineraryFormat& row, const TripWrite& trip);
  void OfferRecovery();
  void OpenArgument(const QString& file);

  CSettings& m_settings;
  WindowStore m_store;
  Actions m_actions;
  ItineraryPane* m_pane = nullptr;
  PointTable* m_results = nullptr;
  PointTable* m_favorites = nullptr;
  PointTable* m_pois = nullptr;
  MapView* m_map = nullptr;
  NoticeBar* m_notice = nullptr;
  StatusLine* m_status = nullptr;
  QComboBox* m_exportList = nullptr;
  QMenu* m_recentFiles = nullptr;
  QSplitter* m_splitter = nullptr;
  std::unique_ptr<ProgressDialog> m_progress;
  std::unique_ptr<Workspace> m_work;
  std::unique_ptr<Recovery> m_recovery;
  std::unique_ptr<ExportMarks> m_marks;
  std::map<int32_t, QTimer*> m_timers;
  bool m_isBusy = false;
  bool m_updateWaits = false;
  uint64_t m_notedEdits = 0;  ///< as often as the list had been changed when it was looked at
  bool m_isInterpreting = false;
  PageBoxLimit m_pageBoxes;
  QString m_knownName;  ///< what the name field showed when it was last looked at for a link
};
