#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/status.h"
#include "base/text.h"
#include "platform/settings_backend.h"

/// A store in memory. It can be filled with values of any kind and content, as a damaged file, or
/// somebody who edits it, may bring them.
class StoredBytes : public SettingsBackend {
 public:
  /// Fills the value of each name in turn: a byte for its kind, one for its length, its content.
  /// What is left of `bytes` comes back.
  std::string_view Fill(std::string_view folder, const std::vector<std::string>& names,
                        std::string_view bytes) {
    constexpr size_t kHeadSize = 2;
    for (const std::string& name : names) {
      if (bytes.size() < kHeadSize) return {};
      const auto kind = static_cast<uint8_t>(bytes[0]);
      const std::string_view content = bytes.substr(kHeadSize, static_cast<uint8_t>(bytes[1]));
      bytes.remove_prefix(kHeadSize + content.size());
      PutValue(folder, name, kind, std::string(content));
    }
    return bytes;
  }

  uint32_t CreateFolder(std::string_view) override { return kStatusSuccess; }
  uint32_t Read(std::string_view folder, std::string_view name, SettingsValue& value) override {
    const auto found = m_values.find({Key(folder), Key(name)});
    if (found == m_values.end()) return kStatusFileNotFound;
    value = found->second;
    return kStatusSuccess;
  }
  uint32_t Write(std::string_view folder, std::string_view name,
                 const SettingsValue& value) override {
    m_values[{Key(folder), Key(name)}] = value;
    return kStatusSuccess;
  }
  uint32_t ListValues(std::string_view folder, std::vector<std::string>& names) override {
    for (const auto& [path, value] : m_values) {
      if (path.first == Key(folder)) names.push_back(path.second);
    }
    return kStatusSuccess;
  }
  uint32_t ListFolders(std::string_view path, std::vector<std::string>& names) override {
    const std::string above = Key(path) + kSettingsPathSeparator;
    for (const auto& [place, value] : m_values) {
      if (place.first.starts_with(above)) names.push_back(place.first.substr(above.size()));
    }
    return kStatusSuccess;
  }
  uint32_t RemoveValue(std::string_view folder, std::string_view name) override {
    m_values.erase({Key(folder), Key(name)});
    return kStatusSuccess;
  }
  uint32_t RemoveFolder(std::string_view path) override {
    std::erase_if(m_values, [&](const auto& each) { return each.first.first == Key(path); });
    return kStatusSuccess;
  }
  uint32_t BeginSave() override { return kStatusSuccess; }
  uint32_t CommitSave() override { return kStatusSuccess; }
  void AbandonSave() override {}

 private:
  static std::string Key(std::string_view name) { return ToLowerAscii(name); }

  static uint64_t NumberIn(const std::string& content) {
    uint64_t number = 0;
    for (const char each : content) number = number << 8 | static_cast<uint8_t>(each);
    return number;
  }

  void PutValue(std::string_view folder, const std::string& name, uint8_t kind,
                std::string content) {
    constexpr uint8_t kKinds = 5;
    SettingsValue& value = m_values[{Key(folder), Key(name)}];
    switch (kind % kKinds) {
      case 0:
        m_values.erase({Key(folder), Key(name)});
        break;
      case 1:
        value = std::move(content);
        break;
      case 2:
        value = static_cast<uint32_t>(NumberIn(content));
        break;
      case 3:
        value = NumberIn(content);
        break;
      default:
        value = Utf8ToWideLossy(content);
    }
  }

  std::map<std::pair<std::string, std::string>, SettingsValue> m_values;
};
