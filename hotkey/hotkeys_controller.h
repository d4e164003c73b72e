#pragma once

#include <QUuid>
#include <cstdint>
#include <map>
#include <memory>

#include "hotkey/hot_key_event.h"
#include "hotkey/hotkey_backend.h"

namespace horalo {

class HotKey;

// One registration: which shortcut, under which number, and whether the backend took it.
struct HotKeyBox {
  QUuid identifier;
  std::weak_ptr<HotKey> hotKey;
  std::uint32_t carbonHotKeyID = 0;
  // The backend had the shortcut when asked. Where not, nothing is reported, and the backend may
  // still get it later, under the same number.
  bool isRegistered = false;
};

// The registry of shortcuts: gives each registration a number and brings the backend's events to
// the handlers of the hot key that has it.
class HotKeysController {
 public:
  // `backend` must outlive this object. `lastNumber` is the last one that was given out.
  explicit HotKeysController(HotKeyBackend& backend, std::uint32_t lastNumber = 0);
  ~HotKeysController();
  HotKeysController(const HotKeysController&) = delete;
  HotKeysController& operator=(const HotKeysController&) = delete;

  // Registers under a new number, never one that was used before; past 4294967295 the program
  // stops. Does nothing for a hot key that is registered. A shortcut that cannot be had is kept
  // all the same, and no error is told.
  void registerHotKey(const std::shared_ptr<HotKey>& hotKey);
  // Does nothing where no registration has this identifier.
  void unregisterHotKey(const QUuid& identifier);

  // Runs the handler that an event asks for. eventNotHandledErr where there is no event, none of
  // ours, no hot key or no handler for it, or the hot key is paused; an event that could not be
  // read gives its own status back.
  OSStatus handleEvent(const HotKeyEvent* event) const;

  const std::map<std::uint32_t, HotKeyBox>& hotKeys() const { return hotKeys_; }

 private:
  HotKeyBackend& backend_;
  std::map<std::uint32_t, HotKeyBox> hotKeys_;  // by number
  std::uint32_t lastNumber_;
};

}  // namespace horalo
