#include "app/reading_remarks.h"

#include <string>

#include "app/console_text.h"
#include "base/format_text.h"
#include "base/text_ids.h"
#include "conversion/loss_report.h"
#include "settings/csv_layout_text.h"

void TellColumns(const WideString& source, const CsvLayouts& layouts) {
  const std::string shown = ShownPath(source);
  if (layouts.found)
    Complain(FormatText(kTextCsvColumnsFound, shown, CsvLayoutAsText(*layouts.found)));
  if (layouts.isNotFound) Complain(FormatText(kTextCsvColumnsNotFound, shown));
  if (layouts.contradicting)
    Complain(FormatText(kTextCsvHeaderContradicts, shown, CsvLayoutAsText(*layouts.contradicting)));
}

void TellDoubtfulPositions(const WideString& source, const PointLists& lists) {
  size_t count = 0;
  for (const auto& list : lists) count += CountDoubtfulPositions(*list);
  if (count == 0) return;
  Complain(FormatText(kTextDoubtfulPositions, ShownPath(source), count));
}
