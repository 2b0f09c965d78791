// The settings page of how things are shown.

#include <QComboBox>
#include <algorithm>

#include "base/languages.h"
#include "base/text_ids.h"
#include "settings/settings.h"
#include "ui/settings_form.h"
#include "ui/settings_pages.h"
#include "ui/text.h"

namespace {

class DisplayPage : public SettingsForm {
 public:
  explicit DisplayPage(CSettings& settings) {
    AddSwitch(kTextDistancesInMiles, settings.distMiles);
    AddSwitch(kTextShowWaypointNumbers, settings.displayNumber);
    AddChoice(
        kTextCoordinateFormat,
        {Text(kTextDecimalDegrees), Text(kTextDegreesAndMinutes), Text(kTextDegreesMinutesSeconds)},
        settings.coordinates);
    QComboBox* const languages = AddList(kTextLanguageLabel);
    languages->addItem(Text(kTextSystemLanguage), 0);
    for (const LanguageRow& row : kLanguages)
      languages->addItem(FromUtf8(row.name), NumberOf(row.language));
    // A language that stands in the store by somebody's hand goes before ours, and is not changed.
    const bool isFixed = settings.language != 0;
    const int32_t shown = isFixed ? settings.language : settings.programLanguage;
    languages->setCurrentIndex(std::max(0, languages->findData(shown)));
    languages->setEnabled(!isFixed);
    if (isFixed) return;
    OnStore(
        [languages, &settings] { settings.programLanguage = languages->currentData().toInt(); });
  }
};

}  // namespace

SettingsPage* MakeDisplayPage(CSettings& settings) { return new DisplayPage(settings); }
