#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "base/wide_string.h"

/// What a reader had to pass over or a writer could not find out.
enum class EConversionNote : size_t {
  kLinePassedOver,        ///< a line or record that holds data but does not fit the format
  kStopWithoutWaypoint,   ///< a route stop that names a waypoint that the file does not hold
  kPointWithoutPosition,  ///< a point at 0, 0, dropped
  kStopLookedUp,          ///< a stop whose position was asked of the geocoder
  kStopNotFound,          ///< one of these that was not found
  kCountryNotFound,       ///< a stop whose country could not be looked up
  kCount,
};

/// Counts the notes of this thread as long as it lives, and keeps the paths of the files that were
/// written; scopes nest, the innermost listens. Without a listener a note is one test of a pointer.
class ConversionNotes {
 public:
  ConversionNotes();
  ~ConversionNotes();
  ConversionNotes(const ConversionNotes&) = delete;
  ConversionNotes& operator=(const ConversionNotes&) = delete;

  uint64_t Count(EConversionNote note) const { return m_counts[static_cast<size_t>(note)]; }
  /// In the order of their completion. Writers may write several files, or give one a name of
  /// their own.
  const std::vector<WideString>& WrittenFiles() const { return m_writtenFiles; }

 private:
  friend void NoteConversion(EConversionNote note, uint64_t count);
  friend void NoteWrittenFile(const WideString& path);

  std::array<uint64_t, static_cast<size_t>(EConversionNote::kCount)> m_counts{};
  std::vector<WideString> m_writtenFiles;
  ConversionNotes* m_outer;
};

/// Tells the listener of this thread, if there is one.
void NoteConversion(EConversionNote note, uint64_t count = 1);

/// Tells the listener that a file stands complete.
void NoteWrittenFile(const WideString& path);
