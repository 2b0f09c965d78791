#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "base/text.h"

/// The lines of a text that arrives piece by piece, split as by LineSplitter. A line is valid until
/// the next one is taken; memory is bounded by the longest line and one piece.
class IncomingLines {
 public:
  /// Puts up to `size` of the next bytes at `data` and returns how many, 0 at the end; nothing on
  /// failure, which ends the text.
  using Source = std::function<std::optional<size_t>(char* data, size_t size)>;

  explicit IncomingLines(Source source);

  /// What has arrived and has not been taken, at least `count` bytes unless the text is shorter.
  /// Taking lines ends what it shows.
  std::string_view Peek(size_t count);
  /// Passes over as many of these bytes.
  void Skip(size_t count);

  /// Gives the next line without its end. False when no text is left.
  bool Next(std::string_view& line);

 private:
  bool Fill();

  Source m_source;
  std::string m_arrived;                     // what has not been split yet behind what has
  size_t m_taken = 0;                        // bytes in front that were passed over or split
  LineSplitter m_lines{std::string_view()};  // over whole lines of it
  bool m_isAtEnd = false;
};
