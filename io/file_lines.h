#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "base/status.h"
#include "base/text.h"
#include "platform/input_file.h"

/// The lines of an open file, split as by LineSplitter. A line is valid until the next one is
/// taken: what lies before it goes back to the system, so that a long file costs only what is kept
/// of it.
class FileLines {
 public:
  explicit FileLines(InputFile& file) : m_file(file), m_lines(file.Bytes()) {}

  /// Gives the next line without its end. False when no text is left.
  bool Next(std::string_view& line) {
    if (!m_lines.Next(line)) return false;
    m_file.DiscardBefore(static_cast<size_t>(line.data() - m_file.Bytes().data()));
    return true;
  }

 private:
  InputFile& m_file;
  LineSplitter m_lines;
};
