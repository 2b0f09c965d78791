#pragma once

#include <QString>
#include <array>
#include <cstddef>

class QAction;
class QWidget;

/// What the user can do from menus, bars and shortcuts.
enum class Command : size_t {
  kOpen,
  kExport,
  kPrint,
  kExit,
  kUndo,
  kRedo,
  kPaste,
  kCopy,
  kAdd,
  kEdit,
  kRemove,
  kUp,
  kDown,
  kInvert,
  kRemoveAll,
  kCalculate,
  kClearRoute,
  kOptimise,
  kShowAll,
  kRoad,
  kFavorite,
  kSettings,
  kAbout,
  kCount,
};

/// One action for each command: the same in every place where it is offered.
class Actions {
 public:
  explicit Actions(QWidget& window);

  QAction& operator[](Command command) const { return *m_actions[static_cast<size_t>(command)]; }
  /// Draws the icons anew, for another look.
  void LoadIcons() const;

 private:
  std::array<QAction*, static_cast<size_t>(Command::kCount)> m_actions{};
};
