#pragma once

#include <QUrl>
#include <QWebEngineUrlSchemeHandler>

#include "planner/tile_layers.h"

/// The address of our own planner page.
QUrl OwnPlannerPage();

/// Tells the engine of the page's scheme; before the first window. That of the signals stays
/// unknown to it: a known one would be blocked before the filter of navigations sees it.
void RegisterPageSchemes();

/// Serves the planner page and its parts out of the program.
class PageFiles : public QWebEngineUrlSchemeHandler {
 public:
  /// The layers that the page is served with.
  PageLayers layers;

  void requestStarted(QWebEngineUrlRequestJob* job) override;
};
