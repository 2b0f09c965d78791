#pragma once

#include <cstdint>

/// The platform's error code of the last file operation that failed on this thread; 0 when none
/// has. Formats report failures as a plain 1: this is how a front end can say more.
uint32_t LastError();
void SetLastError(uint32_t status);
