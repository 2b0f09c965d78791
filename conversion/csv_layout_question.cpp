#include "conversion/csv_layout_question.h"

#include <utility>

#include "base/status.h"

namespace {

CsvLayoutAsker currentAsker;
std::optional<CCsvLayout> layoutForReading;
std::optional<CCsvLayout> layoutForWriting;

std::optional<CCsvLayout>& LayoutForRun(ECsvUse use) {
  return use == ECsvUse::kRead ? layoutForReading : layoutForWriting;
}

}  // namespace

void SetCsvLayoutAsker(CsvLayoutAsker asker) { currentAsker = std::move(asker); }

void SetCsvLayoutForRun(ECsvUse use, const std::optional<CCsvLayout>& layout) {
  LayoutForRun(use) = layout;
}

uint32_t AskCsvLayout(ECsvUse use, bool silent, CCsvLayout& layout) {
  if (const auto& forRun = LayoutForRun(use)) {
    layout = *forRun;
    return kStatusSuccess;
  }
  layout = LoadCsvLayout(storage::OpenUserStorage(), use);
  if (silent || !currentAsker) return kStatusSuccess;
  return currentAsker(use, layout) ? kStatusSuccess : kStatusCancelled;
}
