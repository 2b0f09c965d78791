#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "base/wide_string.h"

// What the planner needs of the window around it. All texts are UTF-8, all calls come on the
// window's thread.

/// The rows of a list control. It draws their texts from `RouteTableText`.
class PointRows {
 public:
  virtual ~PointRows() = default;
  virtual void InsertRow(size_t index) = 0;
  virtual void RemoveRows(size_t first, size_t count) = 0;
  /// All rows are new, and none is selected.
  virtual void ResetRows(size_t count) = 0;
  /// The texts from `first` to `last`, both included, have changed.
  virtual void RefreshRows(size_t first, size_t last) = 0;
  /// No row is selected or has the focus any more.
  virtual void ClearSelection() = 0;
  /// Adds a row to the selection.
  virtual void SelectRow(size_t index) = 0;
  /// The selected rows, rising.
  virtual std::vector<size_t> SelectedRows() const = 0;
};

/// A modeless window with a text, the icon of a directions provider, a bar and a Cancel button,
/// which disables itself when it is pressed.
class ProgressWindow {
 public:
  virtual ~ProgressWindow() = default;
  /// Opens the window with a bar from 0 to `steps`. A provider without an icon shows none.
  virtual void Open(std::string_view text, int32_t provider, size_t steps) = 0;
  virtual void SetText(std::string_view text) = 0;
  virtual void Step() = 0;
  virtual bool IsCancelled() const = 0;
  virtual void Close() = 0;
};

/// The fields of the window for what the list has to tell.
class StatusField {
 public:
  virtual ~StatusField() = default;
  virtual void ShowMessage(std::string_view text) = 0;
  /// Distance and duration of the whole itinerary; empty when they are not known.
  virtual void ShowTotals(std::string_view text) = 0;
};

/// Styles of message boxes: a set of buttons and an icon.
enum BoxStyle : uint32_t {
  kBoxOk = 0,
  kBoxOkCancel = 1,
  kBoxYesNo = 4,
  kBoxRetryCancel = 5,
  kBoxErrorIcon = 0x10,
  kBoxQuestionIcon = 0x20,
  kBoxWarningIcon = 0x30,
};

/// Answers of message boxes.
enum BoxAnswer : int32_t {
  kAnswerOk = 1,
  kAnswerCancel = 2,
  kAnswerRetry = 4,
  kAnswerYes = 6,
  kAnswerNo = 7,
};

/// The window itself.
class PlannerWindow {
 public:
  virtual ~PlannerWindow() = default;
  /// A modal box with plain text; `style` is a BoxStyle or what a page asks for, which may hold
  /// other bits too. Gives a BoxAnswer.
  virtual int32_t ShowBox(std::string_view text, uint32_t style) = 0;
  /// The same for a box that the page wants. A page must not stop the user without end: what is too
  /// much is answered as if the box had been closed.
  virtual int32_t ShowPageBox(std::string_view text, uint32_t style) {
    return ShowBox(text, style);
  }
  /// The same as `ShowBox` about one of several things alike: `forTheRest` tells whether the answer
  /// counts for those that follow.
  virtual int32_t ShowRepeatedBox(std::string_view text, uint32_t style, bool& forTheRest) = 0;
  /// Lets the events that wait happen, without waiting for any.
  virtual void DispatchMessages() = 0;
  /// The normal caption of the window.
  virtual void ShowNormalTitle() = 0;
  /// A bar that tells of a newer version.
  virtual void ShowUpdateNotice(std::string_view text, std::string_view url) = 0;
  /// The page cannot be used: the map's area stays dark, `reason` is for who debugs the page.
  virtual void DisableMap(std::string_view reason) = 0;
  virtual void ReloadPage() = 0;
  /// Calls `PlannerBridge::OnTimer` with this number after so many milliseconds, again and again
  /// until it is stopped.
  virtual void StartTimer(int32_t timer, int32_t milliseconds) = 0;
  virtual void StopTimer(int32_t timer) = 0;
  /// Asks the user whether the page may write this file, which lies outside the folder for
  /// downloads.
  virtual bool MayDownloadTo(const WideString& path) = 0;
};
