#include "platform/qt/qt_window_backend.h"

#include <QCursor>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QRegion>
#include <QScreen>
#include <QTransform>
#include <QWidget>

#include "platform/qt/screen_coordinates.h"

namespace horalo {
namespace {

int primaryBottom() {
  const QScreen* primary = QGuiApplication::primaryScreen();
  return primary == nullptr ? 0 : primary->geometry().y() + primary->geometry().height();
}

const QScreen* screenWithPointer() {
  const QScreen* screen = QGuiApplication::screenAt(QCursor::pos());
  return screen == nullptr ? QGuiApplication::primaryScreen() : screen;
}

qint64 areaOf(const QRect& rect) {
  return rect.isEmpty() ? 0 : qint64{rect.width()} * rect.height();
}

bool isFrameless(const QWidget& window) {
  return window.windowFlags().testFlag(Qt::FramelessWindowHint);
}

// Some window managers put every window into a frame, and Qt may measure that of one without a
// frame while it is still being made: it then takes the window for one pixel high until its next
// show.
QRect frameOf(const QWidget& window) {
  return isFrameless(window) ? window.geometry() : window.frameGeometry();
}

Qt::WindowFlags flagsOf(WindowRole role) {
  constexpr Qt::WindowFlags floating =
      Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint;
  constexpr Qt::WindowFlags aside = floating | Qt::WindowDoesNotAcceptFocus;
  switch (role) {
    case WindowRole::panel:
      return floating;
    case WindowRole::toast:
      return aside;
    case WindowRole::guides:
      return aside | Qt::WindowTransparentForInput;
    case WindowRole::window:
      break;
  }
  return Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
         Qt::WindowCloseButtonHint;
}

}  // namespace

void QtWindowBackend::configure(QWidget& window, WindowRole role) {
  window.setWindowFlags(flagsOf(role));
  window.setAttribute(Qt::WA_TranslucentBackground, role != WindowRole::window);
  window.setAttribute(Qt::WA_ShowWithoutActivating,
                      role == WindowRole::toast || role == WindowRole::guides);
}

void QtWindowBackend::setFrameOrigin(QWidget& window, Point origin) {
  const QPoint corner = toQt(origin, frameOf(window).height(), primaryBottom());
  if (isFrameless(window)) {
    window.setGeometry({corner, window.size()});
  } else {
    window.move(corner);
  }
}

Rect QtWindowBackend::frame(const QWidget& window) const {
  return fromQt(frameOf(window), primaryBottom());
}

void QtWindowBackend::orderFront(QWidget& window, std::uint32_t) {
  window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
  window.show();
  window.raise();
  if (takesKeyboard(window)) window.activateWindow();
}

// The library cuts in device-independent pixels, so that the edge is coarser than the screen.
void QtWindowBackend::setShape(QWidget& window, const QRegion& pixels) {
  const double ratio = window.devicePixelRatioF();
  window.setMask(QTransform::fromScale(1 / ratio, 1 / ratio).map(pixels));
}

std::optional<ScreenFrames> QtWindowBackend::mainScreen() const {
  const QScreen* screen = screenWithPointer();
  if (screen == nullptr) return std::nullopt;
  return framesOf(*screen);
}

std::optional<ScreenFrames> QtWindowBackend::screenOf(const QWidget& window) const {
  const QScreen* best = nullptr;
  qint64 most = 0;
  for (const QScreen* screen : QGuiApplication::screens()) {
    const qint64 shown = areaOf(screen->geometry().intersected(frameOf(window)));
    if (shown <= most) continue;
    most = shown;
    best = screen;
  }
  return best == nullptr ? mainScreen() : framesOf(*best);
}

Point QtWindowBackend::pointerLocation(const QMouseEvent& event) const {
  return fromQt(event.globalPosition().toPoint(), primaryBottom());
}

bool QtWindowBackend::takesKeyboard(const QWidget& window) {
  return !window.windowFlags().testFlag(Qt::WindowDoesNotAcceptFocus);
}

QRect QtWindowBackend::visibleArea(const QScreen& screen) const {
  return screen.availableGeometry();
}

ScreenFrames QtWindowBackend::framesOf(const QScreen& screen) const {
  return {fromQt(screen.geometry(), primaryBottom()), fromQt(visibleArea(screen), primaryBottom())};
}

}  // namespace horalo
