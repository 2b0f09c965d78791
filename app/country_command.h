#pragma once

#include "app/options.h"

/// Prints the country of this machine, at a position, or of two letters. Returns the exit status.
int RunCountry(const Options& options);
