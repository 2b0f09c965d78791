#include "ui/window_store.h"

#include <string>

#include "platform/debug_log.h"
#include "settings/storage.h"
#include "ui/text.h"

namespace {

constexpr char kRecentFiles[] = "RecentFiles";
constexpr qsizetype kMostRecentFiles = 10;

std::string FolderPath() { return std::string(kSettingsRoot) + "\\Window"; }

}  // namespace

QByteArray WindowStore::Bytes(const char* name) const {
  try {
    return QByteArray::fromStdString(
        storage::OpenUserStorage().OpenFolder(FolderPath()).OpenValue(name).ReadBytes());
  } catch (const storage::Exception&) {
    return {};
  }
}

void WindowStore::SetBytes(const char* name, const QByteArray& bytes) {
  try {
    storage::Storage store = storage::OpenUserStorage();
    store.CreateFolder(FolderPath()).CreateValue(name).WriteBytes(bytes.toStdString());
  } catch (const storage::Exception& failure) {
    DebugLog(std::string("window: ") + failure.what());
  }
}

QStringList WindowStore::RecentFiles() const {
  return QString::fromUtf8(Bytes(kRecentFiles)).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

void WindowStore::AddRecentFile(const QString& path) {
  QStringList files = RecentFiles();
  files.removeAll(path);
  files.prepend(path);
  while (files.size() > kMostRecentFiles) files.removeLast();
  SetBytes(kRecentFiles, files.join(QLatin1Char('\n')).toUtf8());
}

void WindowStore::ClearRecentFiles() { SetBytes(kRecentFiles, {}); }
