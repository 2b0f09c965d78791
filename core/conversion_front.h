#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "core/point_list.h"

/// The sign beside a message.
enum class EMessageIcon { kError, kWarning, kQuestion };

/// What the conversion needs of whoever stands in front of it: a window with its boxes, or the
/// console. Texts are numbers of string resources.
class IConversionFront {
 public:
  virtual ~IConversionFront() = default;

  virtual void ShowMessage(EMessageIcon icon, uint32_t textId) = 0;
  /// True for Yes.
  virtual bool AskYesNo(EMessageIcon icon, uint32_t textId) = 0;
  /// The indices of the lists that become the itinerary, in their order; none when the user
  /// declines. All lists have points, and there is at least one.
  virtual std::vector<size_t> ChooseLists(const PointLists& lists) = 0;
  /// The user must wait, or may go on.
  virtual void SetBusy(bool busy) = 0;
  /// The former itinerary is gone: empty what shows it.
  virtual void ItineraryCleared() = 0;
  /// A new itinerary stands: show its name, list and map.
  virtual void ItineraryLoaded() = 0;
};
