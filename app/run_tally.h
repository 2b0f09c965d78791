#pragma once

#include <cstddef>

/// What has become of one source.
enum class Outcome { kConverted, kWithLosses, kNotRecognised, kKept, kFailed };

/// What has become of the sources of a run.
class RunTally {
 public:
  /// `isGiven`: the user has named the file, which then should be one that a reader knows.
  void Count(Outcome outcome, bool isGiven = true);

  /// Tells the numbers on standard error.
  void Tell() const;

  bool HasConverted() const { return m_converted > 0; }
  bool HasLosses() const { return m_withLosses > 0; }
  /// Whether everything that was to become a file has become one.
  bool IsComplete() const { return HasConverted() && m_failed + m_kept + m_unknownGiven == 0; }

 private:
  size_t m_converted = 0;
  size_t m_withLosses = 0;  ///< of these
  size_t m_unknown = 0;
  size_t m_unknownGiven = 0;  ///< of these
  size_t m_kept = 0;
  size_t m_failed = 0;
};
