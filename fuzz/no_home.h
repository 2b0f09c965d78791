#pragma once

#include <cstdlib>

/// Makes this a process of a user without a home and without a desktop: nothing of whoever runs it
/// is read or written.
inline void LeaveHome() {
  for (const char* const own : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME"})
    unsetenv(own);
  for (const char* const shared : {"XDG_DATA_DIRS", "XDG_CONFIG_DIRS"}) setenv(shared, "none", 1);
}
