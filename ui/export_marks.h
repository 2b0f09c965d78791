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
/// of them in the background, a little while after the last change.
class ExportMarks {
 public:
  /// All must outlive this. Each entry's data is its row.
  ExportMarks(QComboBox& list, const FormatTable& table, PostBox& posts);
  ~ExportMarks();

  /// The itinerary may have changed.
  void Note(const CGpsRoute& itinerary);

 private:
  void Start();
  void Stop();
  void Mark(int entry, bool loses);

  QComboBox& m_list;
  const FormatTable& m_table;
  PostBox& m_posts;
  QTimer* m_timer;
  const CGpsRoute* m_itinerary = nullptr;
  std::jthread m_thread;
  /// Posted answers of a run that is out of date find false here.
  std::shared_ptr<bool> m_isCurrent = std::make_shared<bool>(false);
};
