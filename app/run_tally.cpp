#include "app/run_tally.h"

#include <string>

#include "app/console_text.h"
#include "base/format_text.h"
#include "base/text_ids.h"

void RunTally::Count(Outcome outcome, bool isGiven) {
  switch (outcome) {
    case Outcome::kWithLosses:
      ++m_withLosses;
      [[fallthrough]];
    case Outcome::kConverted:
      ++m_converted;
      break;
    case Outcome::kNotRecognised:
      ++m_unknown;
      if (isGiven) ++m_unknownGiven;
      break;
    case Outcome::kKept:
      ++m_kept;
      break;
    case Outcome::kFailed:
      ++m_failed;
      break;
  }
}

void RunTally::Tell() const {
  std::string line = FormatText(kTextSummary, m_converted, m_unknown, m_failed);
  if (m_kept > 0) line += ", " + FormatText(kTextKeptCount, m_kept);
  Complain(line);
  if (m_withLosses > 0) Complain(FormatText(kTextFilesWithLosses, m_withLosses));
}
