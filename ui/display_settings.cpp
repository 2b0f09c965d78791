// The settings page of how things are shown.

#include <QComboBox>
#include <algorithm>

#include "base/localized_text.h"
#include "base/text_ids.h"
#include "platform/debug_log.h"
#include "settings/settings.h"
#include "settings/storage.h"
#include "ui/settings_form.h"
#include "ui/settings_pages.h"
#include "ui/text.h"

namespace {

struct LanguageRow {
  Language language;
  const char* name;  ///< in the language itself
};

constexpr LanguageRow kLanguages[] = {{Language::kGerman, "Deutsch"},
                                      {Language::kEnglish, "English"},
                                      {Language::kFrench, "Français"},
                                      {Language::kDutch, "Nederlands"}};

// Saving the settings leaves the language alone.
void StoreLanguage(int32_t language) {
  try {
    storage::Storage store = storage::OpenUserStorage();
    store.CreateFolder(kSettingsRoot)
        .CreateValue("Language")
        .WriteNumber(static_cast<uint32_t>(language));
  } catch (const storage::Exception& failure) {
    DebugLog(std::string("language: ") + failure.what());
  }
}

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
      languages->addItem(QString::fromUtf8(row.name), static_cast<int>(row.language));
    languages->setCurrentIndex(std::max(0, languages->findData(settings.language)));
    OnStore([languages, &settings] {
      const int chosen = languages->currentData().toInt();
      if (chosen != settings.language) StoreLanguage(settings.language = chosen);
    });
  }
};

}  // namespace

SettingsPage* MakeDisplayPage(CSettings& settings) { return new DisplayPage(settings); }
