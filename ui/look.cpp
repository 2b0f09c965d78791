#include "ui/look.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QStyleFactory>

namespace {

constexpr int kLongestAnswer = 150;  // milliseconds that the desktop may take to tell its look
constexpr uint32_t kPrefersDark = 1;

constexpr LookColors kLightColors{
    .accent = QColor(0x0a, 0x66, 0x6b),
    .onAccent = QColor(0xff, 0xff, 0xff),
    .ground = QColor(0xf3, 0xf6, 0xf7),
    .panel = QColor(0xff, 0xff, 0xff),
    .alternate = QColor(0xf7, 0xf9, 0xfa),
    .button = QColor(0xfb, 0xfc, 0xfc),
    .edge = QColor(0xd5, 0xdc, 0xdf),
    .text = QColor(0x1c, 0x2a, 0x2f),
    .muted = QColor(0x52, 0x62, 0x68),
    .warning = QColor(0xfd, 0xf1, 0xd8),
    .dangling = QColor(0xb0, 0x3a, 0x2e),
};

constexpr LookColors kDarkColors{
    .accent = QColor(0x5c, 0xcd, 0xd0),
    .onAccent = QColor(0x06, 0x29, 0x2b),
    .ground = QColor(0x1b, 0x25, 0x29),
    .panel = QColor(0x14, 0x1c, 0x20),
    .alternate = QColor(0x18, 0x22, 0x26),
    .button = QColor(0x29, 0x36, 0x3b),
    .edge = QColor(0x37, 0x44, 0x4a),
    .text = QColor(0xe8, 0xee, 0xf0),
    .muted = QColor(0xa4, 0xb3, 0xb9),
    .warning = QColor(0x45, 0x3a, 0x1e),
    .dangling = QColor(0xf2, 0x8b, 0x82),
};

QPalette PaletteOf(const LookColors& colors) {
  QPalette palette;
  palette.setColor(QPalette::Window, colors.ground);
  palette.setColor(QPalette::WindowText, colors.text);
  palette.setColor(QPalette::Base, colors.panel);
  palette.setColor(QPalette::AlternateBase, colors.alternate);
  palette.setColor(QPalette::Text, colors.text);
  palette.setColor(QPalette::PlaceholderText, colors.muted);
  palette.setColor(QPalette::Button, colors.button);
  palette.setColor(QPalette::ButtonText, colors.text);
  palette.setColor(QPalette::BrightText, colors.dangling);
  palette.setColor(QPalette::Light, colors.panel);
  palette.setColor(QPalette::Midlight, colors.alternate);
  palette.setColor(QPalette::Mid, colors.edge);
  palette.setColor(QPalette::Dark, colors.edge.darker(120));
  palette.setColor(QPalette::Shadow, colors.edge.darker(160));
  palette.setColor(QPalette::ToolTipBase, colors.panel);
  palette.setColor(QPalette::ToolTipText, colors.text);
  palette.setColor(QPalette::Highlight, colors.accent);
  palette.setColor(QPalette::HighlightedText, colors.onAccent);
  palette.setColor(QPalette::Link, colors.accent);
  palette.setColor(QPalette::LinkVisited, colors.accent);
  QColor faint = colors.muted;
  faint.setAlphaF(0.6F);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
    palette.setColor(QPalette::Disabled, role, faint);
  palette.setColor(QPalette::Disabled, QPalette::Highlight, colors.edge);
  return palette;
}

// Frames of one line, and rows with room: the platform's own differ too much from the page.
QString StyleSheetOf(const LookColors& colors) {
  QString sheet = QStringLiteral(R"(
QMainWindow::separator { width: 0; height: 0; }
QToolBar { border: 0; border-bottom: 1px solid @edge; padding: 4px 8px; spacing: 4px; }
QToolBar::separator { background: @edge; width: 1px; margin: 6px 4px; }
QToolButton { border: 1px solid transparent; border-radius: 4px; padding: 4px 6px; }
QToolButton[popupMode="1"] { padding-right: 18px; }
QToolButton:hover { background: @hover; }
QToolButton:pressed, QToolButton:checked { background: @hover; border-color: @accent; }
QToolButton:focus { border-color: @accent; }
QToolButton::menu-button { border: 0; width: 16px; }
QTableView { border: 1px solid @edge; border-radius: 4px; selection-background-color: @hover;
             selection-color: @text; outline: 0; }
QTableView:focus { border-color: @accent; }
QTreeView { border: 1px solid @edge; border-radius: 4px; outline: 0; }
QTreeView::item:selected { background: @hover; color: @text; }
QLineEdit { min-height: 20px; padding: 2px 6px; }
QPlainTextEdit { padding: 2px; }
QLineEdit, QPlainTextEdit { border: 1px solid @edge; border-radius: 4px; background: @panel;
                            selection-background-color: @accent; }
QLineEdit:focus, QPlainTextEdit:focus { border-color: @accent; }
QComboBox, QAbstractSpinBox { min-height: 20px; }
QPushButton { min-height: 22px; padding: 0 12px; }
QDialogButtonBox { dialogbuttonbox-buttons-have-icons: 0; }
QHeaderView::section { background: @ground; color: @muted; border: 0;
                       border-bottom: 1px solid @edge; padding: 4px 8px; }
QSplitter::handle { background: @edge; }
QStatusBar { border-top: 1px solid @edge; }
QStatusBar::item { border: 0; }
QLabel[role="hint"] { color: @muted; }
QFrame[role="bar"] { background: @warning; border: 0; border-bottom: 1px solid @edge; }
)");
  const QColor hover =
      QColor::fromRgbF(colors.ground.redF() * 0.85F + colors.accent.redF() * 0.15F,
                       colors.ground.greenF() * 0.85F + colors.accent.greenF() * 0.15F,
                       colors.ground.blueF() * 0.85F + colors.accent.blueF() * 0.15F);
  sheet.replace(QLatin1String("@edge"), colors.edge.name());
  sheet.replace(QLatin1String("@hover"), hover.name());
  sheet.replace(QLatin1String("@accent"), colors.accent.name());
  sheet.replace(QLatin1String("@ground"), colors.ground.name());
  sheet.replace(QLatin1String("@text"), colors.text.name());
  sheet.replace(QLatin1String("@panel"), colors.panel.name());
  sheet.replace(QLatin1String("@muted"), colors.muted.name());
  sheet.replace(QLatin1String("@warning"), colors.warning.name());
  return sheet;
}

}  // namespace

const LookColors& ColorsOf(Look look) { return look == Look::kDark ? kDarkColors : kLightColors; }

// The application's palette is one of the two.
Look CurrentLook() {
  const bool isDark = QApplication::palette().color(QPalette::Window) == kDarkColors.ground;
  return isDark ? Look::kDark : Look::kLight;
}

const LookColors& CurrentColors() { return ColorsOf(CurrentLook()); }

Look DesktopLook() {
  const QByteArray told = qgetenv("CORVANE_LOOK");
  if (!told.isEmpty()) return told == "dark" ? Look::kDark : Look::kLight;
  QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected()) return Look::kLight;
  QDBusMessage question = QDBusMessage::createMethodCall(
      QStringLiteral("org.freedesktop.portal.Desktop"),
      QStringLiteral("/org/freedesktop/portal/desktop"),
      QStringLiteral("org.freedesktop.portal.Settings"), QStringLiteral("Read"));
  question << QStringLiteral("org.freedesktop.appearance") << QStringLiteral("color-scheme");
  question.setAutoStartService(false);
  const QDBusMessage answer = bus.call(question, QDBus::Block, kLongestAnswer);
  if (answer.type() != QDBusMessage::ReplyMessage || answer.arguments().isEmpty())
    return Look::kLight;
  QVariant value = answer.arguments().constFirst();
  while (value.canConvert<QDBusVariant>()) value = value.value<QDBusVariant>().variant();
  return value.toUInt() == kPrefersDark ? Look::kDark : Look::kLight;
}

void PrepareLook(Look look) {
  constexpr char kFlags[] = "QTWEBENGINE_CHROMIUM_FLAGS";
  const QByteArray scheme = look == Look::kDark ? "0" : "1";
  qputenv(kFlags, qgetenv(kFlags) + " --blink-settings=preferredColorScheme=" + scheme);
}

void ApplyLook(QApplication& application, Look look) {
  application.setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
  application.setPalette(PaletteOf(ColorsOf(look)));
  application.setStyleSheet(StyleSheetOf(ColorsOf(look)));
}
