#include "ui/icons.h"

#include <QFile>
#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>

#include "ui/look.h"

namespace {

QPixmap Draw(const QByteArray& svg, const QColor& color, int size) {
  QByteArray colored = svg;
  colored.replace("currentColor", color.name().toLatin1());
  QSvgRenderer renderer(colored);
  QPixmap pixmap(size, size);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  renderer.render(&painter);
  return pixmap;
}

QByteArray ReadDrawing(const QString& name) {
  QFile file(QStringLiteral(":/icons/") + name + QStringLiteral(".svg"));
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

}  // namespace

QIcon LoadIcon(const QString& name) {
  const QByteArray svg = ReadDrawing(name);
  const LookColors& colors = CurrentColors();
  QColor faint = colors.muted;
  faint = QColor::fromRgbF((faint.redF() + colors.ground.redF()) / 2,
                           (faint.greenF() + colors.ground.greenF()) / 2,
                           (faint.blueF() + colors.ground.blueF()) / 2);
  QIcon icon;
  for (const int scale : {1, 2, 3}) {
    const int size = kIconSize * scale;
    icon.addPixmap(Draw(svg, colors.text, size), QIcon::Normal);
    icon.addPixmap(Draw(svg, faint, size), QIcon::Disabled);
  }
  return icon;
}

QIcon ProductIcon() {
  const QByteArray svg = ReadDrawing(QStringLiteral("corvanemap"));
  QIcon icon;
  for (const int size : {16, 32, 48, 64, 128, 256}) icon.addPixmap(Draw(svg, Qt::black, size));
  return icon;
}
