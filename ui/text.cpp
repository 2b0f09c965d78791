#include "ui/text.h"

#include <QFile>

#include "base/localized_text.h"
#include "platform/path_text.h"

QString FromPath(const WideString& path) {
  const std::string bytes = PathBytes(path);
  return QFile::decodeName(QByteArray(bytes.data(), static_cast<qsizetype>(bytes.size())));
}

WideString ToPath(const QString& path) {
  const QByteArray bytes = QFile::encodeName(path);
  return WidePath({bytes.data(), static_cast<size_t>(bytes.size())});
}

QString ProductTitle() { return QStringLiteral("Corvane Map"); }

QString Text(uint32_t textId) { return FromUtf8(LoadTextUtf8(textId)); }

QString PlainText(uint32_t textId) {
  QString text = Text(textId);
  return text.remove(QLatin1Char('&'));
}
