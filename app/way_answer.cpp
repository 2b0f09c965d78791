#include "app/way_answer.h"

#include <algorithm>
#include <limits>
#include <string>

#include "app/json_point.h"
#include "base/format_text.h"
#include "base/measure_text.h"
#include "base/text_ids.h"
#include "markup/json_string.h"
#include "settings/settings.h"

namespace {

void WriteJsonPosition(ByteSink& sink, const CGpsCoordinate& position) {
  sink.Write("\"latitude\": ");
  WriteJsonNumber(sink, position.latitude);
  sink.Write(", \"longitude\": ");
  WriteJsonNumber(sink, position.longitude);
}

void WriteJsonMeasure(ByteSink& sink, const CRouteMeasure& measure) {
  sink.Printf("\"distance\": %u, \"duration\": %u", measure.distance, measure.duration);
}

// Writes a member that is an array, its entries on lines of their own.
template <typename Entries, typename WriteEntry>
void WriteJsonArray(ByteSink& sink, std::string_view key, const Entries& entries,
                    std::string_view separator, WriteEntry&& writeEntry) {
  sink.Write(", \"");
  sink.Write(key);
  sink.Write("\": [");
  bool isFirst = true;
  for (const auto& entry : entries) {
    if (!isFirst) sink.Write(separator);
    isFirst = false;
    writeEntry(entry);
  }
  sink.Put(']');
}

void WriteJsonLeg(ByteSink& sink, const CRouteData& leg) {
  sink.Put('{');
  WriteJsonMeasure(sink, leg.measure);
  WriteJsonArray(sink, "path", leg.path.points, ", ", [&sink](const auto& point) {
    sink.Put('{');
    WriteJsonPosition(sink, *point);
    sink.Write(", \"name\": ");
    WriteJsonString(sink, point->name);
    sink.Put('}');
  });
  WriteJsonArray(sink, "shape", leg.shape.points.points, ", ", [&sink](const auto& point) {
    sink.Put('[');
    WriteJsonNumber(sink, point->latitude);
    sink.Write(", ");
    WriteJsonNumber(sink, point->longitude);
    sink.Put(']');
  });
  WriteJsonArray(sink, "steps", leg.steps, ",\n    ", [&sink](const CGpsRouteStep& step) {
    sink.Put('{');
    WriteJsonPosition(sink, step);
    sink.Write(", ");
    WriteJsonMeasure(sink, step.measure);
    sink.Write(", \"instruction\": ");
    WriteJsonString(sink, step.instruction);
    sink.Put('}');
  });
  sink.Put('}');
}

// Instructions of some services are pieces of web pages.
std::string WithoutTags(std::string_view text) {
  std::string plain;
  while (!text.empty()) {
    const size_t open = text.find('<');
    const size_t close = open == std::string_view::npos ? open : text.find('>', open);
    plain += text.substr(0, close == std::string_view::npos ? close : open);
    if (close == std::string_view::npos) break;
    // Tags also part paragraphs.
    if (!plain.empty() && plain.back() != ' ' && text.substr(open).starts_with("<div"))
      plain += ' ';
    text.remove_prefix(close + 1);
  }
  return plain;
}

std::string ShownDistance(uint32_t metres) {
  return LocalNumber(FormatDistance(metres, CSettings::Instance().distMiles));
}

uint32_t Narrowed(uint64_t value) {
  return static_cast<uint32_t>(std::min<uint64_t>(value, std::numeric_limits<uint32_t>::max()));
}

WayTotals TotalsOf(const CRouteProvider::Legs& legs) {
  WayTotals totals;
  for (const CRouteData& leg : legs) totals.Add(leg.measure);
  return totals;
}

// Where a leg leads from and to: two stops, if the service gave a leg for each pair of them.
std::string TitleOf(const CGpsPointArray& stops, const CRouteProvider::Legs& legs, size_t index) {
  if (legs.size() + 1 == stops.Count()) {
    return FormatText(kTextFromTo, NameOfStop(stops.points[index], index),
                      NameOfStop(stops.points[index + 1], index + 1));
  }
  const auto& path = legs[index].path.points;
  if (path.empty() || path.front()->name.empty() || path.back()->name.empty()) return {};
  return FormatText(kTextFromTo, path.front()->name, path.back()->name);
}

}  // namespace

void WayTotals::Add(const CRouteMeasure& measure) {
  distance += measure.distance;
  duration += measure.duration;
}

std::string WayTotals::ShownDistance() const { return ::ShownDistance(Narrowed(distance)); }
std::string WayTotals::ShownDuration() const { return FormatDuration(Narrowed(duration)); }

void WriteJsonWay(ByteSink& sink, const DirectionsChoice& choice, const ServiceOutcome& outcome,
                  const CRouteProvider::Legs& legs) {
  sink.Write("{\"provider\": ");
  WriteJsonProvider(sink, *choice.service.provider);
  sink.Printf(", \"mode\": %u, ", choice.request.travelMode);
  WriteJsonStatus(sink, outcome);
  const WayTotals totals = TotalsOf(legs);
  sink.Write(fmt::format(", \"distance\": {}, \"duration\": {}", totals.distance, totals.duration));
  WriteJsonArray(sink, "legs", legs, ",\n  ",
                 [&sink](const CRouteData& leg) { WriteJsonLeg(sink, leg); });
  sink.Write("}\n");
}

void WriteWayText(ByteSink& sink, const CGpsPointArray& stops, const CRouteProvider::Legs& legs) {
  for (size_t i = 0; i < legs.size(); ++i) {
    const CRouteData& leg = legs[i];
    const std::string measure = FormatText(kTextWayLeg, i + 1, ShownDistance(leg.measure.distance),
                                           FormatDuration(leg.measure.duration));
    const std::string title = TitleOf(stops, legs, i);
    sink.Write(fmt::format("{}{}{}\n", measure, title.empty() ? "" : "  ", title));
    for (const CGpsRouteStep& step : leg.steps)
      sink.Write(fmt::format("{:>12}  {}\n", ShownDistance(step.measure.distance),
                             Printable(WithoutTags(step.instruction))));
  }
  if (legs.empty()) return;
  const WayTotals totals = TotalsOf(legs);
  sink.Write(FormatText(kTextWayTotal, totals.ShownDistance(), totals.ShownDuration()) + "\n");
}
