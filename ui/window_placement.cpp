#include "ui/window_placement.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>
#include <cstring>

namespace {

// The record that window systems keep of a window: eleven 32-bit numbers, of which we use these.
enum Field : size_t { kLength = 0, kShow = 2, kLeft = 7, kTop = 8, kRight = 9, kBottom = 10 };
constexpr size_t kFieldCount = 11;
constexpr int32_t kShowNormal = 1;
constexpr int32_t kShowMaximized = 3;
constexpr int kSmallest = 200;

using Fields = std::array<int32_t, kFieldCount>;
static_assert(sizeof(Fields) == sizeof(WindowPlacement));

}  // namespace

WindowPlacement PlacementOf(const QWidget& window) {
  const QRect frame = window.isMaximized() ? window.normalGeometry() : window.geometry();
  Fields fields{};
  fields[kLength] = static_cast<int32_t>(sizeof(WindowPlacement));
  fields[kShow] = window.isMaximized() ? kShowMaximized : kShowNormal;
  fields[kLeft] = frame.left();
  fields[kTop] = frame.top();
  fields[kRight] = frame.right() + 1;
  fields[kBottom] = frame.bottom() + 1;
  WindowPlacement placement;
  std::memcpy(placement.data(), fields.data(), placement.size());
  return placement;
}

void ApplyPlacement(QWidget& window, const WindowPlacement& placement) {
  Fields fields;
  std::memcpy(fields.data(), placement.data(), placement.size());
  // Far outside every screen: not one of ours.
  for (int32_t& field : fields) field = qBound(-100'000, field, 100'000);
  const QRect frame(QPoint(fields[kLeft], fields[kTop]),
                    QPoint(fields[kRight] - 1, fields[kBottom] - 1));
  const QScreen* const screen = QGuiApplication::screenAt(frame.center());
  if (!screen || frame.width() < kSmallest || frame.height() < kSmallest) {
    CentreWindow(window);
    return;
  }
  window.setGeometry(frame.intersected(screen->availableVirtualGeometry()));
  if (fields[kShow] == kShowMaximized) window.setWindowState(Qt::WindowMaximized);
}

void CentreWindow(QWidget& window) {
  const QScreen* const screen = window.screen();
  if (!screen) return;
  const QRect room = screen->availableGeometry();
  window.resize(window.size().boundedTo(room.size()));
  QRect frame(QPoint(), window.size());
  frame.moveCenter(room.center());
  window.move(frame.topLeft());
}
