#pragma once

#include "base/status.h"
#include "platform/settings_backend.h"

/// A store that takes everything and holds nothing.
class EmptyBackend : public SettingsBackend {
 public:
  uint32_t CreateFolder(std::string_view) override { return kStatusSuccess; }
  uint32_t Read(std::string_view, std::string_view, SettingsValue&) override {
    return kStatusFileNotFound;
  }
  uint32_t Write(std::string_view, std::string_view, const SettingsValue&) override {
    return kStatusSuccess;
  }
  uint32_t ListValues(std::string_view, std::vector<std::string>&) override {
    return kStatusSuccess;
  }
  uint32_t ListFolders(std::string_view, std::vector<std::string>&) override {
    return kStatusSuccess;
  }
  uint32_t RemoveValue(std::string_view, std::string_view) override { return kStatusFileNotFound; }
  uint32_t RemoveFolder(std::string_view) override { return kStatusFileNotFound; }
  uint32_t BeginSave() override { return kStatusSuccess; }
  uint32_t CommitSave() override { return kStatusSuccess; }
  void AbandonSave() override {}
};
