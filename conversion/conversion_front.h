#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "base/wide_string.h"
#include "conversion/failure_reason.h"
#include "model/point_list.h"

/// The sign beside a message.
enum class MessageIcon { kError, kWarning, kQuestion };

/// What a file dialog shows.
struct FileDialog {
  WideString title;
  WideString filter;          ///< labels and patterns in turn, joined by bars
  bool offersAppend = false;  ///< with a check box for appending to what is there
  WideString defaultName;     ///< without extension
  WideString defaultExtension;
};

/// What the user has chosen in a file dialog.
struct ChosenFile {
  WideString path;
  bool append = false;
};

/// What the conversion needs of whoever stands in front of it: a window with its boxes, or the
/// console. Texts are numbers of string resources.
class ConversionFront {
 public:
  virtual ~ConversionFront() = default;

  /// `reason` is what is known of the cause of a failure.
  virtual void ShowMessage(MessageIcon icon, uint32_t textId, const FailureReason& reason) = 0;
  /// False where no editor opens, so that nobody is asked whether it should.
  virtual bool HasEditor() const { return true; }
  /// True for Yes.
  virtual bool AskYesNo(MessageIcon icon, uint32_t textId) = 0;
  /// The indices of the lists that become the itinerary, in their order; none when the user
  /// declines. All lists have points, and there is at least one.
  virtual std::vector<size_t> ChooseLists(const PointLists& lists) = 0;
  /// The user must wait, or may go on.
  virtual void SetBusy(bool busy) = 0;
  /// Does the reading or writing itself, and returns when it has ended; a window does it on another
  /// thread and lives meanwhile.
  virtual void Run(const std::function<void()>& work) { work(); }
  /// The former itinerary is gone: empty what shows it.
  virtual void ItineraryCleared() = 0;
  /// A new itinerary stands: show its name, list and map.
  virtual void ItineraryLoaded() = 0;

  // What only a window has: dialogs, and a field with the itinerary's name.

  /// Asks for an existing file to open, or for one to save in, with a question before it is
  /// overwritten. Nothing when the user cancels.
  virtual std::optional<ChosenFile> AskOpenFile(const FileDialog&) { return std::nullopt; }
  virtual std::optional<ChosenFile> AskSaveFile(const FileDialog&) { return std::nullopt; }
  virtual WideString NameFieldText() const { return {}; }
  /// The itinerary has a new name.
  virtual void NameChanged() {}
};
