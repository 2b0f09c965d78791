#pragma once

#include <cstddef>

/// Asks for the memory of `object` ahead of its use. Only a hint: no effect where the compiler
/// offers none.
template <typename Object>
void Prefetch(const Object* object) {
#if defined(__GNUC__)
  const auto* const bytes = reinterpret_cast<const char*>(object);
  for (size_t offset = 0; offset < sizeof(Object); offset += 64) __builtin_prefetch(bytes + offset);
#else
  static_cast<void>(object);
#endif
}
