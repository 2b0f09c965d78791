#pragma once

#include "app/options.h"

/// Lists all services. Returns the exit status.
int RunProviders(const Options& options);
