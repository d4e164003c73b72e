#pragma once

#include <xcb/xcb.h>

namespace horalo {

class XConnection;

// The names of the X server's selections and of the forms in which a copy is offered (ICCCM,
// chapter 2). All XCB_ATOM_NONE where there is no server.
struct SelectionAtoms {
  explicit SelectionAtoms(XConnection& connection);

  xcb_atom_t clipboard, clipboardManager;
  // Not text, but about it.
  xcb_atom_t targets, multiple, timestamp, saveTargets, atomPair, null, incr;
  xcb_atom_t secretHint;  // set by password managers; its content is then "secret"
  // Text.
  xcb_atom_t utf8String, plainTextUtf8, plainText, text;
  static constexpr xcb_atom_t string = XCB_ATOM_STRING;  // Latin-1
  // The property, on windows of ours, through which data comes.
  xcb_atom_t data;
};

}  // namespace horalo
