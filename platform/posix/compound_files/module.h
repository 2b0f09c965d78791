#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// What the program finds in the module that handles compound files. The library behind it takes
// longer to load than most conversions take to run, so the module is opened at its first use.
// Module and program are always built together.

/// Operations on compound files whose structure is known to be sound. Results as in
/// `io/compound_file.h`.
struct CompoundFileModule {
  uint32_t (*readStream)(std::string_view storage, std::string_view streamName,
                         std::string& content);
  uint32_t (*replaceStream)(std::string_view storage, std::string_view streamName,
                            std::string_view content, std::string& patched);
};

inline constexpr char kCompoundFileModule[] = "corvane_compound_files";
/// Name of the module's one function, which takes nothing and returns the operations.
inline constexpr char kCompoundFileModuleEntry[] = "CorvaneCompoundFileModule";
using CompoundFileModuleEntry = const CompoundFileModule* (*)();
