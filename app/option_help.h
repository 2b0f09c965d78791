#pragma once

#include <cstdint>
#include <span>
#include <string_view>

/// A line of the help: an option, as it is typed, and the text that explains it.
struct OptionHelp {
  std::string_view option;
  uint32_t textId;
};
