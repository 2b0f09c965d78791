#pragma once

#include "settings/csv_layout.h"

class QString;
class QWidget;

/// Lets the user change the layout of a CSV file. `fileName` is that of the file that is read,
/// whose first lines are shown; empty when one is written. True on OK, with the layout stored.
bool AskCsvLayout(QWidget* parent, CsvUse use, const QString& fileName, CCsvLayout& layout);
