#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "planner/external.h"
#include "planner/page_maps.h"
#include "planner/page_services.h"
#include "planner/planner_lists.h"
#include "planner/planner_script.h"
#include "planner/point_list_view.h"
#include "planner/post_box.h"
#include "planner/window_parts.h"
#include "settings/favorites.h"
#include "settings/map_sources.h"
#include "settings/settings.h"

/// What the window gives the bridge. All of it must outlive the bridge, or its `Close`.
struct BridgeParts {
  PlannerWindow& window;
  CSettings& settings;
  PageServices& services;
  PostBox& posts;
  /// By their numbers: itinerary, search results, favourites, points of interest.
  std::array<CPointListView*, 4> lists;
  /// Opens an address in the user's browser, or in the program that the desktop has for it.
  std::function<void(const std::string& url)> openOutside;
  /// Hands a point to the companion program of a device.
  std::function<void(int32_t target, const CGpsPoint& point)> sendPoint;
  /// Stores the favourites; gives 0 or the platform's error code.
  std::function<uint32_t(const CGpsPointArray& favorites)> storeFavorites =
      [](const CGpsPointArray& favorites) {
        return SaveFavorites(storage::OpenUserStorage(), favorites);
      };
};

/// Program and page: brings the page up, filters where it may go, and owns what it finds as
/// `window.external`. Everything on the window's thread.
class PlannerBridge {
 public:
  explicit PlannerBridge(BridgeParts parts);
  /// Closes.
  ~PlannerBridge();
  PlannerBridge(const PlannerBridge&) = delete;
  PlannerBridge& operator=(const PlannerBridge&) = delete;

  /// `engine` runs the page from now on; null takes it away. Its page has to signal that it is
  /// ready before anything is called.
  void SetEngine(IScriptEngine* engine);

  /// The address of the planner page.
  void SetPlannerPage(std::string url) { m_plannerPage = std::move(url); }

  /// The page is about to go somewhere, or to open a window. True when it may; otherwise the
  /// navigation is to be cancelled, and what it was for has been done or posted.
  bool OnNavigate(std::string_view url);
  /// The page could not be loaded: asks the user, and loads it again a little later on Retry.
  void OnNavigationError(uint32_t hresult);
  void OnTimer(int32_t timer);

  /// The page signals that it is ready: JSON text about the site's software, or an error text.
  void OnReady(const std::string& text);

  /// The program's settings have changed; the page is told.
  void SettingsChanged();

  /// The window closes: nothing reaches the page, the lists' windows or the network any more.
  void Close();

  const std::shared_ptr<PlannerExternal>& External() const { return m_external; }
  /// The maps that the page has offered, for the settings.
  const std::vector<PageMap>& PageMaps() const { return m_pageMaps; }
  const MapSources& StoredMaps() const { return m_maps; }

 private:
  void DisableMap(std::string_view reason);
  void ConnectLists();
  void DisconnectLists();
  void TakeMaps();
  void TakeProviders();
  void AnnounceVersion(double version, const std::string& url);
  void ShowLists();
  void CallPage(const std::function<void(CPlannerScript&)>& call);

  BridgeParts m_parts;
  std::string m_plannerPage;
  std::shared_ptr<PlannerLists> m_lists = std::make_shared<PlannerLists>();
  std::shared_ptr<PlannerExternal> m_external;
  CPlannerScript m_script{nullptr};
  MapSources m_maps;
  std::vector<PageMap> m_pageMaps;
  bool m_closed = false;
  /// Work that was posted for this bridge looks here whether it is still there.
  std::shared_ptr<bool> m_isThere = std::make_shared<bool>(true);
};
