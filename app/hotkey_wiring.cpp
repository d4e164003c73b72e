#include "app/hotkey_wiring.h"

#include <utility>

namespace horalo {

HotkeyWiring::HotkeyWiring(HotKeysController& controller, HotkeyConfiguration configuration,
                           std::function<void()> pressed)
    : controller_(controller), configuration_(configuration), pressed_(std::move(pressed)) {}

void HotkeyWiring::setupHotKey() {
  hotKey_.reset();
  const auto key = Key::fromCarbonKeyCode(configuration_.keyCode);
  if (!key) return;
  const auto modifiers = ModifierFlags{configuration_.modifiers} & ModifierFlags::shortcut;
  hotKey_ = HotKey::create(controller_, KeyCombo(*key, modifiers));
  hotKey_->keyDownHandler = pressed_;
}

}  // namespace horalo
