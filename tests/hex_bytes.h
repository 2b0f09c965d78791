#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// The bytes that hexadecimal digits stand for: "4D 73" is "Ms". Blanks are passed over.
inline std::string Hex(std::string_view digits) {
  std::string bytes;
  bool isSecond = false;
  for (const char digit : digits) {
    if (digit == ' ') continue;
    const int value = digit <= '9' ? digit - '0' : (digit | 0x20) - 'a' + 10;
    if (isSecond) {
      bytes.back() = static_cast<char>(bytes.back() * 16 + value);
    } else {
      bytes.push_back(static_cast<char>(value));
    }
    isSecond = !isSecond;
  }
  return bytes;
}

/// `count` times the same byte.
inline std::string Repeat(size_t count, unsigned char byte) {
  return std::string(count, static_cast<char>(byte));
}
