#pragma once

#include "model/point.h"
#include "settings/settings.h"

class QWidget;

/// Lets the user fill in a point, or change one. True on OK; a position outside its bounds keeps
/// the window open.
bool EditPointInWindow(QWidget* parent, CSettings& settings, uint32_t titleTextId,
                       CGpsNamedPoint& point);
