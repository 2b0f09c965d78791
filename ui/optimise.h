#pragma once

class CSettings;
class MainWindow;

/// Finds a shorter order of the stops, by road where the settings say so, and puts it in the place
/// of the present one as a step that can be taken back. Shows progress; a cancel changes nothing.
void OptimiseItinerary(MainWindow& window, const CSettings& settings);
