#include "platform/x11/selection_watch.h"

#include <xcb/xfixes.h>

#include <algorithm>
#include <utility>

namespace horalo {

SelectionWatch::SelectionWatch() {
  connection_.setEventHandler([this](const xcb_generic_event_t& event) { handle(event); });
  auto* xcb = connection_.get();
  const auto* fixes = xcb_get_extension_data(xcb, &xcb_xfixes_id);
  if (fixes == nullptr || fixes->present == 0) return;
  firstEvent_ = fixes->first_event;
  connection_.reply(xcb_xfixes_query_version_reply, xcb_xfixes_query_version(xcb, 1, 0));
}

void SelectionWatch::observe(const std::string& service, std::function<void()> changed) {
  if (firstEvent_ == 0) return;
  const xcb_atom_t selection = selectionOf(service);
  observers_[selection] = std::move(changed);
  xcb_xfixes_select_selection_input(connection_.get(), connection_.root(), selection,
                                    XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                        XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                        XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
  connection_.flush();
}

bool SelectionWatch::hasOwner(const std::string& service) {
  const auto owner =
      connection_.reply(xcb_get_selection_owner_reply,
                        xcb_get_selection_owner(connection_.get(), selectionOf(service)));
  return owner && owner->owner != XCB_WINDOW_NONE;
}

xcb_atom_t SelectionWatch::selectionOf(const std::string& service) {
  const auto known = selections_.find(service);
  if (known != selections_.end()) return known->second;
  const auto& roots = connection_.roots();
  const auto screen = std::find(roots.begin(), roots.end(), connection_.root()) - roots.begin();
  const std::string name = service + "_S" + std::to_string(screen);
  return selections_[service] = connection_.atom(name.c_str());
}

void SelectionWatch::handle(const xcb_generic_event_t& event) {
  if ((event.response_type & 0x7f) != firstEvent_ + XCB_XFIXES_SELECTION_NOTIFY) return;
  const auto& notice = reinterpret_cast<const xcb_xfixes_selection_notify_event_t&>(event);
  const auto observer = observers_.find(notice.selection);
  if (observer != observers_.end()) observer->second();
}

}  // namespace horalo
