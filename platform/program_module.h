#pragma once

/// A part of the program that is loaded at its first use, since the libraries behind it take longer
/// to load than most conversions take to run. It stands beside a program that was just built, and
/// in a folder of its own beside an installed one. It stays loaded until the process ends.
///
/// Returns the module's function `entry`; null when the part is not installed or has no such
/// function. `module` is a name without folder and suffix.
void* LoadModuleEntry(const char* module, const char* entry);
