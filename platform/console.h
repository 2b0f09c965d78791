#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// Prepares the process for a run without a window: a file that reaches the size limit and a
/// closed pipe become error codes of the write instead of ending the process.
void PrepareConsoleProcess();

/// True when somebody sits in front of standard input and standard error.
bool IsInteractive();

/// True when standard error is a terminal.
bool IsErrorTerminal();

/// Writes to standard output or standard error at once. False when that failed.
bool WriteOutput(std::string_view text);
bool WriteError(std::string_view text);

/// Reads standard input to its end. Returns 0 or the platform's error code.
uint32_t ReadInput(std::string& bytes);

/// Reads one line of standard input without its end. False at the end of the input.
bool ReadInputLine(std::string& line);
