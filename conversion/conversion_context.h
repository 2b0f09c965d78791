#pragma once

#include <cstdint>
#include <functional>
#include <limits>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

#include "base/wide_string.h"
#include "conversion/conversion_notes.h"
#include "conversion/csv_layouts.h"
#include "conversion/failure_reason.h"
#include "conversion/itinerary_hand_off.h"
#include "conversion/lookups.h"
#include "conversion/map_links.h"

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

  // What it tells; `ReadTrip` and `WriteTrip` hand that on with their results.

  ConversionNotes notes;
  FailureReason failure;
  /// The files that stand complete, in the order of their completion. Writers may write several,
  /// or give one a name of their own.
  std::vector<WideString> writtenFiles;

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

  /// A context with the same means for reading back what this one writes. It asks nobody, neither
  /// a service nor the user, and reads CSV as it was written.
  ConversionContext ForReadingBack() const;

 private:
  bool Look(uint64_t bytesDone);

  ConversionProgress m_progress;
  uint64_t m_nextLook = std::numeric_limits<uint64_t>::max();
  bool m_isCancelled = false;
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
