#pragma once

#include <functional>
#include <memory>

#include "hotkey/hot_key.h"
#include "hotkey/hotkey_configuration.h"
#include "hotkey/hotkeys_controller.h"

namespace horalo {

// Ties the user's shortcut to the converter: at most one is live at any time.
class HotkeyWiring {
 public:
  // `controller` must outlive this object. `pressed` runs when the shortcut is pressed.
  HotkeyWiring(HotKeysController& controller, HotkeyConfiguration configuration,
               std::function<void()> pressed);

  const HotkeyConfiguration& configuration() const { return configuration_; }
  void setConfiguration(const HotkeyConfiguration& configuration) {
    configuration_ = configuration;
  }

  // Registers the configuration's shortcut in place of the one before. A key code that belongs to
  // no key leaves none at all.
  void setupHotKey();

 private:
  HotKeysController& controller_;
  HotkeyConfiguration configuration_;
  std::function<void()> pressed_;
  std::shared_ptr<HotKey> hotKey_;
};

}  // namespace horalo
