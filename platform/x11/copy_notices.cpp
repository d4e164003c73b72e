#include "platform/x11/copy_notices.h"

#include <algorithm>
#include <string>

namespace horalo {
namespace {

constexpr std::uint32_t kTaken = XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER;
constexpr std::uint32_t kLost = XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE;

// A window manager owns a selection that is named for its screen.
std::string windowManagerSelection(const XConnection& connection) {
  const auto& roots = connection.roots();
  const auto screen = std::find(roots.begin(), roots.end(), connection.root()) - roots.begin();
  return "WM_S" + std::to_string(screen);
}

}  // namespace

CopyNotices::CopyNotices(XConnection& connection, const SelectionAtoms& atoms)
    : connection_(connection), atoms_(atoms) {
  xcb_connection_t* const xcb = connection_.get();
  if (!connection_.isAlive()) return;
  programBits_ = ~xcb_get_setup(xcb)->resource_id_mask;
  const auto* extension = xcb_get_extension_data(xcb, &xcb_xfixes_id);
  if (extension == nullptr || !extension->present) return;
  if (!connection_.reply(xcb_xfixes_query_version_reply, xcb_xfixes_query_version(xcb, 1, 0))) {
    return;
  }
  firstEvent_ = extension->first_event;
  windowManagerSelection_ = connection_.atom(windowManagerSelection(connection_).c_str());
  select(atoms_.clipboard, kTaken | kLost);
  select(atoms_.clipboardManager, kTaken | kLost);
  select(windowManagerSelection_, kTaken | kLost);
  clipboardManager_ = ownerOf(atoms_.clipboardManager);
  windowManager_ = ownerOf(windowManagerSelection_);
}

void CopyNotices::select(xcb_atom_t selection, std::uint32_t events) {
  xcb_xfixes_select_selection_input(connection_.get(), connection_.root(), selection, events);
}

xcb_window_t CopyNotices::ownerOf(xcb_atom_t selection) {
  const auto owner = connection_.reply(xcb_get_selection_owner_reply,
                                       xcb_get_selection_owner(connection_.get(), selection));
  return owner ? owner->owner : xcb_window_t{XCB_WINDOW_NONE};
}

const xcb_xfixes_selection_notify_event_t* CopyNotices::noticeIn(
    const xcb_generic_event_t& event) const {
  const bool isNotice =
      canWatch() && (event.response_type & 0x7F) == firstEvent_ + XCB_XFIXES_SELECTION_NOTIFY;
  return isNotice ? reinterpret_cast<const xcb_xfixes_selection_notify_event_t*>(&event) : nullptr;
}

bool CopyNotices::isCopy(const xcb_xfixes_selection_notify_event_t& notice, xcb_window_t own) {
  const bool isTaken = notice.subtype == XCB_XFIXES_SELECTION_EVENT_SET_SELECTION_OWNER &&
                       notice.owner != XCB_WINDOW_NONE;
  const xcb_window_t owner = isTaken ? notice.owner : xcb_window_t{XCB_WINDOW_NONE};
  if (notice.selection == atoms_.clipboardManager) clipboardManager_ = owner;
  if (notice.selection == windowManagerSelection_) windowManager_ = owner;
  if (notice.selection != atoms_.clipboard) return false;
  const bool wasOrphaned = isOrphaned_;
  isOrphaned_ = !isTaken;
  if (!isTaken) return false;
  if (owner == own) return true;
  if (isOfSameProgram(owner, clipboardManager_)) return false;
  return !(wasOrphaned && isOfSameProgram(owner, windowManager_));
}

// A service may own the clipboard with another of its windows.
bool CopyNotices::isOfSameProgram(xcb_window_t window, xcb_window_t other) const {
  return other != XCB_WINDOW_NONE && (window & programBits_) == (other & programBits_);
}

}  // namespace horalo
