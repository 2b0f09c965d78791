#include "app/writer_option.h"

#include <algorithm>
#include <iterator>

#include "base/format_text.h"
#include "base/text.h"
#include "base/text_ids.h"

namespace {

// A writer's switch, as the user names it and is told of it.
struct Switch {
  WriterOption option;
  const char* word;
  uint32_t effect;
};

constexpr Switch kSwitches[] = {
    {WriterOption::kRemoveCommas, "no-commas", kTextEffectNoCommas},
    {WriterOption::kMarkViaPoints, "via-points", kTextEffectViaPoints},
    {WriterOption::kExplorist, "explorist", kTextEffectExplorist},
    {WriterOption::kHandOff, "hand-off", kTextEffectHandOff},
};

const Switch* SwitchOf(const CItineraryFormat& row) {
  const auto* const found =
      std::find_if(std::begin(kSwitches), std::end(kSwitches),
                   [&row](const Switch& one) { return one.option == row.facts.option; });
  return found == std::end(kSwitches) ? nullptr : found;
}

}  // namespace

bool TakeWriterOption(const Options& options, const CItineraryFormat& row, uint32_t& option,
                      std::string& error) {
  option = options.split;
  if (options.split != 0 && row.facts.option == WriterOption::kNone) {
    error = FormatText(kTextOptionWithoutEffect, "--split");
    return false;
  }
  if (options.option.empty()) return true;
  const Switch* const known = SwitchOf(row);
  if (known && options.option == known->word) {
    option = std::max(option, 1U);
    return true;
  }
  const std::string key = NarrowForFile(row.extension);
  error = known ? FormatText(kTextNoSuchOption, key, options.option, known->word)
                : FormatText(kTextNoOption, key);
  return false;
}

std::string DescribeSwitch(const Options& options, const CItineraryFormat& row) {
  const Switch* const known = SwitchOf(row);
  if (!known || options.split == 0) return {};
  return FormatText(kTextSwitchByNumber, options.split, LoadTextUtf8(known->effect), known->word);
}
