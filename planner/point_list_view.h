#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "model/point_list.h"
#include "planner/directions.h"
#include "planner/edit_history.h"
#include "planner/list_ids.h"
#include "planner/planner_script.h"
#include "planner/window_parts.h"
#include "settings/settings.h"

/// What `CPointListView::SelectRow` takes for no row.
inline constexpr int64_t kNoRow = -1;
/// What `CPointListView::RemoveRows` takes for the selected rows.
inline constexpr int64_t kSelectedRows = -1;

/// A list of points with its rows in the window and its pins on the page. Every edit, wherever it
/// comes from, goes through it and is a step that can be taken back. An index beyond the last point
/// throws std::out_of_range before anything has changed. A failure of the page never disturbs an
/// edit.
class CPointListView {
 public:
  /// `rows` and `settings` must outlive this.
  CPointListView(int32_t listId, PinKind listKind, PointRows& rows, CSettings& settings);
  CPointListView(const CPointListView&) = delete;
  CPointListView& operator=(const CPointListView&) = delete;

  /// Gives the itinerary what it calculates with; other lists have neither. Null takes them away.
  void SetCalculation(RoadDirections* directions, PlannerWindow* window);
  /// The window closes: a calculation that runs ends without touching anything any more.
  void Close();

  /// The list is another one, or was filled anew: rows and pins follow, and nothing that was done
  /// before can be taken back.
  void Rebuild();

  /// The list is another one, and has not been shown yet, perhaps because the user wants to see
  /// none of it: no rows and no pins stand, nothing that was done before can be taken back. The
  /// next edit or calculation shows what there is.
  void Hide();

  /// What most actions end with: the itinerary is calculated anew with `AUTO_CALC`, else only the
  /// totals are. Lists of other kinds do neither. A calculation that runs ends first.
  void AfterEdit();

  /// A setting has changed on which rows or totals depend.
  void ShowSettings();

  // The actions.

  /// Shows all pins and all legs on a page that has just come, or comes anew.
  void ShowAllPins();

  /// Selects just this row, and centres the map on it; `kNoRow` selects none.
  void SelectRow(int64_t index);
  /// Inserts a row for a point that is in the list already, and its pin. In `batch` mode it steps
  /// the bar, and false tells that Cancel was pressed.
  bool InsertRow(size_t index);
  /// Behind the first selected row, else at the end. Without `AfterEdit`.
  void AddPoint(const CGpsPoint& point);
  /// In front of the point at `index`; the count appends. `AfterEdit`.
  void InsertPoint(size_t index, const CGpsPoint& point);
  /// Several at once, as one step, with a progress window for many. `AfterEdit`.
  void InsertPoints(size_t index, std::vector<CGpsPoint> points);
  /// Position, altitude and tolerance; name and comment stay. `AfterEdit`.
  void SetPosition(size_t index, const CGpsPoint& position);
  /// All values but the leg. `AfterEdit`.
  void ChangePoint(size_t index, const CGpsPoint& point);
  void RenamePoint(size_t index, std::string_view name);
  void MoveSelectedUp();
  void MoveSelectedDown();
  /// A drag in the list. `AfterEdit`.
  void MoveRow(size_t from, size_t to);
  /// The points get this order, which holds each index once; std::invalid_argument for any other.
  /// `AfterEdit`.
  void ApplyOrder(const std::vector<size_t>& order);
  /// One row, or `kSelectedRows`. `AfterEdit`.
  void RemoveRows(int64_t index);
  void RemoveAll();
  void ReverseAll();
  /// All legs go, and with them their lines on the map.
  void ClearRoute();
  /// -1 and -2 calculate everything, any other index the leg that leads there.
  void CalculateFrom(int64_t index);
  /// All legs in their order. A run that an edit overtakes ends and begins anew as `AfterEdit`; one
  /// without a progress window makes room for one that shows it.
  void CalculateAll(bool showProgress);
  /// What the page's `GetRoutePreview` asks for: the points of the leg that a dragged point would
  /// make. Empty when there are fewer than two.
  std::vector<CGpsPoint> PreviewPoints(int64_t index, const CGpsCoordinate& position,
                                       bool moved) const;
  /// Sums up the legs and shows the totals, which are empty while a leg is missing.
  void UpdateTotals();

  bool CanUndo() const { return m_history.CanUndo(); }
  bool CanRedo() const { return m_history.CanRedo(); }
  void Undo();
  void Redo();

  /// How often the list has been changed: another number, another list.
  uint64_t EditCount() const { return m_editCount + m_renameCount; }

  /// The selected row, or the first of them; `kNoRow` without one.
  int64_t FirstSelectedRow() const;

  CGpsPointArray* list = nullptr;     ///< null before the window has set it
  CPlannerScript* planner = nullptr;  ///< null while no page is loaded; no pin calls then
  ProgressWindow* progress = nullptr;
  StatusField* statusField = nullptr;  ///< may be null
  /// Puts work behind what the window is doing, so that an edit does not wait for the ways of
  /// `AUTO_CALC`. Empty: it does.
  std::function<void(std::function<void()>)> later;
  const int32_t pinListId;
  const PinKind kind;
  bool autoCalc = false;  ///< the setting, renewed at the start of every calculation
  bool batch = false;     ///< rows are being filled by a loop that shows progress

 private:
  enum class LegResult { kCalculated, kFailed, kEnded };

  using PageCall = std::function<void(CPlannerScript&)>;

  // An edit: what is being calculated is out of date. The page hears of it when it has ended, and
  // list and rows are in step again: it may call back with edits of its own.
  class EditScope {
   public:
    explicit EditScope(CPointListView& view) : m_view(view) {
      view.ShowHidden();
      ++view.m_editCount;
      ++view.m_editDepth;
    }
    ~EditScope() { End(); }
    EditScope(const EditScope&) = delete;
    EditScope& operator=(const EditScope&) = delete;

    void End() {
      if (std::exchange(m_ended, true)) return;
      --m_view.m_editDepth;
      m_view.SendPageCalls();
    }

   private:
    CPointListView& m_view;
    bool m_ended = false;
  };

  // Calls the page, if there is one, behind the calls and the edits that are on their way.
  void CallPage(PageCall call);
  void SendPageCalls();
  void ShowHidden();
  void RefreshRowsFrom(size_t first);
  void RefreshPins(size_t first);
  void ShowAll();
  void ReplacePoint(size_t index, const CGpsPoint& values, bool clearsLegs);
  void MoveSelected(bool up);
  void ShowChange(const ListChange& change, bool made);
  void ShowAdded(const std::vector<PlacedPoint>& placed);
  void ShowRemoved(const std::vector<PlacedPoint>& placed);
  void RunCalculation(bool showProgress);
  // True when what came meanwhile has been done, which may be another calculation.
  bool EndCalculation();
  // Lets the window live; false when the calculation is to end.
  bool GoesOn(uint64_t edits);
  // `passesFailuresOver` is what the user has answered so far in a run of several legs; null for
  // a leg alone.
  LegResult CalculateLeg(size_t from, size_t to, bool* passesFailuresOver = nullptr);
  // The answer for a leg; nothing when the run is to end.
  std::optional<DirectionsAnswer> AskForLeg(const std::vector<CGpsPoint>& points);
  void LegArrived(size_t to, const DirectionsAnswer& answer);
  void ShowMessage(std::string_view text) const;

  PointRows& m_rows;
  CSettings& m_settings;
  RoadDirections* m_directions = nullptr;
  PlannerWindow* m_window = nullptr;
  EditHistory m_history;
  std::deque<PageCall> m_pageCalls;
  bool m_sendsPageCalls = false;
  uint64_t m_editCount = 0;
  uint64_t m_renameCount = 0;  ///< edits of names, with which nothing has to be calculated anew
  bool m_isHidden = false;  ///< the list stands, and nothing of it is shown yet
  int m_editDepth = 0;
  bool m_isCalculating = false;
  bool m_showsProgress = false;
  bool m_afterEditWaits = false;  ///< an edit came in the middle of a calculation
  bool m_progressWaits = false;   ///< so did the wish for a calculation with progress
  bool m_runWaits = false;        ///< a calculation is behind what the window is doing
};
