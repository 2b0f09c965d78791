#include "services/directions/manoeuvre_text.h"

#include "base/localized_text.h"
#include "base/text_ids.h"

namespace {

struct WordText {
  std::string_view word;
  uint32_t textId;
};

constexpr WordText kTypes[] = {{"depart", kTextManoeuvreDepart},
                               {"arrive", kTextManoeuvreArrive},
                               {"roundabout", kTextManoeuvreRoundabout},
                               {"rotary", kTextManoeuvreRoundabout}};

constexpr WordText kModifiers[] = {
    {"left", kTextManoeuvreLeft},
    {"right", kTextManoeuvreRight},
    {"slight left", kTextManoeuvreSlightLeft},
    {"slight right", kTextManoeuvreSlightRight},
    {"sharp left", kTextManoeuvreSharpLeft},
    {"sharp right", kTextManoeuvreSharpRight},
    {"uturn", kTextManoeuvreTurnAround},
};

uint32_t TextIdFor(std::string_view type, std::string_view modifier) {
  for (const WordText& row : kTypes) {
    if (row.word == type) return row.textId;
  }
  for (const WordText& row : kModifiers) {
    if (row.word == modifier) return row.textId;
  }
  return kTextManoeuvreStraight;
}

}  // namespace

std::string ManoeuvreText(std::string_view type, std::string_view modifier, std::string_view road) {
  std::string text(LoadTextUtf8(TextIdFor(type, modifier)));
  if (!road.empty()) text.append(": ").append(road);
  return text;
}
