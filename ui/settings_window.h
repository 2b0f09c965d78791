#pragma once

class CSettings;
class PlannerBridge;
class QWidget;

/// Lets the user change the settings. True when they were changed and saved.
bool ShowSettingsWindow(QWidget* parent, CSettings& settings, const PlannerBridge& bridge);
