#pragma once

#include <QFont>

namespace horalo {

// The desktop's interface font. `size` is in device-independent pixels and is multiplied by the
// desktop's factor for texts.
QFont interfaceFont(double size, QFont::Weight weight = QFont::Normal);

// The desktop's font in which every character is equally wide.
QFont fixedFont(double size, QFont::Weight weight = QFont::Normal);

// A length that grows and shrinks with texts, such as the height of a line.
double scaledLength(double length);

// The sizes that are named rather than given.
inline constexpr double kHeadlineSize = 13;  // in QFont::DemiBold
inline constexpr double kCaptionSize = 11;

}  // namespace horalo
