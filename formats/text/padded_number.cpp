#include "formats/text/padded_number.h"

#include <cmath>

#include "base/numbers.h"

namespace {

// Fills the number that begins at `start` up to `width` characters.
void Pad(std::string& text, size_t start, double value, size_t width) {
  const size_t length = text.size() - start;
  if (length >= width) return;
  if (!std::isfinite(value)) {
    text.insert(start, width - length, ' ');
    return;
  }
  const bool hasSign = text[start] == '-' || text[start] == '+';
  text.insert(start + (hasSign ? 1 : 0), width - length, '0');
}

}  // namespace

void AppendPaddedFixed(std::string& text, double value, int decimals, size_t width) {
  const size_t start = text.size();
  AppendFixed(text, value, decimals);
  Pad(text, start, value, width);
}

void AppendSignedFixed(std::string& text, double value, int decimals, size_t width) {
  const size_t start = text.size();
  if (!std::signbit(value)) text.push_back('+');
  AppendFixed(text, value, decimals);
  Pad(text, start, value, width);
}
