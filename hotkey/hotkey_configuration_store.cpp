#include "hotkey/hotkey_configuration.h"
#include "preferences/preferences.h"

namespace horalo {

HotkeyConfiguration HotkeyConfiguration::load(const Preferences& preferences) {
  const auto stored = preferences.hotkeyConfiguration();
  const auto configuration = stored ? fromJson(*stored) : std::nullopt;
  return configuration.value_or(HotkeyConfiguration{});
}

void HotkeyConfiguration::save(Preferences& preferences) const {
  preferences.setHotkeyConfiguration(toJson());
}

}  // namespace horalo
