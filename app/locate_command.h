#pragma once

#include "app/options.h"

/// Prints the address at a position. Returns the exit status.
int RunLocate(const Options& options);
