#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

/// A text and its number.
struct NumberedString {
  uint32_t id;
  std::string_view text;  ///< UTF-8
};

/// The texts of one language, rising by number.
struct StringTable {
  const NumberedString* begin;
  size_t count;

  /// The text of a number; empty when there is none.
  std::string_view Find(uint32_t id) const {
    const NumberedString* end = begin + count;
    const NumberedString* found = std::lower_bound(
        begin, end, id,
        [](const NumberedString& entry, uint32_t wanted) { return entry.id < wanted; });
    return found != end && found->id == id ? found->text : std::string_view();
  }
};

extern const StringTable kStringsEn;
extern const StringTable kStringsFr;
extern const StringTable kStringsDe;
extern const StringTable kStringsNl;
