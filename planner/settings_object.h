#pragma once

#include <functional>

#include "planner/script_value.h"
#include "settings/settings.h"

/// What the page finds as `external.Settings`: properties that read and write the program's own
/// settings, which are kept with the others.
class SettingsObject : public ScriptObject {
 public:
  /// `settings` must outlive this. `changed` runs behind each change.
  SettingsObject(CSettings& settings, std::function<void()> changed)
      : m_settings(settings), m_changed(std::move(changed)) {}

  /// The window has gone: nothing can be read or changed any more.
  void Close() { m_closed = true; }

  std::optional<ScriptValue> Get(std::string_view name) override;
  void Put(std::string_view name, const ScriptValue& value) override;
  std::vector<std::string_view> PropertyNames() const override;

 private:
  CSettings& m_settings;
  std::function<void()> m_changed;
  bool m_closed = false;
};
