#include "hotkey/hotkeys_controller.h"

#include <QtGlobal>
#include <algorithm>
#include <limits>

#include "hotkey/hot_key.h"

namespace horalo {

HotKeysController::HotKeysController(HotKeyBackend& backend, std::uint32_t lastNumber)
    : backend_(backend), lastNumber_(lastNumber) {
  backend_.setHandler([this](std::uint32_t number, HotKeyEventKind kind) {
    const bool pressed = kind == HotKeyEventKind::pressed;
    const HotKeyEvent event{.number = number,
                            .kind = pressed ? kEventHotKeyPressed : kEventHotKeyReleased};
    handleEvent(&event);
  });
}

HotKeysController::~HotKeysController() {
  backend_.setHandler({});
}

void HotKeysController::registerHotKey(const std::shared_ptr<HotKey>& hotKey) {
  const bool isKnown = std::any_of(hotKeys_.begin(), hotKeys_.end(), [&](const auto& entry) {
    return entry.second.identifier == hotKey->identifier();
  });
  if (isKnown) return;

  if (lastNumber_ == std::numeric_limits<std::uint32_t>::max()) {
    qFatal("The numbers of the shortcut registrations are used up");
  }
  const std::uint32_t number = ++lastNumber_;
  // In the table before the backend is asked: its events may come at once.
  hotKeys_[number] = {hotKey->identifier(), hotKey, number};
  const KeyCombo& combo = hotKey->keyCombo();
  const bool taken = backend_.registerHotKey(number, combo.carbonKeyCode, combo.carbonModifiers);
  const auto entry = hotKeys_.find(number);
  if (entry != hotKeys_.end()) entry->second.isRegistered = taken;
}

void HotKeysController::unregisterHotKey(const QUuid& identifier) {
  const auto entry = std::find_if(hotKeys_.begin(), hotKeys_.end(), [&](const auto& candidate) {
    return candidate.second.identifier == identifier;
  });
  if (entry == hotKeys_.end()) return;
  const std::uint32_t number = entry->first;
  hotKeys_.erase(entry);
  backend_.unregisterHotKey(number);
}

OSStatus HotKeysController::handleEvent(const HotKeyEvent* event) const {
  if (event == nullptr) return eventNotHandledErr;
  if (event->readStatus != noErr) return event->readStatus;
  if (event->signature != eventHotKeySignature) return eventNotHandledErr;

  const auto entry = hotKeys_.find(event->number);
  if (entry == hotKeys_.end()) return eventNotHandledErr;
  std::shared_ptr<HotKey> hotKey = entry->second.hotKey.lock();
  if (!hotKey) return eventNotHandledErr;

  HotKey::Action action;  // a copy, for it may replace itself
  if (event->kind == kEventHotKeyPressed) {
    action = hotKey->keyDownHandler;
  } else if (event->kind == kEventHotKeyReleased) {
    action = hotKey->keyUpHandler;
  } else {
    return eventNotHandledErr;
  }
  if (hotKey->isPaused() || !action) return eventNotHandledErr;
  hotKey.reset();  // who releases the hot key in its handler has it unregistered there and then
  action();
  return noErr;
}

}  // namespace horalo
