#pragma once

#include <cstdint>
#include <functional>
#include <optional>

#include "settings/csv_layout.h"

/// Shows `layout` to the user, who may change it. True on OK, with the layout stored for the next
/// time (`CCsvLayoutForm::Accept`); everything else is a cancel.
using CsvLayoutAsker = std::function<bool(ECsvUse use, CCsvLayout& layout)>;

/// Sets who asks for the layout of a CSV file; without an asker the stored layout is used.
void SetCsvLayoutAsker(CsvLayoutAsker asker);

/// The layout for all CSV files that this process reads, or writes, from now on. It is not stored,
/// and nobody is asked; none takes it back.
void SetCsvLayoutForRun(ECsvUse use, const std::optional<CCsvLayout>& layout);

/// The layout for a CSV file: the one set for this run, or the stored one, which unless `silent`
/// the user may change. Returns 0, or kStatusCancelled when the user does not want to go on.
uint32_t AskCsvLayout(ECsvUse use, bool silent, CCsvLayout& layout);
