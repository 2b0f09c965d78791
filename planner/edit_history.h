#pragma once

#include <cstddef>
#include <deque>
#include <vector>

#include "planner/list_changes.h"

/// What one action has changed, in the order of the changes.
using EditStep = std::vector<ListChange>;

/// The steps that can be taken back, and those that can be made again. The number of steps and
/// their memory are bounded; the oldest go first.
class EditHistory {
 public:
  static constexpr size_t kMostSteps = 10'000;
  static constexpr size_t kMostBytes = size_t{128} << 20;

  /// A new step. What could be made again is gone. A step without changes is none; one that takes
  /// more than all the memory leaves nothing that could be taken back.
  void Add(EditStep step);

  bool CanUndo() const { return m_done > 0; }
  bool CanRedo() const { return m_done < m_steps.size(); }
  /// The step to be taken back, which counts as undone from now on; needs `CanUndo`.
  const EditStep& Undo() { return m_steps[--m_done].changes; }
  /// The step to be made again; needs `CanRedo`.
  const EditStep& Redo() { return m_steps[m_done++].changes; }
  void Clear();

 private:
  struct Step {
    EditStep changes;
    size_t bytes;
  };

  void DropRedo();

  std::deque<Step> m_steps;
  size_t m_done = 0;  ///< of the steps; those behind can be made again
  size_t m_bytes = 0;
};
