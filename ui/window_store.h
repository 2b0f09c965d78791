#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <cstdint>

/// What the window remembers of itself, beside the settings. What cannot be read is empty, what
/// cannot be stored is forgotten.
class WindowStore {
 public:
  QByteArray Bytes(const char* name) const;
  void SetBytes(const char* name, const QByteArray& bytes);

  /// The files opened last, the newest first.
  QStringList RecentFiles() const;
  void AddRecentFile(const QString& path);
  void ClearRecentFiles();
};
