#include "planner/external.h"

#include <algorithm>
#include <limits>
#include <new>

#include "base/status.h"
#include "net/internet_exception.h"
#include "planner/codec_objects.h"
#include "planner/external_names.h"

namespace {

std::vector<std::string_view> NamesWhere(bool properties) {
  std::vector<std::string_view> names;
  for (const ExternalName& row : ExternalNames()) {
    if (row.isProperty == properties) names.push_back(row.name);
  }
  return names;
}

}  // namespace

PlannerExternal::PlannerExternal(ExternalParts parts)
    : m_parts(std::move(parts)),
      m_settings(std::make_shared<SettingsObject>(m_parts.settings, m_parts.settingsChanged)),
      m_base64(MakeBase64Object()),
      m_utf8(MakeUtf8Object()) {}

void PlannerExternal::Close() {
  m_closed = true;
  m_settings->Close();
}

int32_t PlannerExternal::IdOf(std::string_view name) {
  const ExternalName* const row = FindExternal(name);
  if (!row) throw ScriptError(kScriptUnknownName);
  return row->id;
}

std::optional<ScriptValue> PlannerExternal::Get(std::string_view name) {
  const ExternalName* const row = FindExternal(name);
  if (!row || !row->isProperty) return std::nullopt;
  return Invoke(row->id, {});
}

ScriptValue PlannerExternal::Invoke(std::string_view name, ScriptArguments arguments) {
  return Invoke(IdOf(name), arguments);
}

ScriptValue PlannerExternal::Invoke(int32_t id, ScriptArguments arguments) {
  const ExternalName* const row = FindExternal(id);
  if (!row) throw ScriptError(kScriptNoSuchMember);
  if (m_closed) throw ScriptError(kScriptFailed);
  try {
    return Dispatch(id, ExternalArguments(arguments, row->needed));
  } catch (const ScriptError&) {
    throw;
  } catch (const CInternetException& failure) {
    throw ScriptError(TransportHresult(failure.code), failure.what());
  } catch (const std::out_of_range&) {
    throw ScriptError(kScriptBadIndex);
  } catch (const std::bad_alloc&) {
    throw ScriptError(kStatusStorageOutOfMemory);
  } catch (const std::exception& failure) {
    throw ScriptError(kScriptFailed, failure.what());
  }
}

std::vector<std::string_view> PlannerExternal::PropertyNames() const { return NamesWhere(true); }

std::vector<std::string_view> PlannerExternal::MethodNames() const { return NamesWhere(false); }

CPointListView& PlannerExternal::View(const ExternalArguments& arguments) const {
  CPointListView* const view = m_parts.lists->Find(arguments.Integer(0));
  if (!view || !view->list) throw ScriptError(kScriptBadIndex);
  return *view;
}

PlannerExternal::Place PlannerExternal::PlaceOf(const ExternalArguments& arguments) const {
  const int32_t index = arguments.Integer(1);
  CPointListView& view = View(arguments);
  if (index < 0 || static_cast<size_t>(index) >= view.list->Count())
    throw ScriptError(kScriptBadIndex);
  return {view, static_cast<size_t>(index)};
}

ScriptValue PlannerExternal::Dispatch(int32_t id, const ExternalArguments& arguments) {
  switch (id) {
    case kExternalTrace:
      return Trace(arguments);
    case kExternalMessageBox:
      return MessageBox(arguments);
    case kExternalGetPoint:
      return GetPoint(arguments);
    case kExternalSelectPoint:
      return SelectPoint(arguments);
    case kExternalDeletePoint:
      return DeletePoint(arguments);
    case kExternalRenamePoint:
      return RenamePoint(arguments);
    case kExternalMovePoint:
      return MovePoint(arguments);
    case kExternalInsertPoint:
      return InsertPoint(arguments);
    case kExternalAddPoint:
      return AddPoint(arguments);
    case kExternalAddFavorite:
      return AddFavorite(arguments);
    case kExternalCalculate:
      return Calculate(arguments);
    case kExternalSendToGps:
      return SendToGps(arguments);
    case kExternalSettings:
      return m_settings;
    case kExternalBase64:
      return m_base64;
    case kExternalUtf8:
      return m_utf8;
    case kExternalGetStrCoords:
      return GetStrCoords(arguments);
    case kExternalSetCurrentMap:
      return SetCurrentMap(arguments);
    case kExternalGetCount:
      return GetCount(arguments);
    case kExternalGetPins:
      return GetPins(arguments);
    case kExternalGetWays:
      return GetWays(arguments);
    default:
      return DispatchToService(id, arguments);
  }
}
