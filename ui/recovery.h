#pragma once

#include <QElapsedTimer>
#include <QString>
#include <thread>

class CGpsRoute;
class MainWindow;
class QTimer;
struct FailureReason;

/// Keeps the itinerary in a file while it has changes that are not saved, so that a crash loses
/// nothing. Each running window has a file of its own; one whose program has gone is left over.
class Recovery {
 public:
  explicit Recovery(MainWindow& window);
  ~Recovery();

  /// The itinerary may have changed: it is written a little later, if it has unsaved changes. Where
  /// that fails, the user is told, and it is tried again.
  void Note(const CGpsRoute& itinerary);
  /// The itinerary is saved, or nobody wants it.
  void Forget();

  bool HasLeftOver() const { return !m_leftOver.isEmpty(); }
  /// Makes the left over itinerary the present one, with changes that are not saved; nothing where
  /// another window has done so. One that cannot be read is told of and stays.
  void Restore();
  /// Removes what was left over.
  void Drop();

 private:
  void Write();
  void Written(uint32_t status, const FailureReason& reason);

  MainWindow& m_window;
  QTimer* m_timer;
  const QString m_folder;  ///< empty when the user has no home: then nothing is kept
  const QString m_path;
  QString m_leftOver;
  const CGpsRoute* m_itinerary = nullptr;
  QElapsedTimer m_firstChange;  ///< since the last time that it was written
  bool m_isWriting = false;
  bool m_hasFailed = false;
  std::jthread m_thread;  ///< writes the file
};
