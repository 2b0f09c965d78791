#include "conversion/csv_layouts.h"

#include "base/status.h"

uint32_t CsvLayouts::Choose(ECsvUse use, bool silent, CCsvLayout& layout) {
  if (use == ECsvUse::kRead && findsForReading) return kStatusSuccess;
  if (const auto& told = use == ECsvUse::kRead ? forReading : forWriting) {
    layout = *told;
  } else {
    layout = LoadCsvLayout(storage::OpenUserStorage(), use);
    if (!silent && ask && !ask(use, layout)) return kStatusCancelled;
  }
  if (use == ECsvUse::kWrite) written = layout;
  return kStatusSuccess;
}
