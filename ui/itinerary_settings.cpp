// The settings page of how ways are calculated, and for which vehicle.

#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QSpinBox>
#include <algorithm>
#include <array>
#include <cmath>

#include "base/text_ids.h"
#include "planner/route_table.h"
#include "services/directions/travel_modes.h"
#include "settings/settings.h"
#include "ui/number_field.h"
#include "ui/settings_form.h"
#include "ui/settings_pages.h"
#include "ui/text.h"

namespace {

constexpr uint32_t kLastVehicle = 7;
constexpr int kMostTrailers = 4;
constexpr int kHazardKinds = 15;  // their texts follow each other
constexpr double kTenths = 10.0;

// A size or a load of the truck: tenths in the settings, metres or tons in the window. Any number
// can be entered, so that one out of bounds can be told of.
struct TruckRow {
  uint32_t labelTextId;
  uint32_t boundsTextId;
  int lowest;
  int highest;
  const char* unit;
  int32_t CSettings::*value;
};

constexpr std::array<TruckRow, 5> kTruckRows{{
    {kTextHeight, kTextTruckHeightBounds, 2, 50, " m", &CSettings::truckHeight},
    {kTextWidth, kTextTruckWidthBounds, 3, 50, " m", &CSettings::truckWidth},
    {kTextLength, kTextTruckLengthBounds, 8, 300, " m", &CSettings::truckLength},
    {kTextWeight, kTextTruckWeightBounds, 3, 1000, " t", &CSettings::truckLimitedWeight},
    {kTextWeightAxle, kTextTruckWeightAxleBounds, 5, 1000, " t", &CSettings::truckWeightAxle},
}};

constexpr uint32_t kRouteKinds[] = {kTextRecommended, kTextQuickest,   kTextShortest,
                                    kTextSightseeing, kTextEconomical, kTextThrilling};

class ItineraryPage : public SettingsForm {
 public:
  explicit ItineraryPage(CSettings& settings) : m_settings(settings) {
    AddSwitch(kTextRecalculateAutomatically, settings.autoCalc);
    AddSwitch(kTextOptimizeByRoad, settings.optimizeUseDirection);
    AddSwitch(kTextAvoidMotorways, settings.avoidHighway);
    AddSwitch(kTextAvoidTolls, settings.avoidTolls);
    AddSwitch(kTextPlaceOnRoads, settings.forceRoad);
    AddSwitch(kTextAddStageByClicking, settings.autoAddStep);
    AddVehicles();
    QStringList kinds;
    for (const uint32_t textId : kRouteKinds) kinds.append(Text(textId));
    AddChoice(kTextRouteKind, kinds, settings.itineraryType);
    AddTruck();
  }

  QString Check() override {
    for (size_t i = 0; i < kTruckRows.size(); ++i) {
      const TruckRow& row = kTruckRows.at(i);
      const double value = m_truckFields.at(i)->value();
      if (value >= row.lowest && value <= row.highest) continue;
      m_truckFields.at(i)->setFocus();
      return FilledText(row.boundsTextId, row.lowest, row.highest);
    }
    return {};
  }

 private:
  void AddVehicles() {
    QComboBox* const list = AddList(kTextVehicle);
    for (uint32_t vehicle = 1; vehicle <= kLastVehicle; ++vehicle)
      list->addItem(FromUtf8(TravelModeName(vehicle)), vehicle);
    const int stored = list->findData(static_cast<uint32_t>(m_settings.vehicleType));
    list->setCurrentIndex(std::max(0, stored));
    OnStore([this, list] {
      // 0 stands for the first vehicle of whichever provider is asked.
      const bool isUntouched = m_settings.vehicleType == 0 && list->currentIndex() == 0;
      if (!isUntouched) m_settings.vehicleType = list->currentData().toInt();
    });
  }

  void AddTruck() {
    AddHeading(kTextTruckGroup);
    for (size_t i = 0; i < kTruckRows.size(); ++i) {
      const TruckRow& row = kTruckRows.at(i);
      auto* const field = new NumberField;
      field->setRange(0, 100'000);
      field->setDecimals(1);
      field->setSuffix(QLatin1String(row.unit));
      field->setValue(m_settings.*row.value / kTenths);
      AddRow(row.labelTextId, field);
      m_truckFields.at(i) = field;
      OnStore([this, field, value = row.value] {
        m_settings.*value = static_cast<int32_t>(std::lround(field->value() * kTenths));
      });
    }
    auto* const trailers = new QSpinBox;
    trailers->setRange(0, kMostTrailers);
    trailers->setValue(m_settings.truckTrailersCount);
    AddRow(kTextTrailers, trailers);
    OnStore([this, trailers] { m_settings.truckTrailersCount = trailers->value(); });
    QStringList hazards;
    for (uint32_t i = 0; i < kHazardKinds; ++i) hazards.append(Text(kTextNoCategory + i));
    AddChoice(kTextHazardousGoods, hazards, m_settings.truckCategory);
  }

  CSettings& m_settings;
  std::array<QDoubleSpinBox*, kTruckRows.size()> m_truckFields{};
};

}  // namespace

SettingsPage* MakeItineraryPage(CSettings& settings) { return new ItineraryPage(settings); }
