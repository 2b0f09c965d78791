#pragma once

#include <vector>

#include "model/point_list.h"

class QString;
class QWidget;

/// Shows what a file of this name contains and lets the user take one or several lists of it. Gives
/// their indices in the order of the tree; none on Cancel. With exactly one list no window opens.
std::vector<size_t> ChooseListsInWindow(QWidget* parent, const QString& fileName,
                                        const PointLists& lists);
