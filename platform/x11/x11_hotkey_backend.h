#pragma once

#include <xcb/xcb.h>

#include <QTimer>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "hotkey/hotkey_backend.h"
#include "platform/x11/x_connection.h"
#include "platform/x11/x_keyboard.h"
#include "platform/x11/x_modifiers.h"

namespace horalo {

// In seconds.
struct X11HotKeyWaits {
  double retry = 30;    // until a shortcut that was taken is asked for again
  double typing = 0.4;  // at most, until what is typed after a press may go where it goes
};

// Global shortcuts by grabbing keys from the X server: by the key's position, so that they stay
// where they are in every layout, and with every set of locks. A held key fires once.
//
// The press freezes the keyboard: what is typed next waits in the server until the window that the
// shortcut opens has the keyboard, not for long, and goes there. Then the grab is
// ended; each repeat of the key begins it anew and is told apart from a press by listening for
// releases while the key is down.
//
// A shortcut that another program holds is asked for again when the keyboard map changes, and every
// so often: the X server does not tell when one becomes free.
class X11HotKeyBackend final : public HotKeyBackend {
 public:
  explicit X11HotKeyBackend(const X11HotKeyWaits& waits = {});
  ~X11HotKeyBackend() override;

  void setHandler(Handler handler) override { handler_ = std::move(handler); }
  // True while muted too where the shortcut could be had a moment ago.
  bool registerHotKey(std::uint32_t number, std::uint32_t carbonKeyCode,
                      std::uint32_t carbonModifiers) override;
  void unregisterHotKey(std::uint32_t number) override;
  void releaseTyping() override;
  void setMuted(bool muted) override;
  HotKeyBackendStatus status() const override;
  std::uint32_t eventTime() const override { return eventTime_; }

 private:
  struct Registration {
    std::uint32_t number = 0;
    std::uint32_t carbonModifiers = 0;
    std::vector<xcb_keycode_t> codes;  // the keys of its position; none, one or two
    bool isTaken = false;              // another program holds it
    bool isGrabbed = false;
    xcb_keycode_t heldKey = 0;  // the key that is down since the last press; 0: none

    bool owns(xcb_keycode_t code) const;
    bool sharesKeysWith(const Registration& other) const;
  };

  bool isConnected() const { return connection_.isAlive() && keyboard_.isUsable(); }
  void grab(Registration& registration);
  void ungrab(Registration& registration);
  void ungrabKeys(const Registration& registration);
  bool tryGrabKeys(const Registration& registration);
  void grabAll();
  void ungrabAll();
  void noteKeysThatAreDown(Registration& registration);
  void watchReleases();

  void handleEvent(const xcb_generic_event_t& event);
  void keyWentDown(const xcb_key_press_event_t& press);
  void askWhetherItIsUp(const XKeyboard::Release& release);
  void keyWentUp(const XKeyboard::Release& release);
  void keyboardMapChanged();
  void tryAgain();

  void tell(std::uint32_t number, HotKeyEventKind kind, xcb_timestamp_t time);

  XConnection connection_;
  XKeyboard keyboard_;
  XModifiers modifiers_;
  Handler handler_;
  std::vector<Registration> registrations_;  // in the order in which they were asked for
  bool isMuted_ = false;
  std::uint64_t presses_ = 0;  // so many until now
  std::uint32_t eventTime_ = 0;
  xcb_keycode_t frozenBy_ = 0;  // the key whose press holds the keyboard; 0: none
  QTimer thaw_;
  QTimer mapHasSettled_;
  QTimer retry_;
};

}  // namespace horalo
