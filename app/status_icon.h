#pragma once

#include <QColor>
#include <QIcon>

namespace horalo {

// The menu-bar icon in one colour: the template image menu-bar-icon.png where the program's
// resources have it, else the clock symbol. 18 x 18 points.
QIcon statusIcon(const QColor& ink);

// The colour that can be seen on the desktop's panel, as far as the desktop tells what it looks
// like; else one that can be seen on any.
QColor statusIconInk();

}  // namespace horalo
