#pragma once

#include <QString>
#include <cstdint>
#include <string>
#include <vector>

// What the user has to know about the settings file, in whole sentences; empty when all is well.

/// Behind a read that gave `status`, 0 or the platform's error code; `messages` are those of
/// `TakeSettingsMessages` so far.
QString DescribeReadTrouble(uint32_t status, const std::vector<std::string>& messages);

/// Behind a write that gave `status`.
QString DescribeStoreTrouble(uint32_t status);
