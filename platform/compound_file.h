#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// Streams of OLE compound files whose structure is known to be sound, for the library behind these
// functions trusts what the file says; `io/compound_file.h` checks first. Streams, results and
// failures as there.

uint32_t ReadSoundStorageStream(std::string_view storage, std::string_view streamName,
                                std::string& content);
uint32_t ReplaceSoundStorageStream(std::string_view storage, std::string_view streamName,
                                   std::string_view content, std::string& patched);
