#pragma once

#include <string_view>

#include "net/manual_reset_event.h"
#include "services/places/place_reply.h"

/// Asks Google how high the ground is at `position`; `point` gets the position that the answer is
/// for, with its altitude in metres. Waits at most so many milliseconds.
uint32_t GetElevation(const CGpsCoordinate& position, CGpsPoint& point,
                      int32_t waitMs = kWaitForever);

/// Reads the reply.
uint32_t ReadElevation(std::string_view reply, CGpsPoint& point);
