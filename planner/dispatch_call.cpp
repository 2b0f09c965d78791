#include "planner/dispatch_call.h"

IScriptEngine& CDispatchCall::Engine() const {
  if (!m_engine) throw ScriptError(kScriptNoPage);
  return *m_engine;
}

ScriptValue CDispatchCall::Invoke() const {
  return m_function ? m_function->Call(m_arguments) : Engine().Call(m_name, m_arguments);
}

void CDispatchCall::Send() const { Engine().Send(m_name, m_arguments); }

void CDispatchCall::Offer() const { Engine().Offer(m_name, m_arguments); }
