#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// At the start of a program: a file that reaches the size limit and a closed pipe become error
/// codes of the write instead of ending the process.
void PrepareProcess();

/// True when standard error is a terminal that understands escape codes.
bool IsErrorTerminal();

/// Writes to standard output or standard error at once. False when that failed.
bool WriteOutput(std::string_view text);
bool WriteError(std::string_view text);

/// Reads standard input to its end. Returns 0 or the platform's error code.
uint32_t ReadInput(std::string& bytes);
