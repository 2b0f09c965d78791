#pragma once

#include <string>

/// The folder of the running program; empty when the system does not tell.
std::string ProgramFolder();
