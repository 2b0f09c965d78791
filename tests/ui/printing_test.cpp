#include "ui/printing.h"

#include <QImage>
#include <QTextDocument>

#include <gtest/gtest.h>

#include "base/localized_text.h"
#include "model/point_list.h"
#include "settings/settings.h"
#include "tests/settings_home.h"

namespace {

TEST(PrintingTest, HoldsNameAndStopsAsPlainText) {
  const SettingsHome home;
  SetLanguage(Language::kEnglish);
  CSettings settings;
  CGpsRoute list;
  list.name = "<b>Tour</b>";
  CGpsPoint point;
  point.name = "A & B";
  list.InsertAt(0, point);
  const auto document = MakePrintDocument(list, settings, QImage());
  const QString text = document->toPlainText();
  EXPECT_TRUE(text.contains(QStringLiteral("<b>Tour</b>")));
  EXPECT_TRUE(text.contains(QStringLiteral("A & B")));
}

}  // namespace
