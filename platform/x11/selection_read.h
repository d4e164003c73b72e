#pragma once

#include <QTimer>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "clipboard/pasteboard.h"
#include "platform/selection_text.h"
#include "platform/x11/selection_atoms.h"
#include "platform/x11/x_connection.h"

namespace horalo {

// Fetches the clipboard's text from whichever program owns it. Each step is an event or an answer
// that the event loop brings; nothing is ever waited for:
//
//   TARGETS -> (the password manager's hint) -> the text -> its pieces, where it comes in pieces
//
// Every read has a window of its own: giving up destroys it, so that what comes late goes nowhere
// and the server forgets what was stored there.
class SelectionRead final : public Pasteboard::Read {
 public:
  // `ended` is called when the read is gone.
  SelectionRead(XConnection& connection, const SelectionAtoms& atoms,
                const Pasteboard::ReadLimits& limits, Pasteboard::Answer answer,
                std::function<void(SelectionRead&)> ended);
  ~SelectionRead() override;

  xcb_window_t window() const { return window_; }

  // What the connection tells about window(). The read may be gone afterwards.
  void selectionNotify(const xcb_selection_notify_event_t& event);
  void propertyNotify(const xcb_property_notify_event_t& event);
  // Another window has taken the clipboard.
  void ownerChanged();

 private:
  using Property = xcb_get_property_reply_t;
  enum class Step { targets, secretHint, text, pieces };

  void start();
  void request(Step step, xcb_atom_t target);
  void fetch(std::size_t bytes, bool remove, void (SelectionRead::*then)(const Property*));
  void refused();
  void targetsCame(const Property* property);
  void secretHintCame(const Property* property);
  void requestNextText();
  void textCame(const Property* property);
  void pieceCame(const Property* property);
  void append(const Property& property);
  void finish(std::optional<std::string> text);
  TextEncoding encodingOf(const Property& property) const;

  XConnection& connection_;
  const SelectionAtoms& atoms_;
  Pasteboard::ReadLimits limits_;
  Pasteboard::Answer answer_;
  std::function<void(SelectionRead&)> ended_;
  std::shared_ptr<char> alive_ = std::make_shared<char>();  // gone with this object

  xcb_window_t window_ = XCB_NONE;
  Step step_ = Step::targets;
  xcb_atom_t target_ = XCB_ATOM_NONE;    // what was asked for, XCB_ATOM_NONE once it was answered
  std::vector<xcb_atom_t> textTargets_;  // still to try, best one last
  SelectionText text_;
  TextEncoding encoding_ = TextEncoding::utf8;
  int restarts_ = 0;
  struct DeleteLater {
    void operator()(QTimer* timer) const;
  };
  std::unique_ptr<QTimer, DeleteLater> deadline_;
};

}  // namespace horalo
