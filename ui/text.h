#pragma once

#include <QString>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/format_text.h"
#include "base/wide_string.h"

// Between the texts of the program and those of Qt.

inline QString FromUtf8(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}
inline std::string ToUtf8(const QString& text) { return text.toStdString(); }
inline QString FromWide(const WideString& text) { return QString::fromStdU16String(text); }
inline WideString ToWide(const QString& text) { return text.toStdU16String(); }

/// The path as Qt spells it, and back. Bytes that are no text survive both ways.
QString FromPath(const WideString& path);
WideString ToPath(const QString& path);

/// The name of the program, as captions show it.
QString ProductTitle();

/// The text of a number in the current language.
QString Text(uint32_t textId);
/// The same without the mark of its mnemonic.
QString PlainText(uint32_t textId);
/// The same with its placeholders filled.
template <typename... Args>
QString FilledText(uint32_t textId, const Args&... args) {
  return FromUtf8(FormatText(textId, args...));
}
