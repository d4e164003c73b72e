#include "hotkey/key_combo.h"

namespace horalo {

std::vector<KeyCombo> KeyCombo::standardKeyCombos() {
  constexpr ModifierFlags control = ModifierFlags::control;
  constexpr ModifierFlags option = ModifierFlags::option;
  constexpr ModifierFlags shift = ModifierFlags::shift;
  constexpr ModifierFlags command = ModifierFlags::command;
  return {
      {Key::comma, command},
      {Key::h, command},
      {Key::h, option | command},
      {Key::q, command},
      {Key::n, command},
      {Key::o, command},
      {Key::w, command},
      {Key::s, command},
      {Key::s, shift | command},
      {Key::r, command},
      {Key::p, shift | command},
      {Key::p, command},
      {Key::z, command},
      {Key::z, shift | command},
      {Key::x, command},
      {Key::c, command},
      {Key::v, command},
      {Key::v, option | shift | command},
      {Key::a, command},
      {Key::f, command},
      {Key::f, option | command},
      {Key::g, command},
      {Key::g, shift | command},
      {Key::e, command},
      {Key::j, command},
      {Key::semicolon, shift | command},
      {Key::semicolon, command},
      {Key::t, command},
      {Key::b, command},
      {Key::i, command},
      {Key::u, command},
      {Key::equal, shift | command},
      {Key::minus, command},
      {Key::c, shift | command},
      {Key::c, option | command},
      {Key::v, option | command},
      {Key::leftBracket, shift | command},
      {Key::backslash, shift | command},
      {Key::rightBracket, shift | command},
      {Key::c, control | command},
      {Key::v, control | command},
      {Key::t, option | command},
      {Key::s, control | command},
      {Key::f, control | command},
      {Key::m, command},
      {Key::slash, shift | command},
  };
}

}  // namespace horalo
