#pragma once

#include <QString>
#include <QUrl>
#include <QWebEngineUrlSchemeHandler>
#include <vector>

/// A server of map tiles that the user may switch on.
struct TileServer {
  QString name;
  QString address;  ///< with {z}, {x} and {y}
  QString credit;
  int minZoom = 0;
  int maxZoom = 19;
};

/// Those that the program comes with.
std::vector<TileServer> TileServers();

/// The address of our own planner page.
QUrl OwnPlannerPage();

/// Tells the engine of the page's scheme; before the first window. That of the signals stays
/// unknown to it: a known one would be blocked before the filter of navigations sees it.
void RegisterPageSchemes();

/// Serves the planner page and its parts out of the program.
class PageFiles : public QWebEngineUrlSchemeHandler {
 public:
  void requestStarted(QWebEngineUrlRequestJob* job) override;
};
