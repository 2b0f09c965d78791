#pragma once

#include "base/wide_string.h"

/// The folder for this user's settings of the program, which need not exist yet; empty when the
/// user has no home.
WideString SettingsFolder();
