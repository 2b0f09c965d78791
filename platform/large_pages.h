#pragma once

#include <memory_resource>

/// The heap, but for blocks of two megabytes and more that are asked for at such an address: these
/// are large pages where the system has them. It would otherwise fetch each of their hundreds of
/// small pages when it is first touched, a tenth of what reading a million points takes. Never
/// destroyed.
std::pmr::memory_resource& LargePages();
