#pragma once

#include <cstdint>
#include <optional>

class CSettings;
class PlannerBridge;
class QWidget;

/// Lets the user change the settings, which are stored then. Gives 0 or the platform's error code
/// of what could not be stored; nothing when the user leaves them as they are.
std::optional<uint32_t> ShowSettingsWindow(QWidget* parent, CSettings& settings,
                                           const PlannerBridge& bridge);
