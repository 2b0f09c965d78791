#include "app/directions_options.h"

#include <CLI/CLI.hpp>

#include "base/format_text.h"
#include "base/text.h"
#include "base/text_ids.h"
#include "platform/path_text.h"
#include "services/directions/route_words.h"

namespace {

constexpr OptionHelp kHelp[] = {
    {"    --way SOURCE", kTextHelpWay},
    {"    --directions[=NAME]", kTextHelpDirections},
    {"    --as-track", kTextHelpAsTrack},
    {"    --with-way", kTextHelpWithWay},
    {"    --mode M", kTextHelpMode},
    {"    --type T", kTextHelpType},
    {"    --avoid A,B", kTextHelpAvoid},
    {"    --hilliness H", kTextHelpHilliness},
    {"    --windingness W", kTextHelpWindingness},
    {"    --tractor", kTextHelpTractor},
    {"    --roads ...", kTextHelpRoads},
};

// What the parser makes of a flag without a value.
constexpr std::string_view kNoValue = "true";

template <typename Words>
bool Refuse(std::string_view option, std::string_view typed, const Words& words,
            std::string& error) {
  std::string known;
  for (const auto& row : words) {
    if (!known.empty()) known += ", ";
    known += row.word;
  }
  error = FormatText(kTextWrongOptionValue, typed, option, known);
  return false;
}

bool TakeWord(std::string_view option, const std::optional<std::string>& typed,
              std::span<const NumberWord> words, std::optional<uint32_t>& number,
              std::string& error) {
  if (!typed) return true;
  for (const NumberWord& row : words) {
    if (row.word == *typed) number = row.number;
  }
  return number || Refuse(option, *typed, words, error);
}

bool TakeAvoided(const std::optional<std::string>& typed, std::optional<AvoidedRoads>& avoided,
                 std::string& error) {
  if (!typed) return true;
  avoided.emplace();
  std::vector<std::string_view> fields;
  SplitFields(*typed, ',', fields);
  for (const std::string_view field : fields) {
    const std::string_view word = Trim(field, " ");
    bool isKnown = false;
    for (const RoadsWord& row : RoadsWords()) {
      if (row.word != word) continue;
      (*avoided).*row.avoided = true;
      isKnown = true;
    }
    if (!isKnown) return Refuse("--avoid", word, RoadsWords(), error);
  }
  return true;
}

// Options that mean nothing without another one, or beside it.
bool FitTogether(const DirectionsOptions& options, std::string& error) {
  for (const auto& [isGiven, option] :
       {std::pair(options.asTrack, "--as-track"), std::pair(options.withWay, "--with-way")}) {
    if (!isGiven || options.directions) continue;
    error = FormatText(kTextNeedsDirections, option);
    return false;
  }
  if (options.asTrack && options.withWay) {
    error = FormatText(kTextTrackOrStops);
    return false;
  }
  return true;
}

}  // namespace

void AddDirectionsOptions(CLI::App& parser, DirectionsOptions& options) {
  DirectionsOptions::Typed& typed = options.typed;
  parser.add_option("--way", typed.way);
  parser.add_flag("--directions", typed.directions);
  parser.add_flag("--as-track", options.asTrack);
  parser.add_flag("--with-way", options.withWay);
  parser.add_option("--mode", typed.mode);
  parser.add_option("--type", typed.type);
  parser.add_option("--avoid", typed.avoid);
  parser.add_option("--hilliness", typed.hilliness);
  parser.add_option("--windingness", typed.windingness);
  parser.add_flag("--tractor", options.tractor);
  parser.add_flag("--roads", options.roads);
}

bool TakeDirectionsOptions(DirectionsOptions& options, std::string& error) {
  const DirectionsOptions::Typed& typed = options.typed;
  if (typed.way) options.way = WidePath(*typed.way);
  options.directions = !typed.directions.empty();
  if (options.directions && typed.directions != kNoValue) options.provider = typed.directions;
  RouteWishes& wishes = options.wishes;
  wishes.tractor = options.tractor;
  return TakeWord("--mode", typed.mode, TravelModeWords(), wishes.mode, error) &&
         TakeWord("--type", typed.type, RouteTypeWords(), wishes.type, error) &&
         TakeAvoided(typed.avoid, wishes.avoided, error) &&
         TakeWord("--hilliness", typed.hilliness, RouteDegreeWords(), wishes.hilliness, error) &&
         TakeWord("--windingness", typed.windingness, RouteDegreeWords(), wishes.windingness,
                  error) &&
         FitTogether(options, error);
}

std::span<const OptionHelp> DirectionsOptionHelp() { return kHelp; }
