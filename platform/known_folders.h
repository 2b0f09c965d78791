#pragma once

#include "base/wide_string.h"

/// The folder for this user's settings of the program, which need not exist yet; empty when the
/// user has no home.
WideString SettingsFolder();

/// The folder for what the program can fetch or make again, likewise.
WideString CacheFolder();
/// The folder for what the program keeps for this user besides settings, likewise.
WideString DataFolder();
/// The folder for what the program keeps from one run to the next and nobody else needs, likewise.
WideString StateFolder();

/// The folder in which this user keeps what was downloaded, which need not exist; empty when the
/// user has no home.
WideString DownloadFolder();
