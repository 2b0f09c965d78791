#include "app/way_command.h"

#include <memory>
#include <utility>

#include "app/console_front.h"
#include "app/console_text.h"
#include "app/directions_choice.h"
#include "app/list_operations.h"
#include "app/output_sink.h"
#include "app/unattended_conversion.h"
#include "app/way_answer.h"
#include "base/format_text.h"
#include "base/status.h"
#include "base/text_ids.h"
#include "conversion/conversion_driver.h"
#include "conversion/read_trip.h"
#include "platform/folder.h"

namespace {

std::unique_ptr<CGpsPointList> PointsOf(const CGpsPointArray& list) {
  auto points = std::make_unique<CGpsPointList>();
  for (const CGpsPoint& point : list.points)
    points->points.push_back(std::make_unique<CGpsNamedPoint>(point));
  return points;
}

// Reads the stops; other than 0: the exit status, and the user has been told.
int ReadStops(const Options& options, ConsoleFront& front, ConversionDriver& driver) {
  const WideString& source = *options.directions.way;
  uint32_t error = kStatusSuccess;
  if (!IsWebAddress(source) && FileAttributes(source, &error) == kNoAttributes &&
      error == kStatusFileNotFound) {
    Complain(FormatText(kTextNoSource, ShownPath(source)));
    return kExitWrongUsage;
  }
  if (!options.from.empty() && !FindReader(driver.table, options.from)) {
    Complain(FormatText(kTextNothingReads, ShownPath(options.from)));
    return kExitWrongUsage;
  }
  front.SetSubject(source);
  const uint32_t status =
      driver.Open(source, false, {.silent = true, .key = options.from, .byContent = true});
  if (status != kStatusSuccess && front.Declined())
    Complain(FormatText(kTextNoSuchList, options.lists.text, ShownPath(source)));
  if (status != kStatusSuccess) return kExitFailed;
  ApplyListOperations(options.operations, source, options.quiet, driver.current);
  return kExitConverted;
}

}  // namespace

int RunWay(const Options& options, const FormatTable& table, ConversionContext& context) {
  PrepareServices();
  ConsoleFront front(options);
  ConversionDriver driver(table, front, context, ChangeTracking::kOff);
  const DirectionsChoice choice = ChooseDirections(options, options.services.typed.provider);
  ServiceOutcome outcome = OutcomeOf(choice.service);
  if (choice.IsToBeAsked()) {
    if (const int status = ReadStops(options, front, driver)) return status;
    choice.provider->Calculate(PointsOf(driver.current), choice.request.travelMode,
                               *choice.request.options);
    constexpr int32_t kWithoutLimit = -1;
    const uint32_t status = choice.provider->Wait(kWithoutLimit);
    outcome = OutcomeOfWay(status, choice.provider->FailureText());
  }

  OutputSink sink;
  const CRouteProvider::Legs none;
  const CRouteProvider::Legs& legs = choice.IsToBeAsked() ? choice.provider->GetLegs() : none;
  if (!options.json) {
    WriteWayText(sink, driver.current, legs);
  } else if (choice.provider) {
    WriteJsonWay(sink, choice, outcome, legs);
  }
  const int exitStatus = Conclude(choice.service, outcome, sink.Finish());
  TellRequests(options);
  return exitStatus;
}
