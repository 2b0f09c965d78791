#pragma once

#include <functional>
#include <memory>

#include "planner/external_arguments.h"
#include "planner/page_services.h"
#include "planner/planner_lists.h"
#include "planner/post_box.h"
#include "planner/script_value.h"
#include "planner/settings_object.h"
#include "planner/window_parts.h"
#include "settings/settings.h"

/// What stands behind `window.external`. All must outlive the object, or its `Close`.
struct ExternalParts {
  std::shared_ptr<PlannerLists> lists;
  CSettings& settings;
  PlannerWindow& window;
  PageServices& services;
  PostBox& posts;
  /// Hands a point to the companion program of a device, by the target's number.
  std::function<void(int32_t target, const CGpsPoint& point)> sendPoint;
  /// Runs when the page has changed a setting.
  std::function<void()> settingsChanged;
  /// Stores the favourites; gives 0 or the platform's error code.
  std::function<uint32_t(const CGpsPointArray& favorites)> storeFavorites;
};

/// The object that the page finds as `window.external`. The page is not trusted: whatever it gives,
/// nothing happens but what the call is for, and a call that fails throws ScriptError only.
class PlannerExternal : public ScriptObject {
 public:
  explicit PlannerExternal(ExternalParts parts);

  /// The window has gone: every call fails from now on.
  void Close();

  /// The number of a name; throws kScriptUnknownName without one.
  static int32_t IdOf(std::string_view name);
  /// Calls by number. Throws ScriptError, kScriptNoSuchMember for an unknown number.
  ScriptValue Invoke(int32_t id, ScriptArguments arguments);

  /// `Settings`, `Base64` and `Utf8`; nothing for any other name.
  std::optional<ScriptValue> Get(std::string_view name) override;
  ScriptValue Invoke(std::string_view name, ScriptArguments arguments) override;
  std::vector<std::string_view> PropertyNames() const override;
  std::vector<std::string_view> MethodNames() const override;

 private:
  // A point that a call names by its list and index.
  struct Place {
    CPointListView& view;
    size_t index;
  };

  ScriptValue Dispatch(int32_t id, const ExternalArguments& arguments);
  ScriptValue DispatchToService(int32_t id, const ExternalArguments& arguments);
  CPointListView& View(const ExternalArguments& arguments) const;
  Place PlaceOf(const ExternalArguments& arguments) const;

  // Boxes, lists and settings.
  ScriptValue Trace(const ExternalArguments& arguments) const;
  ScriptValue MessageBox(const ExternalArguments& arguments) const;
  ScriptValue GetPoint(const ExternalArguments& arguments) const;
  ScriptValue SelectPoint(const ExternalArguments& arguments) const;
  ScriptValue DeletePoint(const ExternalArguments& arguments) const;
  ScriptValue RenamePoint(const ExternalArguments& arguments) const;
  ScriptValue MovePoint(const ExternalArguments& arguments) const;
  ScriptValue InsertPoint(const ExternalArguments& arguments) const;
  ScriptValue AddPoint(const ExternalArguments& arguments) const;
  ScriptValue AddFavorite(const ExternalArguments& arguments) const;
  ScriptValue Calculate(const ExternalArguments& arguments) const;
  ScriptValue SendToGps(const ExternalArguments& arguments) const;
  ScriptValue GetStrCoords(const ExternalArguments& arguments) const;
  ScriptValue SetCurrentMap(const ExternalArguments& arguments) const;
  ScriptValue GetCount(const ExternalArguments& arguments) const;
  ScriptValue GetPins(const ExternalArguments& arguments) const;
  ScriptValue GetWays(const ExternalArguments& arguments) const;

  // What needs the network.
  ScriptValue HttpRequest(const ExternalArguments& arguments) const;
  ScriptValue HttpDownload(const ExternalArguments& arguments) const;
  ScriptValue GetLocation(const ExternalArguments& arguments) const;
  ScriptValue GetRoadLocation(const ExternalArguments& arguments) const;
  ScriptValue GetRoutePreview(const ExternalArguments& arguments) const;

  ExternalParts m_parts;
  std::shared_ptr<SettingsObject> m_settings;
  ScriptObjectPtr m_base64;
  ScriptObjectPtr m_utf8;
  bool m_closed = false;
};
