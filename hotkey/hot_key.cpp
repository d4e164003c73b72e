#include "hotkey/hot_key.h"

#include <utility>

#include "hotkey/hotkeys_controller.h"

namespace horalo {

HotKey::HotKey(HotKeysController& controller, KeyCombo keyCombo, Action keyDown, Action keyUp)
    : keyDownHandler(std::move(keyDown)),
      keyUpHandler(std::move(keyUp)),
      controller_(controller),
      keyCombo_(keyCombo) {}

std::shared_ptr<HotKey> HotKey::create(HotKeysController& controller, KeyCombo keyCombo,
                                       Action keyDown, Action keyUp) {
  const std::shared_ptr<HotKey> hotKey(
      new HotKey(controller, keyCombo, std::move(keyDown), std::move(keyUp)));
  controller.registerHotKey(hotKey);
  return hotKey;
}

std::shared_ptr<HotKey> HotKey::create(HotKeysController& controller, std::uint32_t carbonKeyCode,
                                       std::uint32_t carbonModifiers, Action keyDown,
                                       Action keyUp) {
  return create(controller, KeyCombo(carbonKeyCode, carbonModifiers), std::move(keyDown),
                std::move(keyUp));
}

std::shared_ptr<HotKey> HotKey::create(HotKeysController& controller, Key key,
                                       ModifierFlags modifiers, Action keyDown, Action keyUp) {
  return create(controller, KeyCombo(key, modifiers), std::move(keyDown), std::move(keyUp));
}

HotKey::~HotKey() {
  controller_.unregisterHotKey(identifier_);
}

void HotKey::setPaused(bool paused) {
  isPaused_ = paused;
  if (paused) {
    controller_.unregisterHotKey(identifier_);
  } else {
    controller_.registerHotKey(shared_from_this());
  }
}

}  // namespace horalo
