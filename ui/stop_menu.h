#pragma once

#include <cstdint>
#include <initializer_list>

#include "model/point.h"
#include "ui/actions.h"

class MainWindow;
class QPoint;

/// Opens the menu of a point: the commands, and the web maps that can show it. One of these gets
/// the position and the name when it is chosen, in the user's own browser; before that nobody does.
void OpenStopMenu(MainWindow& window, std::initializer_list<Command> commands,
                  const CGpsNamedPoint& point, int32_t number, const QPoint& place);
