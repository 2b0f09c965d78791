#pragma once

#include "settings/settings.h"

class QWidget;

/// Where a window stands and whether it fills the screen, as the settings keep it.
WindowPlacement PlacementOf(const QWidget& window);
/// Puts the window there; onto a screen, when the one where it stood is gone.
void ApplyPlacement(QWidget& window, const WindowPlacement& placement);
/// Puts the window in the middle of its screen.
void CentreWindow(QWidget& window);
