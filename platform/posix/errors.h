#pragma once

#include <cstdint>

/// The platform error code of Windows for an errno value: what all statuses are told in.
uint32_t StatusOfErrno(int error);

/// `StatusOfErrno` of the present errno.
uint32_t FailWithErrno();
