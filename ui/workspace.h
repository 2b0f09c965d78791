#pragma once

#include <QObject>
#include <memory>

#include "conversion/conversion_driver.h"
#include "model/point_list.h"
#include "planner/planner_bridge.h"
#include "planner/point_list_view.h"
#include "planner/post_box.h"
#include "ui/window_front.h"

class CSettings;
class PageServices;

/// The controls of the window that show the lists.
struct WorkspaceParts {
  QWidget& widget;
  PlannerWindow& window;
  PointRows& stops;
  PointRows& results;
  PointRows& favorites;
  PointRows& pois;
  StatusField& status;
  ProgressWindow& progress;
  FrontEvents events;
};

/// What the window works on: the itinerary with the driver that reads and writes it, the other
/// lists, and the bridge to the map page.
class Workspace {
 public:
  /// `settings` and all parts must outlive this.
  Workspace(CSettings& settings, const WorkspaceParts& parts);
  ~Workspace();
  Workspace(const Workspace&) = delete;
  Workspace& operator=(const Workspace&) = delete;

  /// Fetches the favourites. Returns 0, or the platform's error code for a store that could not be
  /// read: then there are none, until one of them is stored.
  uint32_t LoadFavorites();
  void SaveFavorites();
  /// The favourites have been stored, or not: 0 or the platform's error code.
  std::function<void(uint32_t status)> favoritesStored;
  /// Puts what a search has found in the place of what the last one had.
  void ShowResults(const std::vector<CGpsNamedPoint>& places);
  /// Puts points of another list behind the selected stop, as one step.
  void AddToItinerary(const CGpsPointArray& list, const std::vector<size_t>& rows);
  /// Adds stops to the favourites, which are stored.
  void AddFavorites(const std::vector<size_t>& rows);
  /// Centres the map on a point that the user has selected in a list.
  void ViewOnMap(const CPointListView& view, int64_t row);
  /// The window closes.
  void Close();

 private:
  uint32_t StoreFavorites();

  QObject m_pump;  ///< what other threads wake; gone, it is woken no more
  PostBox m_posts;
  ConversionContext m_context;
  bool m_knowsFavorites = false;

 public:
  WindowFront front;
  ConversionDriver driver;
  CGpsWaypointList results;
  CGpsWaypointList favorites;
  CGpsPoiList pois;
  CPointListView itineraryView;
  CPointListView resultsView;
  CPointListView favoritesView;
  CPointListView poisView;
  std::unique_ptr<PageServices> services;
  std::unique_ptr<PlannerBridge> bridge;

  PostBox& Posts() { return m_posts; }
  ConversionContext& Context() { return m_context; }
};
