#include "ui/standard_palette.h"

#include "ui/colors.h"

namespace horalo {

QPalette standardPalette() {
  const QColor window = color(ColorRole::window);
  const QColor control = color(ColorRole::controlBackground);
  const QColor text = color(ColorRole::primary);
  // The library derives the shades of edges from the button's colour.
  QPalette palette(control, window);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
                          QPalette::ToolTipText, QPalette::BrightText}) {
    palette.setColor(role, text);
    palette.setColor(QPalette::Disabled, role, color(ColorRole::primary, 0.4));
  }
  palette.setColor(QPalette::Base, control);
  palette.setColor(QPalette::AlternateBase, color(ColorRole::section));
  palette.setColor(QPalette::ToolTipBase, control);
  palette.setColor(QPalette::PlaceholderText, color(ColorRole::secondary));
  palette.setColor(QPalette::Highlight, color(ColorRole::accent));
  const bool lightAccent = qGray(color(ColorRole::accent).rgb()) > 160;
  palette.setColor(QPalette::HighlightedText, lightAccent ? Qt::black : Qt::white);
  palette.setColor(QPalette::Link, color(ColorRole::accent));
  return palette;
}

}  // namespace horalo
