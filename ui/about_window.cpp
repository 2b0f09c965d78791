#include "ui/about_window.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "base/product.h"
#include "base/text_ids.h"
#include "ui/icons.h"
#include "ui/look.h"
#include "ui/text.h"

namespace {

constexpr int kPicture = 64;
constexpr int kWidth = 460;

// Whose data and libraries these are stands on their own terms, in every language.
constexpr char kCredits[] =
    "Natural Earth (public domain)\n"
    "GeoNames (CC BY 4.0), geonames.org\n"
    "© OpenStreetMap contributors (ODbL)\n"
    "Qt (LGPL), Chromium (BSD)\n"
    "Leaflet (BSD)\n"
    "libcurl, SQLite, Expat, libgsf, libzip, CivetWeb, {fmt}\n"
    "Routino (AGPL)";

}  // namespace

void ShowAboutWindow(QWidget* parent) {
  QDialog dialog(parent);
  dialog.setWindowTitle(
      PlainText(kTextAbout).remove(QStringLiteral("...")).remove(QChar(0x2026)).trimmed());
  auto* const picture = new QLabel;
  picture->setPixmap(ProductIcon().pixmap(kPicture));
  auto* const name = new QLabel(FromUtf8(kProductName));
  QFont large = name->font();
  large.setPointSizeF(large.pointSizeF() * 1.5);
  large.setBold(true);
  name->setFont(large);
  auto* const purpose = new QLabel(Text(kTextPurpose));
  purpose->setWordWrap(true);
  auto* const site = new QLabel(FromUtf8(kProductSite));
  site->setTextInteractionFlags(Qt::TextSelectableByMouse);
  site->setProperty("role", QStringLiteral("hint"));
  auto* const label = new QLabel(Text(kTextCredits));
  auto* const credits = new QPlainTextEdit(QString::fromUtf8(kCredits));
  credits->setReadOnly(true);
  credits->setTabChangesFocus(true);
  credits->setAccessibleName(Text(kTextCredits));
  auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Close);
  buttons->button(QDialogButtonBox::Close)->setText(Text(kTextOnMapClose));
  QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);

  auto* const heading = new QHBoxLayout;
  heading->setSpacing(kWideMargin);
  heading->addWidget(picture);
  auto* const words = new QVBoxLayout;
  words->addWidget(name);
  words->addWidget(site);
  heading->addLayout(words, 1);
  auto* const layout = new QVBoxLayout(&dialog);
  layout->setContentsMargins(kWideMargin, kWideMargin, kWideMargin, kWideMargin);
  layout->setSpacing(kWideMargin);
  layout->addLayout(heading);
  layout->addWidget(purpose);
  layout->addWidget(label);
  layout->addWidget(credits);
  layout->addWidget(buttons);
  dialog.setMinimumWidth(kWidth);
  dialog.exec();
}
