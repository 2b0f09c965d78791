#pragma once

#include <QObject>
#include <cstdint>
#include <memory>
#include <thread>

#include "conversion/format_table.h"

class CGpsRoute;
class PostBox;
class QComboBox;
class QTimer;

/// Marks the entries of the export list that cannot hold everything of the itinerary. It tries each
/// of them in the background, the selected one first, a little while after the last change; what a
/// change overtakes is given up. With a long itinerary the others wait until the user comes to the
/// list, by pointer or keyboard.
class ExportMarks : private QObject {
 public:
  /// All must outlive this. Each entry's data is its row.
  ExportMarks(QComboBox& list, const FormatTable& table, PostBox& posts);
  ~ExportMarks() override;

  /// The itinerary may have changed.
  void Note(const CGpsRoute& itinerary);

 private:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void TryTheOthers();
  void CopyMore();
  void Start();
  void Stop();
  void Mark(int entry, bool loses);

  QComboBox& m_list;
  const FormatTable& m_table;
  PostBox& m_posts;
  QTimer* m_timer;
  const CGpsRoute* m_itinerary = nullptr;
  bool m_isUserThere = false;         ///< at the list, since the last change
  bool m_hasLeftOut = false;          ///< the last run has tried the selected entry only
  std::unique_ptr<CGpsRoute> m_copy;  ///< of the itinerary, as far as it has come
  std::jthread m_thread;  ///< the run of the last copy; it waits for the end of the one before
  /// Posted answers of a run that is out of date find false here.
  std::shared_ptr<bool> m_isCurrent = std::make_shared<bool>(false);
};
