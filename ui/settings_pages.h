#pragma once

class CSettings;
class PlannerBridge;
class QString;
class SettingsPage;
class WindowStore;

// The pages of the settings window, one a group. What they are given must outlive them.

SettingsPage* MakeDisplayPage(CSettings& settings);
SettingsPage* MakeItineraryPage(CSettings& settings);
SettingsPage* MakeMapPage(CSettings& settings, const PlannerBridge& bridge);
SettingsPage* MakeServicesPage(CSettings& settings);
