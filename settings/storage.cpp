#include "settings/storage.h"

#include <algorithm>
#include <utility>

#include "base/status.h"

namespace storage {

namespace {

Reason ReasonOf(uint32_t status) {
  switch (status) {
    case kStatusInvalidHandle:
      return Reason::kEmptyHandle;
    case kStatusInvalidData:
      return Reason::kInvalidData;
    case kStatusBadLength:
      return Reason::kBadLength;
    case kStatusFileNotFound:
      return Reason::kNotFound;
    default:
      return Reason::kOther;
  }
}

void ThrowUnlessDone(const std::string& text, uint32_t status) {
  if (status != kStatusSuccess) throw Exception(text, status);
}

std::string NumberBytes(uint64_t number, size_t size) {
  std::string bytes;
  for (size_t i = 0; i < size; ++i) bytes.push_back(static_cast<char>(number >> (8 * i) & 0xFF));
  return bytes;
}

}  // namespace

Exception::Exception(const std::string& text, uint32_t failure)
    : std::runtime_error(text), reason(ReasonOf(failure)), status(failure) {}

SValue::SValue(std::shared_ptr<SettingsBackend> backend, std::string folder, std::string_view name)
    : m_backend(std::move(backend)), m_folder(std::move(folder)), m_name(name) {}

SettingsValue SValue::Read() const {
  if (!m_backend) throw Exception("SValue", kStatusInvalidHandle);
  SettingsValue value;
  ThrowUnlessDone(m_name, m_backend->Read(m_folder, m_name, value));
  return value;
}

bool SValue::Exists() const {
  SettingsValue value;
  return m_backend && m_backend->Read(m_folder, m_name, value) != kStatusFileNotFound;
}

void SValue::Write(const SettingsValue& value) {
  if (!m_backend) throw Exception("SValue", kStatusInvalidHandle);
  ThrowUnlessDone(m_name, m_backend->Write(m_folder, m_name, value));
}

std::string SValue::ReadBytes() const {
  const SettingsValue value = Read();
  if (const auto* const bytes = std::get_if<std::string>(&value)) return *bytes;
  if (const auto* const number = std::get_if<uint32_t>(&value)) return NumberBytes(*number, 4);
  if (const auto* const large = std::get_if<uint64_t>(&value)) return NumberBytes(*large, 8);
  throw Exception(m_name, kStatusInvalidData);
}

uint32_t SValue::ReadNumber() const {
  const std::string bytes = ReadBytes();
  if (bytes.empty()) throw Exception(m_name, kStatusBadLength);
  uint32_t number = 0;
  for (size_t i = 0; i < std::min<size_t>(bytes.size(), 4); ++i)
    number |= uint32_t{static_cast<uint8_t>(bytes[i])} << (8 * i);
  return number;
}

WideString SValue::ReadText() const {
  const SettingsValue value = Read();
  if (const auto* const text = std::get_if<WideString>(&value)) return *text;
  throw Exception(m_name, kStatusInvalidData);
}

void SValue::WriteBytes(std::string_view bytes) { Write(std::string(bytes)); }
void SValue::WriteNumber(uint32_t number) { Write(number); }
void SValue::WriteText(std::u16string_view text) { Write(WideString(text)); }

SFolder::SFolder(std::shared_ptr<SettingsBackend> backend, std::string path)
    : m_backend(std::move(backend)), m_path(std::move(path)) {}

SFolder SFolder::CreateFolder(std::string_view name) {
  if (!m_backend) throw Exception("SFolder", kStatusInvalidHandle);
  SFolder folder = OpenFolder(name);
  ThrowUnlessDone("Key", m_backend->CreateFolder(folder.m_path));
  return folder;
}

SFolder SFolder::OpenFolder(std::string_view name) const {
  return {m_backend, PathOf(m_path, name)};
}

SValue SFolder::CreateValue(std::string_view name) { return OpenValue(name); }

SValue SFolder::OpenValue(std::string_view name) const { return {m_backend, m_path, name}; }

std::vector<std::string> SFolder::ValueNames() const {
  if (!m_backend) throw Exception("SFolder", kStatusInvalidHandle);
  std::vector<std::string> names;
  ThrowUnlessDone("Key", m_backend->ListValues(m_path, names));
  return names;
}

std::vector<std::string> SFolder::FolderNames() const {
  if (!m_backend) throw Exception("SFolder", kStatusInvalidHandle);
  std::vector<std::string> names;
  const uint32_t status = m_backend->ListFolders(m_path, names);
  if (status != kStatusFileNotFound) ThrowUnlessDone("Key", status);
  return names;
}

void SFolder::RemoveValue(std::string_view name) {
  if (!m_backend) throw Exception("SFolder", kStatusInvalidHandle);
  const uint32_t status = m_backend->RemoveValue(m_path, name);
  if (status != kStatusFileNotFound) ThrowUnlessDone(std::string(name), status);
}

void SFolder::RemoveFolder(std::string_view name) {
  if (!m_backend) throw Exception("SFolder", kStatusInvalidHandle);
  const uint32_t status = m_backend->RemoveFolder(PathOf(m_path, name));
  if (status != kStatusFileNotFound) ThrowUnlessDone("Key", status);
}

Storage::Storage(std::shared_ptr<SettingsBackend> backend) : m_backend(std::move(backend)) {}

SFolder Storage::CreateFolder(std::string_view path) {
  if (!m_backend) throw Exception("Storage", kStatusInvalidHandle);
  ThrowUnlessDone("Key", m_backend->CreateFolder(path));
  return OpenFolder(path);
}

SFolder Storage::OpenFolder(std::string_view path) const { return {m_backend, std::string(path)}; }

Transaction::Transaction(Storage& storage) : m_backend(storage.m_backend) {
  if (!m_backend) throw Exception("Storage", kStatusInvalidHandle);
  ThrowUnlessDone("Storage", m_backend->BeginSave());
}

Transaction::~Transaction() {
  if (m_backend) m_backend->AbandonSave();
}

void Transaction::Commit() {
  const auto backend = std::exchange(m_backend, nullptr);
  ThrowUnlessDone("Storage", backend->CommitSave());
}

std::string PathOf(std::string_view folder, std::string_view name) {
  return std::string(folder) + kSettingsPathSeparator + std::string(name);
}

Storage OpenUserStorage() { return Storage(OpenUserSettings()); }

}  // namespace storage
