#include "conversion/csv_layouts.h"

#include "base/status.h"

uint32_t CsvLayouts::Choose(CsvUse use, bool silent, CCsvLayout& layout) {
  if (use == CsvUse::kRead && findsForReading) return kStatusSuccess;
  if (const auto& told = use == CsvUse::kRead ? forReading : forWriting) {
    layout = *told;
  } else {
    layout = LoadCsvLayout(storage::OpenUserStorage(), use);
    if (!silent && ask && !ask(use, layout)) return kStatusCancelled;
  }
  if (use == CsvUse::kWrite) written = layout;
  return kStatusSuccess;
}
