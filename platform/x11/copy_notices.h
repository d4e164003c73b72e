#pragma once

#include <xcb/xfixes.h>

#include <cstdint>

#include "platform/x11/selection_atoms.h"
#include "platform/x11/x_connection.h"

namespace horalo {

// Tells a program's copy from everything else that makes the clipboard change hands. Two kinds of
// services take over what others have copied, which is no copy anew:
//
//   - a clipboard manager, at any time (it owns CLIPBOARD_MANAGER)
//   - a window manager that keeps the text of a program that has ended (GNOME's does)
class CopyNotices {
 public:
  // Asks the server for its notices; both must outlive this object.
  CopyNotices(XConnection& connection, const SelectionAtoms& atoms);

  // Whether the server tells at all; it lacks XFixes where not.
  bool canWatch() const { return firstEvent_ != 0; }

  // The notice in an event; null where it is another event.
  const xcb_xfixes_selection_notify_event_t* noticeIn(const xcb_generic_event_t& event) const;

  // To be told every notice, in order: whether a program other than those services, or the one that
  // owns the window `own`, has copied something.
  bool isCopy(const xcb_xfixes_selection_notify_event_t& notice, xcb_window_t own);

  // The clipboard manager's window; XCB_WINDOW_NONE where there is none.
  xcb_window_t clipboardManager() const { return clipboardManager_; }

 private:
  void select(xcb_atom_t selection, std::uint32_t events);
  xcb_window_t ownerOf(xcb_atom_t selection);
  bool isOfSameProgram(xcb_window_t window, xcb_window_t other) const;

  XConnection& connection_;
  const SelectionAtoms& atoms_;
  std::uint8_t firstEvent_ = 0;
  std::uint32_t programBits_ = 0;  // of a window's number
  xcb_atom_t windowManagerSelection_ = XCB_ATOM_NONE;
  xcb_window_t clipboardManager_ = XCB_WINDOW_NONE;
  xcb_window_t windowManager_ = XCB_WINDOW_NONE;
  bool isOrphaned_ = false;  // whoever copied last has ended
};

}  // namespace horalo
