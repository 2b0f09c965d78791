#pragma once

class CSettings;
class QWidget;

/// Before the first calculation, and where the chosen service cannot be used: asks which one may be
/// told the stops. False when the user wants none.
bool ChooseDirectionsProvider(QWidget* parent, CSettings& settings);
