#pragma once

#include <optional>

#include "app/options.h"

/// Runs the command of --providers, --find, --locate and their kin, if one was given. Returns the
/// exit status, or nothing when there was none.
std::optional<int> RunServiceCommand(const Options& options);
