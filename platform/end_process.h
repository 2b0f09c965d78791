#pragma once

#include <cstdint>

/// Ends another process at once, without asking it. False when there is none of this number that
/// this user may end; this process itself stays.
bool EndProcess(int64_t process);
