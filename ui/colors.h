#pragma once

#include <QColor>

namespace horalo {

// What a colour is for; its value depends on the appearance (see Appearance).
enum class ColorRole {
  primary,    // text, and with little opacity outlines and highlights
  secondary,  // text that stands back; 4.5:1 or better on every background of ours
  material,   // panel and toasts
  hint,       // text on a chip that lies on a highlighted row
  separator,
  controlBackground,  // pickers, the recorder
  controlOff,         // the track of a switch that is off
  knob,               // the knob of a switch
  window,             // the settings window
  section,            // a section of its form
  accent,             // the desktop's own where it has one
  green               // check marks
};

QColor color(ColorRole role);

// The same with its opacity multiplied by `opacity`, 0 to 1.
QColor color(ColorRole role, double opacity);

}  // namespace horalo
