#include "platform/x11/regained_focus.h"

#include <xcb/xcb.h>

#include <QApplication>
#include <QPointer>
#include <QWidget>
#include <QWindow>

namespace horalo {
namespace {

bool isFocusIn(const xcb_generic_event_t& event) {
  if ((event.response_type & 0x7f) != XCB_FOCUS_IN) return false;
  const auto& focus = reinterpret_cast<const xcb_focus_in_event_t&>(event);
  const bool byGrab = focus.mode == XCB_NOTIFY_MODE_GRAB || focus.mode == XCB_NOTIFY_MODE_UNGRAB;
  return !byGrab && focus.detail != XCB_NOTIFY_DETAIL_POINTER;
}

void activateIfForgotten(QWidget* window) {
  if (window == nullptr || !window->isVisible() || window->isActiveWindow()) return;
  if (QGuiApplication::focusWindow() == window->windowHandle()) {
    QApplication::setActiveWindow(window);
  }
}

}  // namespace

RegainedFocus::RegainedFocus() {
  qApp->installNativeEventFilter(this);
}

RegainedFocus::~RegainedFocus() {
  qApp->removeNativeEventFilter(this);
}

bool RegainedFocus::nativeEventFilter(const QByteArray&, void* message, qintptr*) {
  const auto& event = *static_cast<const xcb_generic_event_t*>(message);
  if (!isFocusIn(event)) return false;
  const auto& focus = reinterpret_cast<const xcb_focus_in_event_t&>(event);
  // Qt deals with the event after this.
  const QPointer<QWidget> window = QWidget::find(focus.event);
  QMetaObject::invokeMethod(
      qApp, [window] { activateIfForgotten(window); }, Qt::QueuedConnection);
  return false;
}

}  // namespace horalo
