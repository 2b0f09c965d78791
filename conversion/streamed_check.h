#pragma once

#include <optional>
#include <string_view>
#include <thread>
#include <unordered_map>

#include "conversion/byte_pipe.h"
#include "conversion/conversion_context.h"
#include "conversion/format_table.h"
#include "conversion/loss_report.h"
#include "conversion/point_watcher.h"

/// Reads a file back while it is written, on a thread of its own, and compares its points with
/// those of a list as they come: no second list is kept. Only for one file and a reader that hands
/// its points on.
class StreamedCheck final : private PointWatcher {
 public:
  /// `list` must not change and must live as long as this. Throws std::system_error when there is
  /// no thread to be had.
  StreamedCheck(const CItineraryFormat& reader, const CGpsPointArray& list,
                const ConversionContext& context);
  ~StreamedCheck() override;
  StreamedCheck(const StreamedCheck&) = delete;
  StreamedCheck& operator=(const StreamedCheck&) = delete;

  /// The next bytes of the file.
  void Take(std::string_view bytes) { m_pipe.Write(bytes); }

  /// Ends the file. Nothing when it could not be read, or holds another number of stops: then its
  /// stops have to be matched, for which all of them are needed.
  std::optional<LossReport> Finish();

 private:
  bool Takes(const CGpsPointArray& list, const CGpsPoint& point) override;
  void Read();
  void End();

  const CItineraryFormat& m_reader;
  const CGpsPointArray& m_list;
  ConversionContext m_context;
  BytePipe m_pipe;
  // Of the thread, until it has ended:
  PointLists m_lists;
  std::unordered_map<const CGpsPointArray*, StopComparison> m_comparisons;
  const CGpsPointArray* m_current = nullptr;
  StopComparison* m_comparison = nullptr;  ///< that of `m_current`
  uint32_t m_status = kStatusFailure;
  std::thread m_thread;
};
