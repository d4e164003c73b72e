#pragma once

#include <QTimer>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/x11/selection_atoms.h"
#include "platform/x11/x_connection.h"

namespace horalo {

// The program's own copy: takes the clipboard and gives the text to whoever asks, until another
// program copies something.
class SelectionOffer {
 public:
  SelectionOffer(XConnection& connection, const SelectionAtoms& atoms);
  ~SelectionOffer();

  // The window that owns the clipboard while the copy is ours.
  xcb_window_t window() const { return window_; }
  bool isOurs() const { return text_ != nullptr; }
  // Whether a program is still fetching a long text.
  bool isSending() const { return !transfers_.empty(); }

  void take(const std::string& text);
  // Puts the forms in which the text is offered on a property of window(), as a clipboard manager
  // wants to read them.
  void announce(xcb_atom_t property);

  // What the connection tells.
  void ownerChanged(xcb_window_t owner, xcb_timestamp_t time);
  void serve(const xcb_selection_request_event_t& request);
  void propertyNotify(const xcb_property_notify_event_t& event);
  void windowDestroyed(xcb_window_t window);

 private:
  struct Encoded {
    xcb_atom_t type;
    std::shared_ptr<const std::string> bytes;
  };
  // A long text goes in pieces, each after the other program has taken the one before.
  struct Transfer {
    xcb_window_t window;
    xcb_atom_t property;
    Encoded content;
    std::size_t sent = 0;
    bool isStale = false;  // nothing was taken since the last look
  };

  void serveMultiple(const xcb_selection_request_event_t& request);
  void answer(const xcb_selection_request_event_t& request, xcb_atom_t property);
  bool put(xcb_window_t window, xcb_atom_t property, xcb_atom_t target);
  std::optional<Encoded> encode(xcb_atom_t target) const;
  void putText(xcb_window_t window, xcb_atom_t property, const Encoded& content);
  void sendNextPiece(Transfer& transfer);
  void dropStaleTransfers();

  XConnection& connection_;
  const SelectionAtoms& atoms_;
  xcb_window_t window_;
  std::shared_ptr<const std::string> text_;  // none: the copy is another program's
  xcb_timestamp_t acquired_ = XCB_CURRENT_TIME;
  int takesUnderWay_ = 0;  // asked for, and the server has not told yet
  std::vector<Transfer> transfers_;
  QTimer staleTimer_;
  std::shared_ptr<char> alive_ = std::make_shared<char>();
};

}  // namespace horalo
