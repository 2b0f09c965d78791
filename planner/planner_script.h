#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "planner/script_engine.h"

/// The functions of the planner page, one method each. Without an engine all of them throw
/// ScriptError kScriptNoPage.
class CPlannerScript {
 public:
  /// `engine` must outlive this, or be taken away by `Detach`.
  explicit CPlannerScript(IScriptEngine* engine) : m_engine(engine) {}

  /// The page or its window has gone.
  void Detach() { m_engine = nullptr; }

  /// Starts the map with the JSON text that tells what it shows.
  void InitMap(std::string_view json);
  void NewPinList(int32_t list);
  void ClearPushPins(int32_t list);
  /// Draws the pins anew from `first` on.
  void RefreshPushPins(int32_t list, int32_t first);
  /// Centres the map on a pin.
  void ViewPushPin(int32_t list, int32_t index);
  void DelPushPin(int32_t list, int32_t index);
  void InsertPushPin(int32_t list, int32_t index);
  /// Draws the leg that leads to a point.
  void AddRoute(int32_t list, int32_t index);
  void ClearRoutes(int32_t list);
  /// Fits the map to the itinerary.
  void AutoViewMap();
  void MapClickEnabled(bool enabled);
  void CloseInfoWindow();
  void ShowUpdateWindow();
  /// JSON text of the maps that the page has.
  std::string GetMaps();
  /// JSON text of what the page's site knows of the services.
  std::string GetProviders();
  /// Ours: the program's settings have changed. A page need not have it.
  void SettingsChanged();

 private:
  IScriptEngine* m_engine;
};
