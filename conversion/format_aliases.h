#pragma once

#include <span>
#include <string_view>

/// A name under which people look for a format: of a device, a program or a maker.
struct FormatAlias {
  std::u16string_view name;
  std::u16string_view writes;  ///< the key of what that device or program takes
  std::u16string_view reads;   ///< the key of what it writes itself
};

/// All of them, in the order of their names.
std::span<const FormatAlias> FormatAliases();

/// The key that a name stands for, or what was given when it is no such name. Letters may be large
/// or small.
std::u16string_view KeyForWriting(std::u16string_view name);
std::u16string_view KeyForReading(std::u16string_view name);
