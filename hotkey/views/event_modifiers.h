#pragma once

#include <Qt>

#include "hotkey/modifier_flags.h"

namespace horalo {

// What Qt calls the modifiers, as keys of the keyboard: Meta is the Super key, hence Command.
inline ModifierFlags modifierFlags(Qt::KeyboardModifiers modifiers) {
  ModifierFlags flags;
  if (modifiers.testFlag(Qt::ShiftModifier)) flags = flags | ModifierFlags::shift;
  if (modifiers.testFlag(Qt::ControlModifier)) flags = flags | ModifierFlags::control;
  if (modifiers.testFlag(Qt::AltModifier)) flags = flags | ModifierFlags::option;
  if (modifiers.testFlag(Qt::MetaModifier)) flags = flags | ModifierFlags::command;
  return flags;
}

}  // namespace horalo
