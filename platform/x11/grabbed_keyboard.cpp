#include "platform/x11/grabbed_keyboard.h"

#include <xcb/xcb.h>

#include <QCoreApplication>

namespace horalo {

GrabbedKeyboard::GrabbedKeyboard() {
  qApp->installNativeEventFilter(this);
}

GrabbedKeyboard::~GrabbedKeyboard() {
  qApp->removeNativeEventFilter(this);
}

bool GrabbedKeyboard::nativeEventFilter(const QByteArray&, void* message, qintptr*) {
  const auto& event = *static_cast<const xcb_generic_event_t*>(message);
  if ((event.response_type & 0x7f) != XCB_FOCUS_OUT) return false;
  return reinterpret_cast<const xcb_focus_out_event_t&>(event).mode == XCB_NOTIFY_MODE_GRAB;
}

}  // namespace horalo
