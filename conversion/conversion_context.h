#pragma once

#include <cstdint>
#include <functional>
#include <limits>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

#include "base/text.h"
#include "base/wide_string.h"
#include "conversion/conversion_notes.h"
#include "conversion/csv_layouts.h"
#include "conversion/failure_reason.h"
#include "conversion/itinerary_hand_off.h"
#include "conversion/lookups.h"
#include "conversion/map_links.h"
#include "conversion/point_watcher.h"
#include "platform/output_file.h"

/// How far a conversion has come.
struct ConversionProgress {
  enum class Stage { kReading, kWriting, kChecking };

  Stage stage = Stage::kReading;
  uint64_t bytesDone = 0;
  uint64_t bytesInAll = 0;  ///< 0 when it is not known, as of what is written
};

/// What a conversion depends on besides the bytes and the lists, and what it has to tell besides
/// its status. Readers and writers take it as a parameter; the functions of the format table, whose
/// shape has no room for it, fetch it from the thread (`ConversionScope`). One conversion uses it
/// at a time, on one thread.
class ConversionContext {
 public:
  // What the conversion may use, set before it begins.

  CsvLayouts csvLayouts;
  Lookups lookups;
  ItineraryHandOff handOff;  ///< none: kStatusNotImplemented
  LinkOptions linkOptions;   ///< for writers whose target is a web planner
  LinkTaker takeLink;        ///< gets what they write; none: kStatusNotImplemented
  bool writesWay = false;    ///< also the way between the stops, by writers that can
  /// Called on the converting thread, every quarter of a megabyte at most. False cancels.
  std::function<bool(const ConversionProgress&)> progress;
  /// Cancels from any thread.
  std::stop_token stop;
  /// Of texts in 8-bit formats, as told for this run; empty for that of each format. It must be one
  /// for `IsFileEncoding`.
  std::string encoding;
  /// Asked with the path of every file before it is written; a status other than 0 refuses it.
  std::function<uint32_t(const WideString& path)> guard;
  Durability durability =
      Durability::kLeftToTheSystem;  ///< of what is written; `WriteTrip` sets it

  // For checking a file while it is written:

  /// Gets the bytes of what is written as they come.
  std::function<void(std::string_view)> written;
  /// What a reader that takes its file piece by piece reads instead of the file: puts up to `size`
  /// bytes at `data` and returns how many, 0 at the end.
  std::function<std::optional<size_t>(char* data, size_t size)> incoming;
  /// Asked by readers that hand their points on.
  PointWatcher* watcher = nullptr;
  bool WatcherTakes(const CGpsPointArray& list, const CGpsPoint& point) const {
    return watcher && watcher->Takes(list, point);
  }

  // What it tells; `ReadTrip` and `WriteTrip` hand that on with their results.

  ConversionNotes notes;
  FailureReason failure;
  /// The files that stand complete, in the order of their completion. Writers may write several,
  /// or give one a name of their own.
  std::vector<WideString> writtenFiles;
  bool usesEncoding = false;  ///< texts were decoded or encoded as `encoding` says

  /// Told by the reader of an 8-bit format whose file has a mark of Unicode.
  void TellEncoding(EFileEncoding found) { m_isUnicode = found != kEncodingNarrow; }
  bool IsUnicode() const { return m_isUnicode; }

  void Note(ConversionNote note, uint64_t count = 1) { notes.Add(note, count); }

  /// Keeps the error of a file operation, 0 for none, as the reason of a failure; returns it.
  uint32_t Keep(uint32_t platformError) {
    if (platformError != kStatusSuccess) failure.platformError = platformError;
    return platformError;
  }

  /// A new file begins: what was told of the one before is forgotten.
  void Renew();
  /// The thing that is read or written begins. `bytesInAll` as in ConversionProgress.
  void Begin(ConversionProgress::Stage stage, uint64_t bytesInAll = 0);

  /// To be asked now and then by what reads or writes, with the bytes done so far: false once the
  /// conversion is cancelled. Cheap enough for every line and every record.
  bool GoesOn(uint64_t bytesDone) { return bytesDone < m_nextLook || Look(bytesDone); }
  bool IsCancelled() const { return m_isCancelled; }
  /// As `GoesOn`, but asks at once; for what is about to become visible to others.
  bool Look(uint64_t bytesDone);

  /// A context with the same means for reading back what this one writes. It asks nobody, neither
  /// a service nor the user, and reads CSV as it was written.
  ConversionContext ForReadingBack() const;

 private:
  ConversionProgress m_progress;
  uint64_t m_nextLook = std::numeric_limits<uint64_t>::max();
  bool m_isCancelled = false;
  bool m_isUnicode = false;
};

/// Puts a context in place for the functions of the format table, on this thread and as long as
/// this lives. Scopes nest; the innermost counts.
class ConversionScope {
 public:
  explicit ConversionScope(ConversionContext& context);
  ~ConversionScope();
  ConversionScope(const ConversionScope&) = delete;
  ConversionScope& operator=(const ConversionScope&) = delete;

 private:
  ConversionContext* m_outer;
};

/// The context in place on this thread; without one, a new one that nobody hears, which lives as
/// long as this.
class ContextInPlace {
 public:
  ContextInPlace();
  ContextInPlace(const ContextInPlace&) = delete;
  ContextInPlace& operator=(const ContextInPlace&) = delete;

  ConversionContext& operator*() { return m_context; }
  ConversionContext* operator->() { return &m_context; }
  // NOLINTNEXTLINE(google-explicit-constructor): stands for the context in an argument list.
  operator ConversionContext&() { return m_context; }

 private:
  std::optional<ConversionContext> m_own;
  ConversionContext& m_context;
};
