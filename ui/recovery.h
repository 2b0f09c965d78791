#pragma once

#include <QString>
#include <thread>

class CGpsRoute;
class MainWindow;
class QTimer;

/// Keeps the itinerary in a file while it has changes that are not saved, so that a crash loses
/// nothing. Each running window has a file of its own; one whose program has gone is left over.
class Recovery {
 public:
  explicit Recovery(MainWindow& window);
  ~Recovery();

  /// The itinerary may have changed: it is written a little later, if it has unsaved changes.
  void Note(const CGpsRoute& itinerary);
  /// The itinerary is saved, or nobody wants it.
  void Forget();

  bool HasLeftOver() const { return !m_leftOver.isEmpty(); }
  /// Makes the left over itinerary the present one, with changes that are not saved. One that
  /// cannot be read is told of and stays.
  void Restore();
  /// Removes what was left over.
  void Drop();

 private:
  void Write();

  MainWindow& m_window;
  QTimer* m_timer;
  QString m_path;
  QString m_leftOver;
  const CGpsRoute* m_itinerary = nullptr;
  std::jthread m_thread;  ///< writes the file
};
