#pragma once

#include <QColor>
#include <QPalette>
#include <cstdint>

class QApplication;

/// Whether the windows are light or dark.
enum class Look { kLight, kDark };

/// The colours that the window shares with the map page.
struct LookColors {
  QColor accent;
  QColor onAccent;
  QColor ground;     ///< of the window
  QColor panel;      ///< of lists and fields
  QColor alternate;  ///< of every other row
  QColor button;
  QColor edge;
  QColor text;
  QColor muted;
  QColor warning;   ///< ground of a bar that tells of a loss
  QColor dangling;  ///< a leg that failed
};

/// Distances of the grid, in pixels.
inline constexpr int kGrid = 4;
inline constexpr int kSmallMargin = 8;
inline constexpr int kWideMargin = 16;
inline constexpr int kIconSize = 20;

const LookColors& ColorsOf(Look look);
/// The look in use.
Look CurrentLook();
const LookColors& CurrentColors();

/// What the user's desktop asks for. CORVANE_LOOK, "light" or "dark", overrides it.
Look DesktopLook();

/// To be called before the application is made: the page follows the same look.
void PrepareLook(Look look);
/// Gives the application its style and its palette.
void ApplyLook(QApplication& application, Look look);
