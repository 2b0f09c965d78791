#pragma once

#include <optional>

#include "conversion/conversion_front.h"

class QString;
class QWidget;

/// Filters of a file dialog as Qt writes them, from labels and patterns in turn, joined by bars.
QStringList QtFilters(const WideString& filter);

/// The dialogs begin in `folder`, which becomes that of the chosen file.
std::optional<ChosenFile> ShowOpenDialog(QWidget* parent, const FileDialog& wanted,
                                         QString& folder);
std::optional<ChosenFile> ShowSaveDialog(QWidget* parent, const FileDialog& wanted,
                                         QString& folder);
