#pragma once

#include "app/options.h"

/// Prints how high the ground is at a position. Returns the exit status.
int RunElevation(const Options& options);
