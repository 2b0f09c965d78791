#pragma once

#include "app/options.h"

/// Prints where the panorama nearest to a position is. Returns the exit status.
int RunPanorama(const Options& options);
