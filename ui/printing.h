#pragma once

#include <memory>

class CGpsPointArray;
class CSettings;
class MainWindow;
class QImage;
class QTextDocument;

/// What is printed: the itinerary's name, the map, the stops with their legs, and the totals.
std::unique_ptr<QTextDocument> MakePrintDocument(const CGpsPointArray& list,
                                                 const CSettings& settings, const QImage& map);

/// Prints over the system's dialog, which also makes PDF files.
void PrintItinerary(MainWindow& window, const CSettings& settings);
