#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// What the program finds in the module that handles compound files. The library behind it takes
// longer to load than most conversions take to run, so the module is opened at its first use.
// Module and program are always built together.

/// Operations on compound files whose structure is known to be sound. Results as in
/// `platform/compound_file.h`.
struct CompoundFileModule {
  uint32_t (*readStream)(std::string_view storage, std::string_view streamName,
                         std::string& content);
  uint32_t (*replaceStream)(std::string_view storage, std::string_view streamName,
                            std::string_view content, std::string& patched);
};

/// Name of the module's one function, which takes nothing and returns the operations.
inline constexpr char kCompoundFileModuleEntry[] = "CorvaneCompoundFileModule";
using CompoundFileModuleEntry = const CompoundFileModule* (*)();

inline constexpr uint32_t kStorageStreamNotFound = 0x80030002;  // STG_E_FILENOTFOUND
inline constexpr uint32_t kStorageNoCompoundFile = 0x80030050;  // STG_E_FILEALREADYEXISTS
inline constexpr uint32_t kStorageFull = 0x80030070;            // STG_E_MEDIUMFULL
inline constexpr uint32_t kStorageCorrupt = 0x80030109;         // STG_E_DOCFILECORRUPT
inline constexpr uint32_t kStorageOutOfMemory = 0x8007000E;     // E_OUTOFMEMORY
inline constexpr uint32_t kStorageModuleMissing = 0x8007007E;   // ERROR_MOD_NOT_FOUND as HRESULT
