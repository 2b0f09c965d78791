#include "ui/page_box_limit.h"

namespace {

constexpr int kMostInARow = 5;
constexpr int kPause = 2000;  // milliseconds that end a row

}  // namespace

bool PageBoxLimit::Allows() {
  const bool goesOn = m_sinceLast.isValid() && m_sinceLast.elapsed() < kPause;
  m_inARow = goesOn ? m_inARow + 1 : 1;
  if (m_inARow <= kMostInARow) return true;
  // Whoever is refused has to wait as well.
  m_inARow = kMostInARow;
  m_sinceLast.start();
  return false;
}
