#pragma once

#include <xcb/xcb.h>

#include <QRegion>
#include <QSize>
#include <vector>

#include "platform/x11/struts.h"

namespace horalo {

// What desktop and windows tell each other through X properties (EWMH, and KDE's blur), on the
// connection that Qt's windows live on, so that requests keep their order.
class DesktopProperties {
 public:
  // Needs a QGuiApplication on X11; does nothing without.
  DesktopProperties();

  // Before each show: the window is on every workspace, and in no task bar or pager. Qt keeps
  // these states and adds its own.
  void putEverywhere(xcb_window_t window);

  // Asks for the keyboard as a pager does, which window managers grant at all their levels of
  // focus-stealing prevention. `time` is that of the key press, 0 where there was none.
  void activate(xcb_window_t window, xcb_timestamp_t time);

  // The struts of all windows that the window manager knows, in pixels.
  std::vector<Strut> struts();
  QSize xScreenSize() const;

  // Cuts the window to a region; an empty one gives it back its rectangle.
  void setShape(xcb_window_t window, const QRegion& pixels);

  // Whether a compositor offers to blur what lies behind windows.
  bool offersBlur();
  void setBlurRegion(xcb_window_t window, const QRegion& pixels);

 private:
  xcb_connection_t* xcb_ = nullptr;
  const xcb_screen_t* screen_ = nullptr;
  xcb_atom_t activeWindow_ = XCB_ATOM_NONE;
  xcb_atom_t clientList_ = XCB_ATOM_NONE;
  xcb_atom_t desktop_ = XCB_ATOM_NONE;
  xcb_atom_t state_ = XCB_ATOM_NONE;
  xcb_atom_t sticky_ = XCB_ATOM_NONE;
  xcb_atom_t skipTaskbar_ = XCB_ATOM_NONE;
  xcb_atom_t skipPager_ = XCB_ATOM_NONE;
  xcb_atom_t strut_ = XCB_ATOM_NONE;
  xcb_atom_t strutPartial_ = XCB_ATOM_NONE;
  xcb_atom_t blurRegion_ = XCB_ATOM_NONE;
};

}  // namespace horalo
