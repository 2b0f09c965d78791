#pragma once

#include <string>

#include "app/directions_choice.h"
#include "app/options.h"
#include "app/stop_order.h"
#include "model/point_list.h"
#include "services/directions/list_directions.h"

/// Gives itineraries the ways between their stops before they are written.
class LegCalculation {
 public:
  /// `choice` must be one that is to be asked; `options` must outlive this.
  LegCalculation(const Options& options, DirectionsChoice choice)
      : m_options(options), m_choice(std::move(choice)) {}

  /// Why the best order of so many stops may not be asked for; empty when it may.
  std::string WhyNotOrderByRoad(const WideString& source, size_t stops) const;

  /// How stops are ordered by the ways between them. It lives no longer than this.
  RoadOrder Roads() const;

  /// Asks for a leg for each stop but the first, and tells totals and failures. `source` is the
  /// file that the stops come from. False when there are no legs although there are stops.
  bool Calculate(const WideString& source, CGpsPointArray& list);

  /// Whether a leg has failed so far.
  bool HasFailures() const { return m_hasFailures; }

 private:
  bool ShowsProgress() const;
  void Tell(const WideString& source, const CGpsPointArray& list, const LegsResult& result) const;

  const Options& m_options;
  DirectionsChoice m_choice;
  bool m_hasFailures = false;
};
