#pragma once

#include <cctype>
#include <cstddef>
#include <locale>
#include <memory>
#include <sstream>
#include <string>

#include "markup/json.h"

// The scanner in its plain form: every level works on a copy of the rest of the text and strings
// are unescaped in place, step for step, which takes quadratic time and deep recursion. The real
// one must give the same tree and the same code for every text.

inline size_t PlainScanValue(CJsonValue& value, const std::string& text);

inline char PlainHexByte(const std::string& digits) {
  size_t length = 0;
  while (length < digits.size() && std::isxdigit(static_cast<unsigned char>(digits[length])))
    ++length;
  return length == 0 ? '\0' : static_cast<char>(std::stoul(digits.substr(0, length), nullptr, 16));
}

inline void PlainUnescape(std::string& text) {
  for (size_t p = text.find('\\'); p != std::string::npos; p = text.find('\\', p + 1)) {
    if (p + 1 == text.size()) throw CJsonException(6, "");
    text.erase(p, 1);
    const std::string letters = "bfnrt";
    const std::string meanings = "\b\f\n\r\t";
    const size_t found = letters.find(text[p]);
    if (found != std::string::npos) {
      text[p] = meanings[found];
    } else if (text[p] == 'u') {
      text[p] = p + 3 < text.size() ? PlainHexByte(text.substr(p + 3, 2)) : '\0';
      text.erase(p + 1, 4);
    } else if (text[p] == 'x') {
      text[p] = PlainHexByte(text.substr(p + 1, 2));
      text.erase(p + 1, 2);
    }
  }
}

inline size_t PlainScanObject(CJsonValue& object, const std::string& text) {
  size_t position = text[0] == '{' ? 1 : 0;
  size_t quote = std::string::npos;
  size_t bareStart = position;
  std::string key;
  bool hasKey = false;
  while (position < text.size()) {
    position = text.find_first_of("\"{[,:}", position);
    if (position == std::string::npos) throw CJsonException(2, "");
    const bool isOpen = quote != std::string::npos;
    const char delimiter = text[position];
    bool isValue = false;
    if (delimiter == '"') {
      if (!isOpen) {
        quote = position + 1;
      } else if (text[position - 1] != '\\') {
        key = text.substr(quote, position - quote);
        hasKey = true;
        quote = std::string::npos;
      }
      ++position;
    } else if (delimiter == ',') {
      ++position;
      bareStart = position;
    } else if (delimiter == ':') {
      if (!isOpen && !hasKey) {
        key = text.substr(bareStart, position - bareStart);
        while (!key.empty() && key.front() == ' ') key.erase(0, 1);
        while (!key.empty() && key.back() == ' ') key.pop_back();
        hasKey = true;
      }
      isValue = !isOpen;
      ++position;
    } else if (delimiter == '}') {
      ++position;
      if (!isOpen) return position;
    } else {
      isValue = !isOpen;
      if (isOpen) ++position;
    }
    if (isValue) {
      auto value = std::make_unique<CJsonValue>();
      value->key = key;
      position += PlainScanValue(*value, text.substr(position));
      if (value->type != kJsonUndefined) {
        object.object.Append(std::move(value));
        key.clear();
        hasKey = false;
      }
    }
  }
  return position;
}

inline size_t PlainScanArray(CJsonValue& array, const std::string& text) {
  size_t position = text[0] == '[' ? 1 : 0;
  while (position < text.size()) {
    auto value = std::make_unique<CJsonValue>();
    position += PlainScanValue(*value, text.substr(position));
    if (value->type != kJsonUndefined) array.array.Append(std::move(value));
    position = text.find_first_of(",]", position);
    if (position == std::string::npos) throw CJsonException(4, "");
    ++position;
    if (text[position - 1] == ']') return position;
  }
  return position;
}

inline void PlainSetLiteral(CJsonValue& value, const std::string& literal) {
  if (literal.empty()) return;
  if (literal.find("true") != std::string::npos) {
    value.type = kJsonBool;
    value.flag = true;
  } else if (literal.find("false") != std::string::npos) {
    value.type = kJsonBool;
    value.flag = false;
  } else if (literal.find("null") != std::string::npos) {
    value.type = kJsonNull;
  } else {
    std::istringstream stream(literal);
    stream.imbue(std::locale::classic());
    if (stream >> value.number) value.type = kJsonNumber;
  }
}

inline size_t PlainScanValue(CJsonValue& value, const std::string& text) {
  size_t position = 0;
  size_t start = std::string::npos;
  for (;;) {
    position = text.find_first_of("{[\",]}", position);
    if (position == std::string::npos) throw CJsonException(3, "");
    const bool isOpen = start != std::string::npos;
    if (text[position] == '"') {
      if (!isOpen) {
        start = position + 1;
      } else {
        size_t backslashes = 0;
        while (text[position - 1 - backslashes] == '\\') ++backslashes;
        if (backslashes % 2 == 0) {
          value.type = kJsonString;
          value.text = text.substr(start, position - start);
          PlainUnescape(value.text);
          return position + 1;
        }
      }
    } else if (!isOpen) {
      if (text[position] == '[') {
        value.type = kJsonArray;
        return position + PlainScanArray(value, text.substr(position));
      }
      if (text[position] == '{') {
        value.type = kJsonObject;
        return position + PlainScanObject(value, text.substr(position));
      }
      PlainSetLiteral(value, text.substr(0, position));
      return position;
    }
    ++position;
  }
}

/// Code of the failure, or 0.
inline int PlainParse(CJsonValue& document, const std::string& text) {
  try {
    PlainScanValue(document, text);
  } catch (const CJsonException& failure) {
    return failure.code;
  }
  return 0;
}
