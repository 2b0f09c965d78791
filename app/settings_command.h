#pragma once

#include "app/options.h"
#include "services/service_access.h"

/// Loads the settings of the user, if that has not been done before. Here and below, a store that
/// is damaged or that another program holds is told of once.
void LoadUserSettings();

/// The language that the user has chosen, which also loads the settings: `Language`, or where that
/// is 0, `ProgramLanguage`; 0 for that of the system.
uint32_t StoredLanguage();

/// What the user has set for services; nothing when the store cannot be read.
ServiceValuesByName UserServiceValues();

/// Stores the CSV layouts of the options. False when they could not be stored; the user has been
/// told.
bool RememberCsvLayouts(const Options& options);

/// Changes the settings that --set names and stores them, all or none. Returns the exit status.
int ChangeSettings(const Options& options);

/// Lists all settings. Returns the exit status.
int RunSettings(const Options& options);
