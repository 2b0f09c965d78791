#pragma once

#include "app/options.h"

/// Prints the addresses and places that a text names, with --near those around a position. Returns
/// the exit status.
int RunFind(const Options& options);
