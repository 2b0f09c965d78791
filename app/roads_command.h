#pragma once

#include "app/options.h"

/// Adds, lists or removes road databases, as the tokens of the options say: "add" NAME FILE,
/// "list", or "remove" NAME. Returns the exit status.
int RunRoads(const Options& options);
