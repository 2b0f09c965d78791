#include "planner/planner_script.h"

#include "planner/dispatch_call.h"

void CPlannerScript::InitMap(std::string_view json) {
  CDispatchCall(m_engine, "InitMap").Push(json).Send();
}

void CPlannerScript::NewPinList(int32_t list) {
  CDispatchCall(m_engine, "NewPinList").Push(list).Send();
}

void CPlannerScript::ClearPushPins(int32_t list) {
  CDispatchCall(m_engine, "ClearPushPins").Push(list).Send();
}

void CPlannerScript::RefreshPushPins(int32_t list, int32_t first) {
  CDispatchCall(m_engine, "RefreshPushPins").Push(list).Push(first).Send();
}

void CPlannerScript::ViewPushPin(int32_t list, int32_t index) {
  CDispatchCall(m_engine, "ViewPushPin").Push(list).Push(index).Send();
}

void CPlannerScript::DelPushPin(int32_t list, int32_t index) {
  CDispatchCall(m_engine, "DelPushPin").Push(list).Push(index).Send();
}

void CPlannerScript::InsertPushPin(int32_t list, int32_t index) {
  CDispatchCall(m_engine, "InsertPushPin").Push(list).Push(index).Send();
}

void CPlannerScript::AddRoute(int32_t list, int32_t index) {
  CDispatchCall(m_engine, "AddRoute").Push(list).Push(index).Send();
}

void CPlannerScript::ClearRoutes(int32_t list) {
  CDispatchCall(m_engine, "ClearRoutes").Push(list).Send();
}

void CPlannerScript::AutoViewMap() { CDispatchCall(m_engine, "AutoViewMap").Send(); }

void CPlannerScript::MapClickEnabled(bool enabled) {
  CDispatchCall(m_engine, "MapClickEnabled").Push(enabled).Send();
}

void CPlannerScript::CloseInfoWindow() { CDispatchCall(m_engine, "CloseInfoWindow").Send(); }

void CPlannerScript::ShowUpdateWindow() { CDispatchCall(m_engine, "ShowUpdateWindow").Send(); }

std::string CPlannerScript::GetMaps() {
  return CDispatchCall(m_engine, "GetMaps").Invoke().AsText();
}

std::string CPlannerScript::GetProviders() {
  return CDispatchCall(m_engine, "GetProviders").Invoke().AsText();
}

void CPlannerScript::SettingsChanged() { CDispatchCall(m_engine, "SettingsChanged").Offer(); }
