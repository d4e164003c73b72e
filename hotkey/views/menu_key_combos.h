#pragma once

#include <vector>

#include "hotkey/key_combo.h"

class QMenu;

namespace horalo {

// The shortcuts of a menu's items, from top to bottom, each followed by those of its submenu. An
// item without a shortcut, or whose key no Key is spelled like ("+"), has none; nor has one with a
// sequence of several. Control is Control here and Super is Command, as on the keyboard.
std::vector<KeyCombo> keyCombos(const QMenu& menu);

// The same for the application's main menu; null, where it has none, is empty.
std::vector<KeyCombo> mainMenuKeyCombos(const QMenu* mainMenu);

}  // namespace horalo
