#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

/// How a program that was run has ended.
struct ChildResult {
  uint32_t status = 0;       ///< 0, or the platform's error code when it could not be started
  int exitCode = 0;          ///< as it was returned; 128 and the signal for one that was killed
  bool interrupted = false;  ///< by the user (Ctrl+C, or a request to end) or by `onOutput`
};

/// Runs a program, which is looked for where programs stand, with these arguments, none of which a
/// shell sees, and waits for its end. It reads nothing, and talks English. What it writes on either
/// output comes to `onOutput` in pieces; when this answers false, the program is ended.
/// While it runs, Ctrl+C ends it and not this process.
ChildResult RunChild(const std::vector<std::string>& arguments,
                     const std::function<bool(std::string_view output)>& onOutput);
