#include "ui/printing.h"

#include <QAction>
#include <QImage>
#include <QLineEdit>
#include <QPrintDialog>
#include <QPrinter>
#include <QTextDocument>

#include <gtest/gtest.h>

#include "base/localized_text.h"
#include "model/point_list.h"
#include "settings/settings.h"
#include "tests/settings_home.h"
#include "tests/ui/window_fixture.h"

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

class PrintingWindowTest : public WindowTest {};

TEST_F(PrintingWindowTest, ListAndMapGoIntoAFile) {
  Open();
  ASSERT_TRUE(WaitUntil([this] { return Stops().planner != nullptr; }));
  OpenStops(40);
  const QString file = QString::fromStdString(m_folder.PathTo("tour.pdf"));
  WhenDialogOpens([&](QWidget& dialog) {
    auto& printing = dynamic_cast<QPrintDialog&>(dialog);
    EXPECT_EQ(printing.printer()->docName(), "Line");
    // Without a printer the dialog offers a file.
    auto* const name = printing.findChild<QLineEdit*>(QStringLiteral("filename"));
    ASSERT_NE(name, nullptr);
    name->setText(file);
    printing.accept();
  });
  QTest::qWait(5);
  m_window->Commands()[Command::kPrint].trigger();
  const std::string pdf = m_folder.Get("tour.pdf");
  EXPECT_TRUE(pdf.starts_with("%PDF-"));
  size_t pages = 0;
  for (size_t at = 0; (at = pdf.find("/Type /Page\n", at)) != std::string::npos; ++at) ++pages;
  EXPECT_GE(pages, 2u);
  EXPECT_NE(pdf.find("/Subtype /Image"), std::string::npos);
}

TEST_F(PrintingWindowTest, CancellingWritesNothing) {
  Open();
  OpenStops(2);
  bool hasOpened = false;
  WhenDialogOpens([&](QWidget& dialog) {
    hasOpened = true;
    dynamic_cast<QPrintDialog&>(dialog).reject();
  });
  QTest::qWait(5);
  m_window->Commands()[Command::kPrint].trigger();
  EXPECT_TRUE(hasOpened);
}

}  // namespace
