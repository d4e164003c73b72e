#pragma once

#include <Qt>
#include <cstdint>
#include <functional>
#include <optional>

class QKeyEvent;

namespace horalo {

// The virtual key code of a key, from the number that the desktop has for its position
// (QKeyEvent::nativeScanCode); nothing for a key that no shortcut can use.
using KeyCodeOf = std::function<std::optional<std::uint32_t>(std::uint32_t scanCode)>;

// The key that counts where Command or Control is held, Qt::Key_Comma for example: what the layout
// writes on it, or, where that is no Latin character, what a US keyboard has in the same place. So
// people who write Cyrillic, Greek or Hebrew need not change their layout for a shortcut.
Qt::Key commandKey(const QKeyEvent& event, const KeyCodeOf& keyCodeOf);

}  // namespace horalo
