#include "ui/spoken_language.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

#include "base/text_ids.h"
#include "ui/text.h"

void SpeakProgramLanguage(QTranslator& translator) {
  const QString language = Text(kTextLanguage);
  QLocale::setDefault(QLocale(language));
  if (translator.load(QStringLiteral("qtbase_") + language,
                      QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
    QApplication::installTranslator(&translator);
}
