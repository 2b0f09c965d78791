#include "planner/edit_history.h"

#include <utility>

void EditHistory::Add(EditStep step) {
  if (step.empty()) return;
  DropRedo();
  size_t bytes = 0;
  for (const ListChange& change : step) bytes += MemoryOf(change);
  m_steps.push_back({std::move(step), bytes});
  m_bytes += bytes;
  while (m_steps.size() > kMostSteps || (!m_steps.empty() && m_bytes > kMostBytes)) {
    m_bytes -= m_steps.front().bytes;
    m_steps.pop_front();
  }
  m_done = m_steps.size();
}

void EditHistory::Clear() {
  m_steps.clear();
  m_done = 0;
  m_bytes = 0;
}

void EditHistory::DropRedo() {
  while (m_steps.size() > m_done) {
    m_bytes -= m_steps.back().bytes;
    m_steps.pop_back();
  }
}
