#pragma once

#include "app/options.h"

/// Loads the settings of the user. Here and below, a damaged store is told of once.
void LoadUserSettings();

/// Stores the CSV layouts of the options. False when they could not be stored; the user has been
/// told.
bool RememberCsvLayouts(const Options& options);

/// Changes the settings that --set names and stores them, all or none. Returns the exit status.
int ChangeSettings(const Options& options);

/// Lists all settings. Returns the exit status.
int RunSettings(const Options& options);
