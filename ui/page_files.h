#pragma once

#include <vector>

#include <QString>
#include <QUrl>
#include <QWebEngineUrlSchemeHandler>

/// A server of map tiles that the user may switch on.
struct TileServer {
  QString name;
  QString address;  ///< with {z}, {x} and {y}
  QString credit;
  int minZoom = 0;
  int maxZoom = 19;
};

/// Those that the program comes with.
const std::vector<TileServer>& TileServers();

/// The address of our own planner page.
QUrl OwnPlannerPage();

/// Tells the engine of the schemes of page and signals; before the first window.
void RegisterPageSchemes();

/// Serves the planner page and its parts out of the program.
class PageFiles : public QWebEngineUrlSchemeHandler {
 public:
  void requestStarted(QWebEngineUrlRequestJob* job) override;
};
