#pragma once

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
/// change overtakes is given up.
class ExportMarks {
 public:
  /// All must outlive this. Each entry's data is its row.
  ExportMarks(QComboBox& list, const FormatTable& table, PostBox& posts);
  ~ExportMarks();

  /// The itinerary may have changed.
  void Note(const CGpsRoute& itinerary);

 private:
  void CopyMore();
  void Start();
  void Stop();
  void Mark(int entry, bool loses);

  QComboBox& m_list;
  const FormatTable& m_table;
  PostBox& m_posts;
  QTimer* m_timer;
  const CGpsRoute* m_itinerary = nullptr;
  std::unique_ptr<CGpsRoute> m_copy;  ///< of the itinerary, as far as it has come
  std::jthread m_thread;  ///< the run of the last copy; it waits for the end of the one before
  /// Posted answers of a run that is out of date find false here.
  std::shared_ptr<bool> m_isCurrent = std::make_shared<bool>(false);
};
