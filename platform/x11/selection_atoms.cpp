#include "platform/x11/selection_atoms.h"

#include <array>
#include <string_view>
#include <utility>

#include "platform/x11/x_connection.h"

namespace horalo {

// All are asked for before the first answer is awaited: one round trip instead of fifteen.
SelectionAtoms::SelectionAtoms(XConnection& connection) {
  const std::pair<xcb_atom_t*, std::string_view> names[] = {
      {&clipboard, "CLIPBOARD"},
      {&clipboardManager, "CLIPBOARD_MANAGER"},
      {&targets, "TARGETS"},
      {&multiple, "MULTIPLE"},
      {&timestamp, "TIMESTAMP"},
      {&saveTargets, "SAVE_TARGETS"},
      {&atomPair, "ATOM_PAIR"},
      {&null, "NULL"},
      {&incr, "INCR"},
      {&secretHint, "x-kde-passwordManagerHint"},
      {&utf8String, "UTF8_STRING"},
      {&plainTextUtf8, "text/plain;charset=utf-8"},
      {&plainText, "text/plain"},
      {&text, "TEXT"},
      {&data, "HORALO_SELECTION"},
  };
  std::array<xcb_intern_atom_cookie_t, std::size(names)> cookies;
  for (std::size_t i = 0; i < cookies.size(); ++i) {
    const std::string_view name = names[i].second;
    cookies[i] =
        xcb_intern_atom(connection.get(), 0, static_cast<std::uint16_t>(name.size()), name.data());
  }
  for (std::size_t i = 0; i < cookies.size(); ++i) {
    const auto answer = connection.reply(xcb_intern_atom_reply, cookies[i]);
    *names[i].first = answer ? answer->atom : xcb_atom_t{XCB_ATOM_NONE};
  }
}

}  // namespace horalo
