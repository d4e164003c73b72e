#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "hotkey/carbon_modifiers.h"

namespace horalo {

// What a desktop's global-shortcut service tells.
enum class HotKeyEventKind { pressed, released };

struct HotKeyBackendStatus {
  std::string backend;  // "x11", "kglobalaccel", "portal", "gnome" or "none"
  bool active = false;  // the shortcut that was asked for last really fires
  std::string reason;   // why not; empty where it does, or where none was asked for
};

// A desktop's way of delivering key presses to a program that does not have the keyboard. It grabs
// and reports; numbers, handlers and pausing are the registry's (HotKeysController).
class HotKeyBackend {
 public:
  using Handler = std::function<void(std::uint32_t number, HotKeyEventKind kind)>;

  virtual ~HotKeyBackend() = default;

  // Where presses and releases go; set once, before the first registration.
  virtual void setHandler(Handler handler) = 0;

  // Asks for a shortcut: a virtual key code (a position on the keyboard) and bits of carbon::.
  // False where it cannot be had now; the backend may keep trying, under the same number, until
  // unregisterHotKey. `number` is not in use.
  virtual bool registerHotKey(std::uint32_t number, std::uint32_t carbonKeyCode,
                              std::uint32_t carbonModifiers) = 0;
  virtual void unregisterHotKey(std::uint32_t number) = 0;

  // Where a desktop lets the program hold back what is typed after the shortcut: lets it go now, to
  // whatever window has the keyboard. To be called when the window that the shortcut opened has it;
  // the backend does not wait for long. Harmless at any other time.
  virtual void releaseTyping() {}

  // While muted nothing is reported and the keys reach the program that has the keyboard, as while
  // a new shortcut is recorded. Registrations stay.
  virtual void setMuted(bool muted) = 0;

  virtual HotKeyBackendStatus status() const = 0;

  // The desktop's time stamp of the press that is being reported, for the request to activate a
  // window; 0 where there is none.
  virtual std::uint32_t eventTime() const = 0;
};

}  // namespace horalo
