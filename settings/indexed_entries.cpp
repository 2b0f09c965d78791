#include "settings/indexed_entries.h"

#include <charconv>
#include <optional>
#include <set>

namespace {

constexpr std::string_view kNumber = "Number";

// The number that a value's name writes, when it is the name of an entry.
std::optional<uint32_t> IndexOf(const std::string& name) {
  uint32_t index = 0;
  const auto parsed = std::from_chars(name.data(), name.data() + name.size(), index);
  if (parsed.ec != std::errc() || std::to_string(index) != name) return std::nullopt;
  return index;
}

uint32_t CountIn(const storage::SFolder& folder) {
  try {
    return folder.OpenValue(kNumber).ReadNumber();
  } catch (const storage::Exception& failure) {
    if (failure.reason == storage::Reason::kNotFound) return 0;
    throw;
  }
}

}  // namespace

void ReadIndexedEntries(const storage::SFolder& folder,
                        const std::function<void(const std::string& bytes)>& take) {
  const uint32_t count = CountIn(folder);
  if (count == 0) return;
  // Goes by what the folder holds, since the count is only a number in a file.
  std::set<uint32_t> indices;
  for (const std::string& name : folder.ValueNames()) {
    const std::optional<uint32_t> index = IndexOf(name);
    if (index && *index < count) indices.insert(*index);
  }
  for (const uint32_t index : indices) {
    try {
      take(folder.OpenValue(std::to_string(index)).ReadBytes());
    } catch (const storage::Exception& failure) {
      // An entry of another kind is none of ours.
      if (failure.reason != storage::Reason::kInvalidData) throw;
    }
  }
}

void WriteIndexedEntries(storage::Storage& storage, const std::string& path,
                         const std::vector<std::string>& entries) {
  storage::SFolder folder = storage.CreateFolder(path);
  folder.CreateValue(kNumber).WriteNumber(static_cast<uint32_t>(entries.size()));
  for (size_t i = 0; i < entries.size(); ++i)
    folder.CreateValue(std::to_string(i)).WriteBytes(entries[i]);
}
