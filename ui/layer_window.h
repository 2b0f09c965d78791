#pragma once

class QWidget;
struct MapLayer;

/// Edits a layer of the map in a window of its own, which stays open while the layer cannot be
/// asked. False when the user leaves it as it is.
bool EditLayerInWindow(QWidget* parent, MapLayer& layer);
