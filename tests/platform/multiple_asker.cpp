// Pastes in four forms with one request, and tells what came of each.
#include "tests/x11/plain_x_client.h"

int main() {
  const horalo::PlainXClient x;
  const xcb_atom_t list = x.atom("LIST");
  const xcb_atom_t multiple = x.atom("MULTIPLE");
  const std::vector<std::string> forms{"UTF8_STRING", "STRING", "TIMESTAMP", "image/png"};
  std::vector<std::uint32_t> pairs;
  for (const auto& form : forms) {
    pairs.push_back(x.atom(form));
    pairs.push_back(x.atom("ANSWER_" + form));
  }
  const xcb_window_t window = x.makeWindow();
  x.putWords(window, list, x.atom("ATOM_PAIR"), pairs);
  xcb_convert_selection(x.xcb(), window, x.atom("CLIPBOARD"), multiple, list, XCB_CURRENT_TIME);
  xcb_flush(x.xcb());
  while (const auto event = x.wait()) {
    if (horalo::PlainXClient::typeOf(event) != XCB_SELECTION_NOTIFY) continue;
    const auto& answer = horalo::PlainXClient::as<xcb_selection_notify_event_t>(event);
    if (answer.target != multiple || answer.property != list) return 1;
    const std::string after = x.takeProperty(window, list);
    const auto* const answered = reinterpret_cast<const std::uint32_t*>(after.data());
    for (std::size_t i = 0; i < forms.size(); ++i) {
      const xcb_atom_t property = answered[2 * i + 1];
      xcb_atom_t type = XCB_ATOM_NONE;
      std::string value = "refused";
      if (property != XCB_ATOM_NONE) value = x.takeProperty(window, property, &type);
      if (type == XCB_ATOM_INTEGER && value.size() == 4) value = "a number";
      std::printf("%s %s\n", forms[i].c_str(), value.c_str());
    }
    return 0;
  }
  return 1;
}
