#pragma once

#include <cstdint>

#include <QColor>
#include <QPalette>

class QApplication;

/// Whether the windows are light or dark.
enum class ELook { kLight, kDark };

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

const LookColors& ColorsOf(ELook look);
/// The look in use.
ELook CurrentLook();
const LookColors& CurrentColors();

/// What the user's desktop asks for. CORVANE_LOOK, "light" or "dark", overrides it.
ELook DesktopLook();

/// To be called before the application is made: the page follows the same look.
void PrepareLook(ELook look);
/// Gives the application its style and its palette.
void ApplyLook(QApplication& application, ELook look);
