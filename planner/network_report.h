#pragma once

#include <cstdint>

#include "planner/window_parts.h"

/// Shows why the page could not be loaded, an HRESULT of its navigation, and asks whether to try
/// again. Gives the box's answer; 1, without a box, for 0.
int32_t ReportNavigationError(PlannerWindow& window, uint32_t hresult);

/// The same for the transport error of a request.
int32_t ReportTransportError(PlannerWindow& window, uint32_t transportError);
