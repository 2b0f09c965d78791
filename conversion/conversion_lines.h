#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "base/text.h"
#include "conversion/conversion_context.h"

/// The lines of a text that is converted, from a LineSplitter or FileLines: counted, and at an end
/// when the conversion is cancelled.
template <typename Lines = LineSplitter>
class ConversionLines {
 public:
  ConversionLines(Lines lines, ConversionContext& context)
      : m_lines(std::move(lines)), m_context(context) {}
  ConversionLines(std::string_view text, ConversionContext& context)
      : ConversionLines(Lines(text), context) {}

  /// Gives the next line without its end. False when no text is left.
  bool Next(std::string_view& line) {
    if (!m_context.GoesOn(m_bytesDone) || !m_lines.Next(line)) return false;
    m_bytesDone += line.size() + 1;
    ++m_number;
    return true;
  }

  /// Tells that the conversion fails because of the line given last. Returns kStatusFailure.
  uint32_t FailHere() const {
    m_context.failure.line = m_number;
    return kStatusFailure;
  }

 private:
  Lines m_lines;
  ConversionContext& m_context;
  uint64_t m_bytesDone = 0;  ///< nearly: line ends count as one byte
  uint64_t m_number = 0;     ///< of the line given last, from 1
};

ConversionLines(std::string_view, ConversionContext&)->ConversionLines<LineSplitter>;
ConversionLines(const std::string&, ConversionContext&)->ConversionLines<LineSplitter>;
