#include "app/send_command.h"

#include <chrono>
#include <string>

#include "app/console_front.h"
#include "app/console_text.h"
#include "app/list_operations.h"
#include "app/unattended_conversion.h"
#include "base/format_text.h"
#include "base/status.h"
#include "base/text_ids.h"
#include "conversion/conversion_driver.h"
#include "conversion/read_trip.h"
#include "net/http_server.h"
#include "planner/hand_off.h"
#include "planner/tomtom_home.h"
#include "platform/folder.h"

namespace {

// TomTom HOME may have to be started first.
constexpr std::chrono::seconds kFetchTime(60);

std::string TargetNames() {
  std::string names;
  for (const DeviceTarget& target : DeviceTargets())
    names += (names.empty() ? "" : ", ") + std::string(target.name);
  return names;
}

uint32_t SendStops(const DeviceTarget& target, const CGpsPointArray& list) {
  for (const CGpsPoint& point : list.points) {
    if (const uint32_t status = SendPointToTarget(target.number, point)) return status;
  }
  return kStatusSuccess;
}

// Programs that take no itinerary get its stops one by one.
uint32_t SendItinerary(const DeviceTarget& target, const CGpsPointArray& list,
                       const WideString& source, uint32_t split) {
  switch (target.number) {
    case kTargetTomTomHome:
      return WriteTomTomHome(source, list, split, true);
    case kTargetNavigonFresh:
      return SendItineraryToNavigon(list);
    default:
      return SendStops(target, list);
  }
}

int Fail(const std::string& message) {
  Complain(Printable(message));
  return kExitFailed;
}

int Misused(const std::string& message) {
  Complain(Printable(message));
  return kExitWrongUsage;
}

std::string DescribeStatus(uint32_t status) {
  return status == kStatusPortTaken ? FormatText(kTextLocalPortTaken, kHttpServerPort)
                                    : FormatText(kTextNotHandedOver, status);
}

// The server that TomTom HOME asks is this process.
bool WaitForTomTom(const Options& options) {
  if (!options.quiet) Complain(std::string(LoadTextUtf8(kTextWaitingForTomTom)));
  return WaitUntilTomTomHasFetched(kFetchTime);
}

}  // namespace

int RunSend(const Options& options, const FormatTable& table, ConversionContext& context) {
  const DeviceTarget* const target = FindDeviceTarget(options.send.target);
  if (!target) return Misused(FormatText(kTextUnknownTarget, options.send.target, TargetNames()));
  if (options.tokens.empty()) return Misused(FormatText(kTextUsage));
  if (!options.from.empty() && !FindReader(table, options.from))
    return Misused(FormatText(kTextNothingReads, ShownPath(options.from)));
  const WideString& source = options.tokens.front();
  if (FileAttributes(source) == kNoAttributes)
    return Misused(FormatText(kTextNoSource, ShownPath(source)));
  if (!IsTargetInstalled(target->number))
    return Fail(FormatText(kTextTargetNotInstalled, std::string(target->name)));

  ConsoleFront front(options);
  front.SetSubject(source);
  ConversionDriver driver(table, front, context, ChangeTracking::kOff);
  const uint32_t read =
      driver.Open(source, false, {.silent = true, .key = options.from, .byContent = true});
  if (read != kStatusSuccess && front.Declined())
    return Fail(FormatText(kTextNoSuchList, options.lists.text, ShownPath(source)));
  if (read != kStatusSuccess) return kExitFailed;
  ApplyListOperations(options.operations, source, options.quiet, driver.current);

  const CGpsPointArray& list = driver.current;
  const uint32_t stop = options.send.stop;
  if (stop > list.Count()) return Fail(FormatText(kTextNoSuchStop, stop, list.Count()));
  const uint32_t status = stop == 0 ? SendItinerary(*target, list, source, options.split)
                                    : SendPointToTarget(target->number, list.points[stop - 1]);
  if (status != kStatusSuccess) return Fail(DescribeStatus(status));
  if (target->number == kTargetTomTomHome && stop == 0 && !WaitForTomTom(options))
    return Fail(std::string(LoadTextUtf8(kTextTomTomHasNotFetched)));
  if (!options.quiet)
    Complain(FormatText(kTextStopsHandedOver, stop == 0 ? list.Count() : size_t{1}));
  return kExitConverted;
}
