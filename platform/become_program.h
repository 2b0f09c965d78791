#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// Becomes another program of ours, `arguments.front()`, which stands beside this one or where
/// programs stand; its process, its outputs and its exit status are then this one's. Returns only
/// when there is no such program: the platform's error code.
uint32_t BecomeProgram(const std::vector<std::string>& arguments);

/// Whether a window could be shown: on a desktop, or where the library that draws it is told to.
bool CanShowWindow();
