#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "base/wide_string.h"
#include "model/point_list.h"

/// The companion programs of devices, by the numbers under which the page knows them.
enum DeviceTargetId : int32_t {
  kTargetTomTomHome = 0,
  kTargetNavigonFresh = 1,
  kTargetNavgate = 2,
  kTargetMioMore = 3,
  kTargetGarmin = 4,
};

struct DeviceTarget {
  int32_t number;
  std::string_view name;      ///< on the command line
  std::string_view startKey;  ///< in what the page is started with
  uint32_t labelTextId;       ///< of the page's button
};

std::span<const DeviceTarget> DeviceTargets();
/// The target of a name on the command line, or of a number; null without one.
const DeviceTarget* FindDeviceTarget(std::string_view name);
const DeviceTarget* FindDeviceTarget(int32_t number);

/// Whether a program is there that takes what goes to the target; false for numbers that no target
/// has. Looks at the desktop's files each time.
bool IsTargetInstalled(int32_t target);

/// The address that hands a point to the target; empty for one that takes a file, or none.
std::string PointLink(int32_t target, const CGpsNamedPoint& point);

/// The content of the file that hands a point to Navigon Fresh: UTF-16, the lower byte first.
std::string FreshContact(const CGpsNamedPoint& point);

/// Hands a point to a target. Returns 0 or the platform's error code; a number that no target has
/// does nothing and gives kStatusInvalidParameter.
uint32_t SendPointToTarget(int32_t target, const CGpsNamedPoint& point);

/// Hands an itinerary to Navigon Fresh, as a file in the temporary folder. Returns a status.
uint32_t SendItineraryToNavigon(const CGpsPointArray& list);
