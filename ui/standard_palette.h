#pragma once

#include <QPalette>

namespace horalo {

// The colours of Appearance for widgets that are not ours: menus, pickers, alerts.
QPalette standardPalette();

}  // namespace horalo
