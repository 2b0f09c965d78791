#pragma once

#include <string>

/// True when somebody sits in front of standard input and standard error.
bool IsInteractive();

/// Reads one line of standard input without its end. False at the end of the input.
bool ReadInputLine(std::string& line);
