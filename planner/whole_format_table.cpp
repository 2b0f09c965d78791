#include "planner/whole_format_table.h"

#include <algorithm>
#include <string_view>

#include "base/text_ids.h"
#include "formats/format_rows.h"
#include "planner/hand_off.h"
#include "planner/tomtom_home.h"

namespace {

CItineraryFormat& TomTomHomeRow(FormatTable& table) {
  return *std::find_if(table.begin(), table.end(), [](const CItineraryFormat& row) {
    return std::u16string_view(row.extension) == kTomTomHomeKey;
  });
}

}  // namespace

FormatTable WholeFormatTable() {
  FormatTable table = DefaultFormatTable();
  CItineraryFormat& row = TomTomHomeRow(table);
  row.write = WriteTomTomHome;
  row.facts.option = WriterOption::kSplit;
  return table;
}

void ListCompanionRows(FormatTable& table) {
  if (IsTargetInstalled(kTargetTomTomHome)) TomTomHomeRow(table).textId = kTextTomTomHomeRow;
}
