#include "platform/last_error.h"

namespace {

thread_local uint32_t lastError = 0;

}  // namespace

uint32_t LastError() { return lastError; }

void SetLastError(uint32_t status) { lastError = status; }
