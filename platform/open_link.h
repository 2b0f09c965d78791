#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// Opens an address or a file in the program that the desktop has for it, and does not wait for
/// that program. The text goes to the system as one argument, never through a shell. Returns 0, or
/// the platform's error code when there is nothing that could open it.
uint32_t OpenLink(const std::string& link);

/// True where a desktop is there that could show what is opened.
bool HasDesktop();

/// Starts a program with its arguments and does not wait for it. A name without a folder is looked
/// for in PATH. Returns 0 or the platform's error code.
uint32_t StartProgram(const std::vector<std::string>& arguments);
