#include "app/conversion_sources.h"

#include "base/status.h"
#include "platform/folder.h"

namespace {

uint32_t ListBelow(const WideString& folder, const WideString& below, bool recursive,
                   std::vector<ConversionSource>& sources) {
  std::vector<WideString> names;
  if (const uint32_t error = ListFolder(folder, names)) return error;
  for (const WideString& name : names) {
    const WideString path = JoinedPath(folder, name);
    const bool isEntered = recursive && IsPlainFolder(path);
    // What cannot be listed is told as a source that cannot be read.
    if (!isEntered || ListBelow(path, JoinedPath(below, name), recursive, sources) != 0)
      sources.push_back({path, below, true});
  }
  return kStatusSuccess;
}

}  // namespace

uint32_t ListSources(const WideString& folder, bool recursive,
                     std::vector<ConversionSource>& sources) {
  return ListBelow(folder, WideString(), recursive, sources);
}
